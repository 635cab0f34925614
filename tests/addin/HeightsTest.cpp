#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "addin/sequences/DepthSteps.h"
#include "addin/sequences/HeadDepth.h"
#include "addin/sequences/NestSeat.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

using Testing::TestConfiguration;

constexpr std::optional<std::int32_t> Failure;

std::optional<std::int32_t> StepsOf(const TestConfiguration& test, Depth head = Depth::Omitted,
                                    Depth tip = Depth::Omitted) {
  std::optional<std::int32_t> steps;
  Skip([&] { steps = DepthSteps(test.Config, false, head, tip); });
  return steps;
}

TEST(DepthStepsTest, ALengthBecomesStepsInDoublePrecisionAndIsRoundedOnce) {
  // The length is in mm, DeltaZ in steps.
  using Row =
      std::tuple<const char*, std::string_view, float, std::int16_t, std::string_view, std::optional<std::int32_t>>;
  // clang-format off
  const Row rows[] = {
      {"-900 - 10: DeltaZ comes off whatever the sign", "45", 0.05F, -1, "10", -910},
      {"-910.5 goes away from zero", "45", 0.0625F, -1, "190.5", -911},
      {"720.5 goes away from zero", "45", 0.0625F, 1, "-0.5", 721},
      // The field holds 0.0500000007, and 45 mm are 899.9999866 steps of it.
      {"0.05 isn't exact: -910.49999, no tie", "45", 0.05F, -1, "10.5", -910},
      // 0.1000000015: 100 mm are 999.9999851 steps.
      {"0.1 isn't exact: 999.4999951", "100", 0.1F, 1, "0.49999", 999},
      // 0.0126999998: 12.7 mm are 1000.0000121 steps.
      {"0.0127 isn't exact: 999.5000071", "12.7", 0.0127F, 1, "0.500005", 1000},
      // 101.5 / 0.0500000007 * 3 is 6089.99990925193, 1e-12 more than 101.5 * 3 / 0.0500000007.
      {"the division comes before the sign", "101.5", 0.05F, 3, "6089.49990925193", 1},
      {"the largest result", "2147483647", 1, 1, "-0.4", 2147483647},
      {"rounded out of 32 bits", "2147483647", 1, 1, "-0.5", Failure},
      {"the smallest result", "2147483648", 1, -1, "0", -2147483647 - 1},
      {"out of 32 bits downward", "2147483648", 1, -1, "0.5", Failure},
      {"no length and no step length", "0", 0, -1, "0", Failure},
  };
  // clang-format on
  for (const auto& [name, length, mmPerStep, offsetSign, deltaZ, steps] : rows) {
    SCOPED_TRACE(name);
    TestConfiguration test;
    test.Ini.Set("Z_Calibration", {{"MountHeight", length}, {"DeltaZ", deltaZ}});
    test.Records.AxisZ.MmPerStep = mmPerStep;
    test.Records.AxisZ.OffsetSign = offsetSign;
    EXPECT_EQ(StepsOf(test), steps);
  }
}

TEST(DepthStepsTest, TheCalibrationIsReadAnewAndTheSharedOneStays) {
  TestConfiguration test;
  test.Records.ZCalibration.MountHeight = 1000;
  test.Records.AxisZ.MmPerStep = 1;
  test.Records.AxisZ.OffsetSign = 1;
  test.Records.Head.Channels = 8;
  test.Records.Head.TipMountDepth = 7;
  EXPECT_EQ(StepsOf(test), 0) << "an empty section";
  test.Ini.Set("Z_Calibration", {{"MountHeight", "50"}, {"HeadDepth_8ch", "20"}});
  EXPECT_EQ(StepsOf(test, Depth::Counts), 30) << "a change counts at once";
  EXPECT_EQ(StepsOf(test, Depth::Omitted, Depth::Counts), 43) << "without a tip its mounting depth counts";
  test.Ini.ReadsFail = true;
  EXPECT_EQ(StepsOf(test), Failure);
  EXPECT_EQ(test.Records.ZCalibration.MountHeight, 1000);
}

TEST(DepthStepsTest, HeadThenStageThenTipComeOffTheMountHeight) {
  // In this order the length is -9.29999999999999; in any other it is a little less, and the result 0.
  TestConfiguration test;
  test.Ini.Set("Z_Calibration", {{"MountHeight", "92.9"},
                                 {"HeadDepth_8ch", "20.1"},
                                 {"StageHeightUpper", "11.4"},
                                 {"DeltaZ", "-9.79999999999999"}});
  test.Records.AxisZ.MmPerStep = 1;
  test.Records.AxisZ.OffsetSign = 1;
  test.Records.Head.Channels = 8;
  test.Records.Tip.Name = "Tip";
  test.Records.Tip.TipLength = 70.7;
  EXPECT_EQ(StepsOf(test, Depth::Counts, Depth::Counts), 1);
}

