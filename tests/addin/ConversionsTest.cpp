#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "addin/config/Conversions.h"

namespace OrvelCalibrateS {
namespace {

/// What the step gives; nothing when it fails.
template <class Step>
auto Outcome(Step&& step) {
  std::optional<decltype(step())> value;
  Skip([&] { value = step(); });
  return value;
}

TEST(ConversionsTest, TextsKeepWhatTheirConversionDoesNotTakeAway) {
  EXPECT_EQ(PlainText(" \"a\" "), " \"a\" ");
  EXPECT_EQ(CleanText("\"a\"b\" \""), "ab ");
  EXPECT_EQ(CleanText("\"\""), "");
  EXPECT_EQ(TrimmedText("  a b  "), "a b");
  EXPECT_EQ(TrimmedText("   "), "");
  EXPECT_EQ(TrimmedText(" \ta "), "\ta");
  EXPECT_EQ(UpperCased("aZz{`9\xC3\xA4"), "AZZ{`9\xC3\xA4");
}

TEST(ConversionsTest, NumberTakesTheLongestLeadingNumber) {
  struct Row {
    const char* name;
    const char* text;
    double value;
  };
  for (const Row& row : {
           Row{"text behind a number is dropped", "12.5mm", 12.5},
           Row{"no digits", "mm", 0},
           Row{"empty", "", 0},
           Row{"blanks inside the number", "1 250", 1250},
           Row{"blanks and tabs everywhere", " \t- 3\t.5 e 1 mm", -35},
           Row{"plus", "+4", 4},
           Row{"two signs are no number", "--1", 0},
           Row{"digits behind the point only", ".5", 0.5},
           Row{"digits in front of the point only", "5.", 5},
           Row{"point alone", ".", 0},
           Row{"exponent", "2e3", 2000},
           Row{"exponent with a sign", "25E-1x", 2.5},
           Row{"exponent without a digit", "1e", 1},
           Row{"exponent with a sign and no digit", "1e+", 1},
           Row{"the comma ends it", "1,5", 1},
           Row{"second point ends it", "1.2.3", 1.2},
           Row{"word for infinity", "inf", 0},
           Row{"hexadecimal", "0x10", 0},
           Row{"too large", "1e400", HUGE_VAL},
           Row{"too large and negative", "-1e99999999999999999999", -HUGE_VAL},
           Row{"too close to zero", "1e-400", 0},
           Row{"zero with a huge exponent", "0.0e99999999999999999999", 0},
       }) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Number(row.text), row.value);
    EXPECT_EQ(NumberFlag(row.text), row.value != 0);
  }
}

TEST(ConversionsTest, StrictNumbersTakeTheWholeTextOrFail) {
  struct Row {
    const char* name;
    const char* text;
    std::optional<double> value;
    const char* separator = ".";
  };
  for (const Row& row : {
           Row{"text behind it", "12.5mm", {}},
           Row{"empty", "", {}},
           Row{"blanks only", " \t ", {}},
           Row{"blanks and tabs at both ends", " \t12.5 \t", 12.5},
           Row{"blank inside", "1 250", {}},
           Row{"blank behind the sign", "- 5", {}},
           Row{"thousands separator", "1,250", {}},
           Row{"plus", "+7", 7},
           Row{"plus and minus", "+-7", {}},
           Row{"digits on one side of the point", ".5", 0.5},
           Row{"point alone", ".", {}},
           Row{"exponent", "-1e3", -1000},
           Row{"exponent without a digit", "1e", {}},
           Row{"infinity", "-Infinity", {}},
           Row{"no number", "nan", {}},
           Row{"hexadecimal", "0x10", {}},
           Row{"too large", "1e400", {}},
           Row{"too close to zero", "1e-400", 0},
           Row{"decimal comma", "12,5", 12.5, ","},
           Row{"point where the comma rules", "12.5", {}, ","},
           Row{"points as thousands separators", "1.250,5", {}, ","},
           Row{"two commas", "1,2,3", {}, ","},
           Row{"separator of two bytes", "1\u066B5", 1.5, "\u066B"},
       }) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Outcome([&] { return StrictReal<double>(row.text, row.separator); }), row.value);
    const auto flag = row.value ? std::optional(*row.value != 0) : std::nullopt;
    EXPECT_EQ(Outcome([&] { return Flag(row.text, row.separator); }), flag);
  }
}

TEST(ConversionsTest, FlagKnowsTwoWordsBesidesNumbers) {
  struct Row {
    const char* text;
    std::optional<bool> value;
  };
  for (const Row& row :
       {Row{"True", true}, Row{"TRUE", true}, Row{"\ttrue ", true}, Row{"fAlSe", false}, Row{"1", true},
        Row{"0", false}, Row{"-1", true}, Row{"0.0", false}, Row{"-0", false}, Row{"0.5", true}, Row{"Y", {}},
        Row{"T", {}}, Row{"yes", {}}, Row{"True1", {}}, Row{"\"True\"", {}}}) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(Outcome([&] { return Flag(row.text, "."); }), row.value);
  }
}

