#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "addin/config/Conversions.h"

namespace OrvelCalibrateS {
namespace {

constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();

/// The conversion's result; none when it fails.
template <class Value, class... Arguments>
std::optional<Value> Outcome(Value (*conversion)(Arguments...), std::type_identity_t<Arguments>... arguments) {
  std::optional<Value> value;
  Skip([&] { value = conversion(arguments...); });
  return value;
}

TEST(ConversionsTest, TextsKeepWhatTheirConversionDoesNotTakeAway) {
  EXPECT_EQ(CleanText("\"a\"b\" \""), "ab ");
  EXPECT_EQ(TrimmedText(" \ta b  "), "\ta b");
  EXPECT_EQ(UpperCased("aZz{`9\xC3\xA4"), "AZZ{`9\xC3\xA4");
}

TEST(ConversionsTest, NumberTakesTheLongestLeadingNumberAndSkipsBlanksAndTabsInIt) {
  using Row = std::pair<const char*, double>;
  for (const auto& [text, value] : {Row{"12.5mm", 12.5},
                                    Row{"", 0},
                                    Row{"1 250", 1250},
                                    Row{" \t- 3\t.5 e 1 mm", -35},
                                    Row{"--1", 0},
                                    Row{".5", 0.5},
                                    Row{"5.", 5},
                                    Row{"2e3", 2000},
                                    Row{"25E-1x", 2.5},
                                    Row{"1e", 1},
                                    Row{"1e+", 1},
                                    Row{"1,5", 1},
                                    Row{"1.2.3", 1.2},
                                    Row{"inf", 0},
                                    Row{"0x10", 0},
                                    Row{"1e400", HUGE_VAL},
                                    Row{"-1e99999999999999999999", -HUGE_VAL},
                                    Row{"1e9223372036854775807", HUGE_VAL},
                                    Row{"1e-400", 0},
                                    Row{"0.0e99999999999999999999", 0}}) {
    EXPECT_EQ(Number(text), value) << text;
    EXPECT_EQ(NumberFlag(text), value != 0) << text;
  }
}

TEST(ConversionsTest, StrictNumbersTakeTheWholeTextOrFail) {
  using Row = std::tuple<const char*, std::optional<double>, const char*>;
  for (const auto& [text, value, separator] :
       {Row{"12.5mm", {}, "."}, Row{" \t ", {}, "."}, Row{" \t12.5 \t", 12.5, "."}, Row{"1 250", {}, "."},
        Row{"1,250", {}, "."}, Row{"+7", 7, "."}, Row{"+-7", {}, "."}, Row{"-1e3", -1000, "."}, Row{"1e", {}, "."},
        Row{"-Infinity", {}, "."}, Row{"nan", {}, "."}, Row{"1e400", {}, "."}, Row{"1e-400", 0, "."},
        Row{"12,5", 12.5, ","}, Row{"12.5", {}, ","}, Row{"1.250,5", {}, ","}, Row{"1\u066B5", 1.5, "\u066B"}}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Outcome(&StrictReal<double>, text, separator), value);
    EXPECT_EQ(Outcome(&Flag, text, separator), value ? std::optional(*value != 0) : std::nullopt);
  }
}

TEST(ConversionsTest, FlagKnowsTwoWordsBesidesNumbers) {
  using Row = std::pair<const char*, std::optional<bool>>;
  for (const auto& [text, value] :
       {Row{"True", true}, Row{"\ttrue ", true}, Row{"fAlSe", false}, Row{"-1", true}, Row{"0.0", false},
        Row{"0.5", true}, Row{"Y", {}}, Row{"True1", {}}, Row{"\"True\"", {}}}) {
    EXPECT_EQ(Outcome(&Flag, text, "."), value) << text;
  }
}

TEST(ConversionsTest, NumberFieldsRoundTiesToEvenWithinTheirRange) {
  using Row = std::tuple<const char*, std::optional<std::int32_t>, std::optional<std::int16_t>>;
  for (const auto& [text, in32, in16] :
       {Row{"2.5", 2, 2}, Row{"3.5", 4, 4}, Row{"-2.5", -2, -2}, Row{"-3.5", -4, -4}, Row{"0.5", 0, 0},
        Row{"-0.5", 0, 0}, Row{"2.50000000000001", 3, 3}, Row{"0.49999999999999994", 0, 0},
        Row{"32767.4", 32767, 32767}, Row{"32767.5", 32768, {}}, Row{"-32768.5", -32768, -32768},
        Row{"-32768.6", -32769, {}}, Row{"2147483647.4", 2147483647, {}}, Row{"2147483647.5", {}, {}},
        Row{"-2147483648.5", least, {}}, Row{"-2147483648.6", {}, {}}, Row{"4294967297", {}, {}}}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Outcome(&RoundedNumber<std::int32_t>, text), in32);
    EXPECT_EQ(Outcome(&StrictWhole<std::int32_t>, text, "."), in32);
    EXPECT_EQ(Outcome(&RoundedNumber<std::int16_t>, text), in16);
    EXPECT_EQ(Outcome(&StrictWhole<std::int16_t>, text, "."), in16);
  }
  // The differences of the two: a text that isn't a number as a whole, and a number that doesn't fit a double.
  EXPECT_EQ(RoundedNumber<std::int16_t>("7.5 mm"), 8);
  EXPECT_THROW(StrictWhole<std::int16_t>("7.5 mm", "."), StepFailed);
  EXPECT_THROW(RoundedNumber<std::int32_t>("1e400"), StepFailed);
  // Single precision rounds once, and fails beyond its range.
  EXPECT_EQ(StrictReal<float>("0.05", "."), 0.05F);
  EXPECT_EQ(StrictReal<float>("1e-60", "."), 0.0F);
  EXPECT_THROW(StrictReal<float>("1e39", "."), StepFailed);
}

