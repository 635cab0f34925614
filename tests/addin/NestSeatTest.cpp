#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <limits>

#include "addin/sequences/NestSeat.h"

namespace OrvelCalibrateS {
namespace {

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

struct Row {
  const char* name;
  Seat seat;
  std::int32_t zApproach;
  std::int32_t zSeat;
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

void ExpectAll(std::initializer_list<Row> rows) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const SeatHeights heights = HeightsOf(row.seat);
    EXPECT_EQ(heights.ZApproach, row.zApproach);
    EXPECT_EQ(heights.ZSeat, row.zSeat);
  }
}

TEST(NestSeatTest, LengthsGoUpFromTheStageAndTheOffsetGoesTheOtherWay) {
  ExpectAll({
      {"-100, 100, 200, 300, then 80 up and down again", {0.05F, 1, -1, -100, 10, 5, 100, 0}, 380, 300},
      {"the offset goes into both heights", {0.05F, 1, -1, -100, 10, 5, 100, 7}, 373, 293},
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
      {"9.5 goes to the even 10", {8, -1, 1, 10, 0, 0, 0, 0}, 10, 11},
      {"-10.5 goes to the even -10", {8, -1, 1, -10, 0, 0, 0, 0}, -10, -9},
      {"-9.5 goes to the even -10", {8, 1, -1, -10, 0, 0, 0, 0}, -10, -11},
      // 10 + 1 + 1 + 0.5 - 1 = 11.5
      {"nest, head and offset of half a step each", {8, 1, -1, 10, 4, 4, 0, 0.5}, 12, 11},
      // 10 - 1 - 1 - 0.5 + 1 = 8.5
      {"the same in the other direction", {8, -1, 1, 10, 4, 4, 0, 0.5}, 8, 9},
      {"a nest of half a step: 10 + 1 + 0.5", {8, 1, -1, 10, 4, 0, 0, 0}, 12, 11},
      {"a head of half a step: 10 + 1 + 0.5", {8, 1, -1, 10, 0, 4, 0, 0}, 12, 11},
      {"a small offset doesn't break a tie", {8, 1, -1, 10, 0, 0, 0, -0.4}, 10, 9},
      {"an offset below half a step is none", {1, 1, -1, 10, 0, 0, 0, 0.49}, 14, 10},
  });
}

TEST(NestSeatTest, TheStretchToTheSeatHasSinglePrecision) {
  // The step is a little more than 8/3 mm, so that 4 mm are 1.49999996 steps, and 1.5 in single precision.
  ExpectAll({
      {"11.49999996, and 2 back", {8.0F / 3, 1, -1, 10, 0, 0, 0, 0}, 11, 9},
      {"8.50000004, and 2 back", {8.0F / 3, -1, 1, 10, 0, 0, 0, 0}, 9, 11},
  });
}

TEST(NestSeatTest, AFailedAssignmentKeepsTheNumberThatItWasFor) {
  ExpectAll({
      {"no step length: not even the base remains", {0, 1, -1, -100, 10, 5, 100, 7}, 0, 0},
      {"a first sum out of 32 bits starts again at 0", {1, 1, -1, Highest, 1, 0, 5, 0}, 9, 5},
      {"a nest too deep for 32 bits", {1, 1, -1, -100, 1e10, 2, 5, 0}, 11, 7},
      {"a head too deep for 32 bits is left out", {1, 1, -1, 10, 1, 1e10, 5, 0}, 20, 16},
      {"a height whose product is out of 32 bits, though the sum isn't", {1, -1, 1, -1, 0, 0, Lowest, 0}, -5, -1},
      {"a height whose sum is out of 32 bits", {1, 1, -1, 10, 0, 0, Highest, 0}, 14, 10},
      {"an offset out of 32 bits: the seat counts from 0", {1, 1, -1, 10, 0, 0, 0, 1e10}, 0, -4},
      {"an offset that isn't finite", {1, 1, -1, 10, 0, 0, 0, std::numeric_limits<double>::infinity()}, 0, -4},
      {"a seat out of 32 bits", {1, 1, -1, Lowest, 0, 0, 0, 4}, Lowest, 0},
      {"the last whole number that fits", {1, 1, -1, Highest - 4, 0, 0, 0, 0}, Highest, Highest - 4},
  });
}

TEST(NestSeatTest, TheNestsDepthIsThatOfTheDevice) {
  SharedRecords records;
  records.ZCalibration.NestDepth_Y = 6;
  records.ZCalibration.NestDepth_XY_6 = 7;
  EXPECT_EQ(NestDepth(records), 6);
  records.DeviceType.HasXAxis = true;
  EXPECT_EQ(NestDepth(records), 7);
}

TEST(NestSeatTest, APlateHeadHasNoDepthInANest) {
  SharedRecords records;
  records.ZCalibration.HeadDepth_96_384 = 50;
  records.ZCalibration.Headdepth_1ch_Long = 60;
  records.AxisZ.MmPerStep = 1;
  records.AxisZ.MoveSign = 1;
  records.AxisZ.OffsetSign = -1;
  records.Head.Kind = "MICROTITER";
  for (const auto channels : std::initializer_list<std::int16_t>{0, 96, 384}) {
    SCOPED_TRACE(channels);
    records.Head.Channels = channels;
    EXPECT_EQ(SeatInSlot(records, 10, NestSlot(), 0).ZSeat, 10);
  }
}

}  // namespace
}  // namespace OrvelCalibrateS
