#pragma once

#include <concepts>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "addin/base/Steps.h"
#include "addin/config/MachineLocale.h"

/// All conversions of configuration texts to values. A conversion that fails throws `StepFailed`.
namespace OrvelCalibrateS {

/// The text unchanged.
std::string PlainText(std::string_view text);
/// The text without any of its double quotes.
std::string CleanText(std::string_view text);
/// The text without leading and trailing blanks.
std::string TrimmedText(std::string_view text);
/// The text with the letters a to z in upper case; all other bytes are unchanged.
std::string UpperCased(std::string_view text);

/// The value of the longest leading part that is a decimal number. The decimal point is "." in every locale; blanks and
/// tabs are skipped anywhere in the number. 0 when there is no leading number; infinite when it is too large for a
/// double.
double Number(std::string_view text);
/// Whether `Number` of the text isn't 0.
bool NumberFlag(std::string_view text);

/// The whole text as a number with that decimal separator. Blanks and tabs at both ends are ignored. Fails on anything
/// else, on thousands separators, and on a number that is too large for a double.
double StrictNumber(std::string_view text, std::string_view decimalSeparator = MachineDecimalSeparator());
/// The word True or False in any letter case, or a strict number, 0 being False. Fails on any other text.
bool Flag(std::string_view text, std::string_view decimalSeparator = MachineDecimalSeparator());

/// The nearest whole number; a tie goes to the even neighbour. For values that are stored in whole-number fields.
double RoundTiesToEven(double value);
/// The nearest whole number; a half is rounded away from zero. For values that become command arguments.
double RoundTiesAway(double value);

/// Converts a value that is already whole to that integer type; fails when it is outside the type's range or isn't a
/// number.
template <std::signed_integral Whole>
Whole ToWhole(double value) {
  constexpr double lowest = std::numeric_limits<Whole>::min();
  constexpr double highest = std::numeric_limits<Whole>::max();
  static_assert(sizeof(Whole) <= 4, "the limits must be exact as doubles");
  Require(value >= lowest && value <= highest);
  return static_cast<Whole>(value);
}

/// Converts a value to single precision; fails when it is too large.
float ToSingle(double value);

template <std::signed_integral Whole>
Whole Rounded(double value) {
  return ToWhole<Whole>(RoundTiesToEven(value));
}

/// `Number`, rounded with ties to even. Fails outside the type's range.
template <std::signed_integral Whole>
Whole RoundedNumber(std::string_view text) {
  return Rounded<Whole>(Number(text));
}

/// A strict number, rounded with ties to even. Fails outside the type's range.
template <std::signed_integral Whole>
Whole StrictWhole(std::string_view text, std::string_view decimalSeparator = MachineDecimalSeparator()) {
  return Rounded<Whole>(StrictNumber(text, decimalSeparator));
}

/// A strict number in the precision of the field.
template <std::floating_point Real>
Real StrictReal(std::string_view text, std::string_view decimalSeparator = MachineDecimalSeparator()) {
  const double value = StrictNumber(text, decimalSeparator);
  if constexpr (sizeof(Real) < sizeof(double)) {
    return ToSingle(value);
  } else {
    return value;
  }
}

/// A quotient; fails when the divisor is 0.
double Divide(double dividend, double divisor);

/// Sums and products of whole numbers in the width of their type; fail on an overflow.
std::int32_t Add(std::int32_t left, std::int32_t right);
std::int32_t Multiply(std::int32_t left, std::int32_t right);
std::int16_t Multiply16(std::int16_t left, std::int16_t right);

/// Whole-number format: no decimals, no thousands separator, a half rounded away from zero, never "-0".
/// Fails when the value isn't finite.
std::string WholeNumber(double value);
/// The same with a minus sign in front, whatever the value: "-30", "--30" for -30, "-0".
std::string NegatedWholeNumber(double value);
/// A value in whole-number format, read back as a number: as a term of a sum, and as a whole number. The former fails
/// when the value isn't finite, the latter outside 32 bits.
double WholeNumberTerm(double value);
std::int32_t WholeNumberValue(double value);
/// General form with up to 15 significant digits and "." as decimal point. Fails when the value isn't finite.
std::string GeneralForm(double value);

}  // namespace OrvelCalibrateS