TEST(ConversionsTest, WholeNumberFormatRoundsAHalfAwayFromZero) {
  using Row = std::tuple<double, const char*, std::optional<std::int32_t>>;
  for (const auto& [value, text, readBack] :
       {Row{2.5, "3", 3}, Row{-2.5, "-3", -3}, Row{0.5, "1", 1}, Row{-0.5, "-1", -1}, Row{-0.4, "0", 0},
        Row{-0.0, "0", 0}, Row{0.49999999999999994, "0", 0}, Row{2147483647.4, "2147483647", most},
        Row{2147483647.5, "2147483648", {}}, Row{-2147483648.4, "-2147483648", least},
        Row{-2147483648.5, "-2147483649", {}}, Row{1e20, "100000000000000000000", {}}}) {
    EXPECT_EQ(WholeNumber(value), text);
    EXPECT_EQ(NegatedWholeNumber(value), "-" + std::string(text));
    EXPECT_EQ(Outcome(&WholeNumberValue, value), readBack);
  }
}

TEST(ConversionsTest, GeneralFormHasUpToFifteenDigits) {
  using Row = std::pair<double, const char*>;
  for (const auto& [value, text] :
       {Row{30, "30"}, Row{-2.50, "-2.5"}, Row{0.1 + 0.2, "0.3"}, Row{2.0 / 3, "0.666666666666667"},
        Row{1234567890.123456, "1234567890.12346"}, Row{123456789012345, "123456789012345"}, Row{1e15, "1e+15"},
        Row{0.0001, "0.0001"}, Row{0.00001, "1e-05"}, Row{2147483667, "2147483667"}}) {
    EXPECT_EQ(GeneralForm(value), text);
  }
}

TEST(ConversionsTest, WhatIsNotFiniteCannotBeFormatted) {
  for (const double value : {HUGE_VAL, -HUGE_VAL, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_THROW(WholeNumber(value), StepFailed);
    EXPECT_THROW(WholeNumberValue(value), StepFailed);
    EXPECT_THROW(GeneralForm(value), StepFailed);
    EXPECT_THROW(Rounded<std::int32_t>(value), StepFailed);
  }
}

TEST(ConversionsTest, ArithmeticFailsOnZeroDivisorsAndOverflows) {
  EXPECT_EQ(Divide(1, 4), 0.25);
  EXPECT_THROW(Divide(0, -0.0), StepFailed);
  EXPECT_EQ(Add(most, least), -1);
  EXPECT_THROW(Add(most, 1), StepFailed);
  EXPECT_THROW(Add(least, -1), StepFailed);
  EXPECT_EQ(Multiply(1 << 30, -2), least);
  EXPECT_THROW(Multiply(1 << 30, 2), StepFailed);
  EXPECT_THROW(Multiply(least, -1), StepFailed);
  EXPECT_EQ(Multiply16(-16384, 2), -32768);
  EXPECT_THROW(Multiply16(16384, 2), StepFailed);
}

}  // namespace
}  // namespace OrvelCalibrateS
