#include "tests/fuzz/ConversionChecks.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>

#include "addin/config/Conversions.h"
#include "tests/fuzz/Demand.h"

namespace Helmsway::Fuzzing {
namespace {

using namespace OrvelCalibrateS;

/// The value of a conversion; nothing when it fails. Any other exception than `StepFailed` ends the process.
template <class Conversion>
auto Try(Conversion&& conversion) {
  std::optional<decltype(conversion())> value;
  Skip([&] { value = conversion(); });
  return value;
}

std::string Without(std::string text, std::string_view letters) {
  std::erase_if(text, [&](char letter) { return letters.find(letter) != std::string_view::npos; });
  return text;
}

/// Length of the number that leads the text; 0 when there is none.
std::size_t LeadingNumber(const std::string& text) {
  std::size_t at = 0;
  const auto digits = [&] {
    const std::size_t start = at;
    while (at < text.size() && text[at] >= '0' && text[at] <= '9') ++at;
    return at - start;
  };
  const auto sign = [&] {
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
  };
  sign();
  std::size_t count = digits();
  if (at < text.size() && text[at] == '.') {
    ++at;
    count += digits();
  }
  if (count == 0) return 0;
  const std::size_t mantissa = at;
  if (at == text.size() || (text[at] != 'e' && text[at] != 'E')) return mantissa;
  ++at;
  sign();
  return digits() > 0 ? at : mantissa;
}

double CLibraryNumber(const std::string& text) {
  const std::string dense = Without(text, " \t");
  const std::size_t length = LeadingNumber(dense);
  return length == 0 ? 0 : std::strtod(dense.substr(0, length).c_str(), nullptr);
}

void CheckTexts(const std::string& text) {
  Demand(PlainText(text) == text, "plain text stays");
  Demand(CleanText(text) == Without(text, "\""), "clean text has no quotes");
  const std::string trimmed = TrimmedText(text);
  Demand(text.find(trimmed) != std::string::npos, "trimmed text is part of the text");
  Demand(Without(trimmed, " ") == Without(text, " "), "trimming takes blanks only");
  Demand(trimmed.empty() || (trimmed.front() != ' ' && trimmed.back() != ' '),
         "trimmed text has no blanks at its ends");
  Demand(UpperCased(UpperCased(text)) == UpperCased(text), "capitals stay");
}

void CheckStrict(const std::string& text) {
  const double number = Number(text);
  const auto strict = Try([&] { return StrictNumber(text, "."); });
  if (strict) Demand(*strict == number && std::isfinite(number), "a strict number is the number");

  std::string withComma = text;
  const bool hasComma = text.find(',') != std::string::npos;
  std::replace(withComma.begin(), withComma.end(), '.', ',');
  if (!hasComma)
    Demand(Try([&] { return StrictNumber(withComma, ","); }) == strict, "the separator is all that differs");

  const auto flag = Try([&] { return Flag(text, "."); });
  if (strict) Demand(flag == (*strict != 0), "a strict number is a flag");
  Demand(NumberFlag(text) == (number != 0), "a number is a flag");

  const auto single = Try([&] { return StrictReal<float>(text, "."); });
  if (single) Demand(strict && std::isfinite(*single), "a number that fits single precision is one of double");
  Demand(Try([&] { return StrictReal<double>(text, "."); }) == strict, "double precision takes every number");
}

template <class Whole>
void CheckRounded(const std::string& text) {
  const double nearest = std::nearbyint(Number(text));  // the process keeps the default mode, ties to even
  const bool fits = nearest >= std::numeric_limits<Whole>::min() && nearest <= std::numeric_limits<Whole>::max();
  const auto rounded = Try([&] { return RoundedNumber<Whole>(text); });
  Demand(rounded.has_value() == fits && (!rounded || *rounded == nearest), "a number is rounded, or too large");
  const bool isStrict = Try([&] { return StrictNumber(text, "."); }).has_value();
  const auto whole = Try([&] { return StrictWhole<Whole>(text, "."); });
  Demand(whole == (isStrict ? rounded : std::nullopt), "a strict number is rounded alike");
}

void CheckFormats(double value) {
  const auto whole = Try([&] { return WholeNumber(value); });
  Demand(whole.has_value() == std::isfinite(value), "what is finite can be written");
  if (!whole) return;
  Demand(std::strtod(whole->c_str(), nullptr) == std::round(value), "a whole number is written with all its digits");
  Demand(Without(*whole, "-0123456789").empty() && *whole != "-0", "a whole number has nothing but digits");
  Demand(NegatedWholeNumber(value) == "-" + *whole, "the minus sign stands in front");
  Demand(WholeNumberTerm(value) == std::round(value), "the term is the number that is written");
  const auto number = Try([&] { return WholeNumberValue(value); });
  Demand(number.has_value() == (std::abs(std::round(value) + 0.5) <= 2147483648.0), "32 bits hold it or don't");

  const std::string general = GeneralForm(value);
  const double again = Number(general);
  if (std::isfinite(again)) Demand(GeneralForm(again) == general, "the general form is stable");
}

}  // namespace

void CheckConversions(const std::string& text) {
  CheckTexts(text);
  Demand(Number(text) == CLibraryNumber(text), "a number is what the C library reads");
  CheckStrict(text);
  CheckRounded<std::int16_t>(text);
  CheckRounded<std::int32_t>(text);
  CheckFormats(Number(text));
}

void CheckArithmetic(const std::string& left, const std::string& right) {
  const auto a = Try([&] { return RoundedNumber<std::int32_t>(left); });
  const auto b = Try([&] { return RoundedNumber<std::int32_t>(right); });
  if (!a || !b) return;
  const auto fits = [](std::int64_t value) { return value == static_cast<std::int32_t>(value); };
  const std::int64_t sum = std::int64_t{*a} + *b;
  const std::int64_t product = std::int64_t{*a} * *b;
  const auto added = Try([&] { return Add(*a, *b); });
  Demand(added.has_value() == fits(sum) && (!added || *added == sum), "a sum, or an overflow");
  const auto multiplied = Try([&] { return Multiply(*a, *b); });
  Demand(multiplied.has_value() == fits(product) && (!multiplied || *multiplied == product),
         "a product, or an overflow");
  Demand(Try([&] { return Divide(*a, *b); }).has_value() == (*b != 0), "a quotient, but for a divisor of 0");
  const auto shortLeft = static_cast<std::int16_t>(*a);
  const auto shortRight = static_cast<std::int16_t>(*b);
  const std::int32_t shortProduct = std::int32_t{shortLeft} * shortRight;
  const auto multiplied16 = Try([&] { return Multiply16(shortLeft, shortRight); });
  Demand(multiplied16.has_value() == (shortProduct == static_cast<std::int16_t>(shortProduct)),
         "16 bits or an overflow");
}

}  // namespace Helmsway::Fuzzing
