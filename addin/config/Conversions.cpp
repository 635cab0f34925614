#include "addin/config/Conversions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace OrvelCalibrateS {
namespace {

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t'; }
constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view WithoutEnds(std::string_view text, bool (*drop)(char)) {
  while (!text.empty() && drop(text.front())) text.remove_prefix(1);
  while (!text.empty() && drop(text.back())) text.remove_suffix(1);
  return text;
}

std::size_t SkipDigits(std::string_view text, std::size_t at) {
  while (at < text.size() && IsDigit(text[at])) ++at;
  return at;
}

std::size_t SkipSign(std::string_view text, std::size_t at) {
  return at < text.size() && (text[at] == '+' || text[at] == '-') ? at + 1 : at;
}

/// Length of the longest leading part of the form sign digits point digits exponent; 0 when there is none. Digits on
/// one side of the point are enough, and an exponent counts only with a digit.
std::size_t NumberLength(std::string_view text) {
  const std::size_t start = SkipSign(text, 0);
  std::size_t end = SkipDigits(text, start);
  std::size_t digits = end - start;
  if (end < text.size() && text[end] == '.') {
    const std::size_t fraction = SkipDigits(text, end + 1);
    digits += fraction - (end + 1);
    if (digits > 0) end = fraction;
  }
  if (digits == 0) return 0;
  if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
    const std::size_t exponent = SkipSign(text, end + 1);
    if (const std::size_t last = SkipDigits(text, exponent); last > exponent) end = last;
  }
  return end;
}

/// Whether a number that doesn't fit a double is too large, rather than too close to zero. The power of ten of its
/// first non-zero digit decides.
bool IsTooLarge(std::string_view number) {
  const std::size_t mark = number.find_first_of("eE");
  const std::string_view digits = number.substr(0, mark);
  const std::size_t first = digits.find_first_of("123456789");
  if (first == std::string_view::npos) return false;
  const auto point = static_cast<std::ptrdiff_t>(std::min(digits.find('.'), digits.size()));
  const std::ptrdiff_t power = point - static_cast<std::ptrdiff_t>(first);
  if (mark == std::string_view::npos) return power > 0;
  std::string_view exponentDigits = number.substr(mark + 1);
  if (exponentDigits.front() == '+') exponentDigits.remove_prefix(1);
  std::ptrdiff_t exponent = 0;
  const auto [end, error] =
      std::from_chars(exponentDigits.data(), exponentDigits.data() + exponentDigits.size(), exponent);
  if (error != std::errc()) return exponentDigits.front() != '-';
  return exponent > -power;  // not their sum, which overflows
}

/// The value of a text that consists of one number; infinite when it is too large, 0 when it is too close to zero.
double Value(std::string_view number) {
  if (number.front() == '+') number.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  if (error == std::errc()) return value;
  const bool negative = number.front() == '-';
  if (!IsTooLarge(number)) return 0;
  return negative ? -HUGE_VAL : HUGE_VAL;
}

std::optional<bool> TruthWord(std::string_view text) {
  const std::string word = UpperCased(text);
  if (word == "TRUE") return true;
  if (word == "FALSE") return false;
  return std::nullopt;
}

std::string Formatted(double value, std::chars_format format, int precision) {
  Require(std::isfinite(value));
  std::array<char, 400> buffer{};  // a double has at most 309 digits before the point
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format, precision);
  Require(error == std::errc());
  return {buffer.data(), end};
}

}  // namespace

std::string PlainText(std::string_view text) { return std::string(text); }

std::string CleanText(std::string_view text) {
  std::string clean(text);
  std::erase(clean, '"');
  return clean;
}

std::string TrimmedText(std::string_view text) {
  return std::string(WithoutEnds(text, [](char c) { return c == ' '; }));
}

std::string UpperCased(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper;
}

double Number(std::string_view text) {
  std::string dense(text);
  std::erase_if(dense, IsBlank);
  const std::size_t length = NumberLength(dense);
  return length == 0 ? 0 : Value(std::string_view(dense).substr(0, length));
}

bool NumberFlag(std::string_view text) { return Number(text) != 0; }

double StrictNumber(std::string_view text, std::string_view decimalSeparator) {
  std::string number(WithoutEnds(text, IsBlank));
  if (decimalSeparator != ".") {
    Require(number.find('.') == std::string::npos);
    if (const std::size_t at = number.find(decimalSeparator); at != std::string::npos) {
      number.replace(at, decimalSeparator.size(), ".");
    }
  }
  Require(!number.empty() && NumberLength(number) == number.size());
  const double value = Value(number);
  Require(std::isfinite(value));
  return value;
}

bool Flag(std::string_view text, std::string_view decimalSeparator) {
  if (const auto word = TruthWord(WithoutEnds(text, IsBlank))) return *word;
  return StrictNumber(text, decimalSeparator) != 0;
}

double RoundTiesToEven(double value) {
  // Written out because the library's rounding functions depend on the host's floating-point environment.
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest > 0.5) return below + 1;
  if (rest < 0.5) return below;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

double RoundTiesAway(double value) { return std::round(value); }

float ToSingle(double value) {
  const auto single = static_cast<float>(value);
  Require(std::isfinite(single));
  return single;
}

double Divide(double dividend, double divisor) {
  Require(divisor != 0);
  return dividend / divisor;
}

std::int32_t Add(std::int32_t left, std::int32_t right) {
  return ToWhole<std::int32_t>(static_cast<double>(left) + static_cast<double>(right));
}

std::int32_t Multiply(std::int32_t left, std::int32_t right) {
  const std::int64_t product = std::int64_t{left} * right;
  Require(product >= std::numeric_limits<std::int32_t>::min() && product <= std::numeric_limits<std::int32_t>::max());
  return static_cast<std::int32_t>(product);
}

std::int16_t Multiply16(std::int16_t left, std::int16_t right) {
  return ToWhole<std::int16_t>(static_cast<double>(left) * static_cast<double>(right));
}

std::string WholeNumber(double value) {
  const double whole = RoundTiesAway(value);
  return Formatted(whole == 0 ? 0 : whole, std::chars_format::fixed, 0);
}

std::string NegatedWholeNumber(double value) { return "-" + WholeNumber(value); }

double WholeNumberTerm(double value) {
  Require(std::isfinite(value));
  return RoundTiesAway(value);
}

std::int32_t WholeNumberValue(double value) { return ToWhole<std::int32_t>(RoundTiesAway(value)); }

std::string GeneralForm(double value) { return Formatted(value, std::chars_format::general, 15); }

}  // namespace OrvelCalibrateS