TEST(HeadDepthTest, TheTwoLookUpsDifferForNoHeadAndForPlateHeads) {
  // clang-format off
  const ZCalibration calibration{.HeadDepth_1ch_Short = 1, .Headdepth_1ch_Long = 2, .HeadDepth_8ch = 3,
                                 .HeadDepth_12ch = 4, .HeadDepth_96_384 = 5, .HeadDepth_TeachTool_1Ch = 6,
                                 .HeadDepth_TeachTool_96_384 = 7};
  // clang-format on
  using Row = std::tuple<std::int16_t, const char*, const char*, double, double>;
  // clang-format off
  const Row rows[] = {
      {0, "", "", 2, 0}, {0, "1_CH_SHORT", "CALIBRATE", 6, 0},
      {0, "1_CH_SHORT", "", 0, 0}, {1, "", "CALIBRATE", 2, 2},
      {1, "1_ch_short", "SERIALDILUTE", 2, 2}, {1, "1_CH_SHORT", "SERIALDILUTE", 1, 1},
      {1, "1_CH_SHORT", "CALIBRATE", 6, 6}, {1, "1_CH_SHORT", "MICROTITER", 0, 0},
      {8, "1_CH_SHORT", "CALIBRATE", 3, 3}, {12, "1_CH_SHORT", "SERIALDILUTE", 4, 4},
      {96, "96_CH", "MICROTITER", 5, 0}, {96, "1_CH_SHORT", "CALIBRATE", 7, 0},
      {96, "96_CH", "SERIALDILUTE", 0, 0}, {384, "", "MICROTITER", 5, 0},
      {384, "", "CALIBRATE", 7, 0}, {2, "1_CH_SHORT", "SERIALDILUTE", 0, 0},
      {-1, "1_CH_SHORT", "SERIALDILUTE", 0, 0},
  };
  // clang-format on
  for (const auto& [channels, headCode, kind, atStage, inNest] : rows) {
    SCOPED_TRACE(std::to_string(channels) + " channels, " + headCode + ", " + kind);
    const HeadType head{.Kind = kind, .Channels = channels, .HeadCode = headCode};
    EXPECT_EQ(HeadDepthAtStage(head, calibration), atStage);
    EXPECT_EQ(HeadDepthInNest(head, calibration), inNest);
  }
}

constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();

struct Seat {
  float mmPerStep;
  std::int16_t moveSign;
  std::int16_t offsetSign;
  std::int32_t zBase;
  double nestDepth;  // mm
  double headDepth;  // mm
  std::int32_t zHeight;
  double zOffset;
};

SeatHeights HeightsOf(const Seat& seat) {
  SharedRecords records;
  records.DeviceType.HasXAxis = true;
  records.ZCalibration.NestDepth_XY_6 = seat.nestDepth;
  records.ZCalibration.HeadDepth_8ch = seat.headDepth;
  records.Head.Channels = 8;
  records.AxisZ.MmPerStep = seat.mmPerStep;
  records.AxisZ.MoveSign = seat.moveSign;
  records.AxisZ.OffsetSign = seat.offsetSign;
  NestSlot slot;
  slot.ZHeight = seat.zHeight;
  return SeatInSlot(records, seat.zBase, slot, seat.zOffset);
}

void ExpectAll(std::initializer_list<std::tuple<const char*, Seat, std::int32_t, std::int32_t>> rows) {
  for (const auto& [name, seat, zApproach, zSeat] : rows) {
    SCOPED_TRACE(name);
    const SeatHeights heights = HeightsOf(seat);
    EXPECT_EQ(heights.ZApproach, zApproach);
    EXPECT_EQ(heights.ZSeat, zSeat);
  }
}

TEST(NestSeatTest, LengthsGoUpFromTheStageAndTheOffsetTheOtherWay) {
  ExpectAll({
      {"-100, 100, 200, 300, then 80 up and down again, less 7", {0.05F, 1, -1, -100, 10, 5, 100, 7}, 373, 293},
      {"the other direction of the axis", {0.05F, -1, 1, -100, 10, 5, 100, 7}, -573, -493},
      {"signs that agree go on in one direction", {0.5F, 1, 1, 0, 10, 5, 3, 7}, 48, 56},
  });
}