TEST(ConversionsTest, WholeNumberFieldsRoundTiesToEvenWithinTheirRange) {
  struct Row {
    const char* text;
    std::optional<std::int32_t> in32;
    std::optional<std::int32_t> in16;
  };
  for (const Row& row : {Row{"2.5", 2, 2}, Row{"3.5", 4, 4}, Row{"-2.5", -2, -2}, Row{"-3.5", -4, -4}, Row{"0.5", 0, 0},
                         Row{"-0.5", 0, 0}, Row{"2.50000000000001", 3, 3}, Row{"0.49999999999999994", 0, 0},
                         Row{"32767.4", 32767, 32767}, Row{"32767.5", 32768, {}}, Row{"-32768.5", -32768, -32768},
                         Row{"-32768.6", -32769, {}}, Row{"2147483647.4", 2147483647, {}}, Row{"2147483647.5", {}, {}},
                         Row{"-2147483648.5", std::numeric_limits<std::int32_t>::min(), {}},
                         Row{"-2147483648.6", {}, {}}, Row{"4294967297", {}, {}}, Row{"1e300", {}, {}}}) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(Outcome([&] { return RoundedNumber<std::int32_t>(row.text); }), row.in32);
    EXPECT_EQ(Outcome([&] { return StrictWhole<std::int32_t>(row.text, "."); }), row.in32);
    EXPECT_EQ(Outcome([&] { return RoundedNumber<std::int16_t>(row.text); }), row.in16);
    EXPECT_EQ(Outcome([&] { return StrictWhole<std::int16_t>(row.text, "."); }), row.in16);
  }
  // Where the two part: a text that is no number as a whole, and one that no double holds.
  EXPECT_EQ(RoundedNumber<std::int16_t>(""), 0);
  EXPECT_EQ(RoundedNumber<std::int16_t>("7.5 mm"), 8);
  EXPECT_THROW(StrictWhole<std::int16_t>("", "."), StepFailed);
  EXPECT_THROW(StrictWhole<std::int16_t>("7.5 mm", "."), StepFailed);
  EXPECT_THROW(RoundedNumber<std::int32_t>("1e400"), StepFailed);
  EXPECT_THROW(RoundedNumber<std::int32_t>("-1e400"), StepFailed);
}

TEST(ConversionsTest, SinglePrecisionRoundsOnceAndFailsBehindItsRange) {
  EXPECT_EQ(StrictReal<float>("0.05", "."), 0.05F);
  EXPECT_NE(static_cast<double>(StrictReal<float>("0.05", ".")), 0.05);
  EXPECT_EQ(StrictReal<float>("3.4028234e38", "."), std::numeric_limits<float>::max());
  EXPECT_EQ(StrictReal<float>("1e-60", "."), 0.0F);
  EXPECT_THROW(StrictReal<float>("1e39", "."), StepFailed);
  EXPECT_THROW(StrictReal<float>("-1e39", "."), StepFailed);
}

TEST(ConversionsTest, WholeNumberFormatRoundsAHalfAwayFromZero) {
  struct Row {
    double value;
    const char* text;
    std::optional<std::int32_t> readBack;
  };
  for (const Row& row :
       {Row{2.5, "3", 3}, Row{-2.5, "-3", -3}, Row{0.5, "1", 1}, Row{-0.5, "-1", -1}, Row{-0.4, "0", 0},
        Row{-0.0, "0", 0}, Row{0.49999999999999994, "0", 0}, Row{1234567.4, "1234567", 1234567},
        Row{2147483647.4, "2147483647", 2147483647}, Row{2147483647.5, "2147483648", {}},
        Row{-2147483648.4, "-2147483648", std::numeric_limits<std::int32_t>::min()},
        Row{-2147483648.5, "-2147483649", {}}, Row{1e20, "100000000000000000000", {}}}) {
    SCOPED_TRACE(row.value);
    EXPECT_EQ(WholeNumber(row.value), row.text);
    EXPECT_EQ(NegatedWholeNumber(row.value), "-" + std::string(row.text));
    EXPECT_EQ(Outcome([&] { return WholeNumberValue(row.value); }), row.readBack);
  }
}

TEST(ConversionsTest, GeneralFormHasUpToFifteenDigits) {
  struct Row {
    double value;
    const char* text;
  };
  for (const Row& row :
       {Row{12.5, "12.5"}, Row{30, "30"}, Row{1250, "1250"}, Row{-2.50, "-2.5"}, Row{0, "0"}, Row{0.1 + 0.2, "0.3"},
        Row{2.0 / 3, "0.666666666666667"}, Row{1234567890.123456, "1234567890.12346"},
        Row{123456789012345, "123456789012345"}, Row{1e15, "1e+15"}, Row{0.0001, "0.0001"}, Row{0.00001, "1e-05"},
        Row{2147483667, "2147483667"}}) {
    EXPECT_EQ(GeneralForm(row.value), row.text);
  }
}

TEST(ConversionsTest, WhatIsNotFiniteCannotBeFormatted) {
  for (const double value : {HUGE_VAL, -HUGE_VAL, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_THROW(WholeNumber(value), StepFailed);
    EXPECT_THROW(NegatedWholeNumber(value), StepFailed);
    EXPECT_THROW(WholeNumberValue(value), StepFailed);
    EXPECT_THROW(GeneralForm(value), StepFailed);
    EXPECT_THROW(Rounded<std::int32_t>(value), StepFailed);
  }
}

TEST(ConversionsTest, ArithmeticFailsOnZeroDivisorsAndOverflows) {
  constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
  EXPECT_EQ(Divide(1, 4), 0.25);
  for (const double dividend : {1.0, 0.0}) EXPECT_THROW(Divide(dividend, 0), StepFailed);
  EXPECT_THROW(Divide(1, -0.0), StepFailed);

  EXPECT_EQ(Add(most, least), -1);
  EXPECT_EQ(Add(most - 1, 1), most);
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