TEST(NestSeatTest, EachTermRoundsByItselfButTheLastFourMillimetresOfTheApproach) {
  // With a step of 8 mm, 4 mm are exactly half a step.
  ExpectAll({
      {"10.5 goes to the even 10, half a step away from zero", {8, 1, -1, 10, 0, 0, 0, 0}, 10, 9},
      {"11.5 goes to the even 12", {8, 1, -1, 11, 0, 0, 0, 0}, 12, 11},
      {"10.5 from above goes to the even 10", {8, -1, 1, 11, 0, 0, 0, 0}, 10, 11},
      {"-10.5 goes to the even -10", {8, -1, 1, -10, 0, 0, 0, 0}, -10, -9},
      {"10 + 1 + 1 + 0.5 - 1: nest, head and offset of half a step", {8, 1, -1, 10, 4, 4, 0, 0.5}, 12, 11},
      {"10 - 1 - 1 - 0.5 + 1: the same in the other direction", {8, -1, 1, 10, 4, 4, 0, 0.5}, 8, 9},
      {"an offset of half a step: 11 + 0.5 - 1 goes to the even 10", {8, 1, -1, 11, 0, 0, 0, 0.5}, 10, 9},
      {"a nest of half a step: 10 + 1 + 0.5", {8, 1, -1, 10, 4, 0, 0, 0}, 12, 11},
      {"a head of half a step: 10 + 1 + 0.5", {8, 1, -1, 10, 0, 4, 0, 0}, 12, 11},
  });
}

TEST(NestSeatTest, AHeadOfAPlateHasNoDepthInANest) {
  SharedRecords records;
  records.AxisZ.MmPerStep = 1;
  records.AxisZ.MoveSign = 1;
  records.ZCalibration.HeadDepth_96_384 = 100;
  records.Head.Channels = 96;
  records.Head.Kind = MicrotiterKind;
  EXPECT_EQ(SeatInSlot(records, 0, NestSlot(), 0).ZApproach, 4);
}

TEST(NestSeatTest, TheStretchToTheSeatHasSinglePrecision) {
  // The step is a little more than 8/3 mm, so that 4 mm are 1.49999996 steps, and 1.5 in single precision.
  ExpectAll({
      {"11.49999996, and 2 back", {8.0F / 3, 1, -1, 10, 0, 0, 0, 0}, 11, 9},
      {"8.50000004, and 2 back", {8.0F / 3, -1, 1, 10, 0, 0, 0, 0}, 9, 11},
      // 4 / 1.142857194 * 5 is 17.4999992, which is 17.5 in single precision. It isn't 17.5 with the quotient or each
      // factor in single precision.
      {"rounded to single precision once, after the sign", {8.0F / 7, 1, 5, 10, 0, 0, 0, 0}, 13, 31},
  });
}

TEST(NestSeatTest, AFailedAssignmentKeepsTheNumberThatItWasFor) {
  ExpectAll({
      {"no step length: not even the base remains", {0, 1, -1, -100, 10, 5, 100, 7}, 0, 0},
      {"a first sum out of 32 bits starts again at 0", {1, 1, -1, Highest, 1, 0, 5, 0}, 9, 5},
      {"a nest too deep for 32 bits", {1, 1, -1, -100, 1e10, 2, 5, 0}, 11, 7},
      {"a head too deep for 32 bits is left out", {1, 1, -1, 10, 1, 1e10, 5, 0}, 20, 16},
      {"the head comes before the height: it overflows",
       {1, 1, -1, Highest - 10, 0, 20, -15, 0},
       Highest - 21,
       Highest - 25},
      {"a height whose product is out of 32 bits, though the sum isn't", {1, -1, 1, -1, 0, 0, Lowest, 0}, -5, -1},
      {"a height whose sum is out of 32 bits", {1, 1, -1, 10, 0, 0, Highest, 0}, 14, 10},
      {"an offset out of 32 bits: the seat counts from 0", {1, 1, -1, 10, 0, 0, 0, 1e10}, 0, -4},
      {"a seat out of 32 bits", {1, 1, -1, Lowest, 0, 0, 0, 4}, Lowest, 0},
      {"the last whole number that fits", {1, 1, -1, Highest - 4, 0, 0, 0, 0}, Highest, Highest - 4},
  });
}

}  // namespace
}  // namespace OrvelCalibrateS
