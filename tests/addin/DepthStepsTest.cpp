#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "addin/base/Steps.h"
#include "addin/sequences/DepthSteps.h"
#include "addin/sequences/HeadDepth.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

using Testing::TestConfiguration;

/// What `DepthSteps` gives, nothing where it fails.
std::optional<std::int32_t> StepsOf(const TestConfiguration& test, bool lowerStage, Depth head, Depth tip) {
  std::optional<std::int32_t> steps;
  Skip([&] { steps = DepthSteps(test.Config, lowerStage, head, tip); });
  return steps;
}

constexpr std::optional<std::int32_t> Failure;

TEST(DepthStepsTest, ALengthBecomesStepsInDoublePrecisionAndIsRoundedOnce) {
  struct Row {
    const char* name;
    std::string_view length;  // mm
    float mmPerStep;
    std::int16_t offsetSign;
    std::string_view deltaZ;  // steps
    std::optional<std::int32_t> steps;
  };
  const Row rows[] = {
      {"-900 - 10", "45", 0.05F, -1, "10", -910},
      {"DeltaZ comes off whatever the sign", "45", 0.05F, 1, "10", 890},
      {"no sign leaves DeltaZ", "45", 0.05F, 0, "10", -10},
      {"-910.5 goes away from zero", "45", 0.0625F, -1, "190.5", -911},
      {"720.5 goes away from zero", "45", 0.0625F, 1, "-0.5", 721},
      {"-720.5 goes away from zero", "45", 0.0625F, -1, "0.5", -721},
      {"719.5 goes away from zero", "45", 0.0625F, 1, "0.5", 720},
      // The field holds 0.0500000007, and 45 mm are 899.9999866 steps of it.
      {"0.05 isn't exact: -910.49999, no tie", "45", 0.05F, -1, "10.5", -910},
      // 0.1000000015: 100 mm are 999.9999851 steps.
      {"0.1 isn't exact: 999.4999951", "100", 0.1F, 1, "0.49999", 999},
      // 0.0126999998: 12.7 mm are 1000.0000121 steps.
      {"0.0127 isn't exact: 999.5000071", "12.7", 0.0127F, 1, "0.500005", 1000},
      // 0.3000000119: 30 mm are 99.9999960 steps.
      {"0.3 isn't exact: 99.4999980", "30", 0.3F, 1, "0.499998", 99},
      {"a unit behind the number", "45 mm", 0.0625F, 1, " 20 steps", 700},
      {"the largest result", "2147483647", 1, 1, "-0.4", 2147483647},
      {"rounded out of 32 bits", "2147483647", 1, 1, "-0.5", Failure},
      {"the smallest result", "2147483648", 1, -1, "0", -2147483647 - 1},
      {"out of 32 bits downward", "2147483648", 1, -1, "0.5", Failure},
      {"no step length", "45", 0, -1, "10", Failure},
      {"no length and no step length", "0", 0, -1, "0", Failure},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    TestConfiguration test;
    test.Ini.Set("Z_Calibration", {{"MountHeight", row.length}, {"DeltaZ", row.deltaZ}});
    test.Records.AxisZ.MmPerStep = row.mmPerStep;
    test.Records.AxisZ.OffsetSign = row.offsetSign;
    EXPECT_EQ(StepsOf(test, false, Depth::Omitted, Depth::Omitted), row.steps);
  }
}

TEST(DepthStepsTest, StageHeadAndTipComeOffTheMountHeight) {
  struct Row {
    const char* name;
    bool lowerStage;
    Depth head;
    Depth tip;
    std::string tipName;
    std::int32_t steps;
  };
  // A step is 0.5 mm long: mount 100, lower stage 10, upper stage 30, head 20, tip 5, mounting depth 7.
  const Row rows[] = {
      {"the upper stage alone", false, Depth::Omitted, Depth::Omitted, "Tip", -140},
      {"the lower stage alone", true, Depth::Omitted, Depth::Omitted, "Tip", -180},
      {"with the head", false, Depth::Counts, Depth::Omitted, "Tip", -100},
      {"with head and tip", false, Depth::Counts, Depth::Counts, "Tip", -90},
      {"without a tip its mounting depth counts", false, Depth::Counts, Depth::Counts, "", -86},
      {"the tip alone", true, Depth::Omitted, Depth::Counts, "Tip", -170},
      {"a mounting depth that is omitted", true, Depth::Counts, Depth::Omitted, "", -140},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    TestConfiguration test;
    test.Ini.Set(
        "Z_Calibration",
        {{"MountHeight", "100"}, {"StageHeightLower", "10"}, {"StageHeightUpper", "30"}, {"HeadDepth_8ch", "20"}});
    test.Records.AxisZ.MmPerStep = 0.5F;
    test.Records.AxisZ.OffsetSign = -1;
    test.Records.Head.Channels = 8;
    test.Records.Head.TipMountDepth = 7;
    test.Records.Tip.Name = row.tipName;
    test.Records.Tip.TipLength = 5;
    EXPECT_EQ(StepsOf(test, row.lowerStage, row.head, row.tip), row.steps);
  }
}

TEST(DepthStepsTest, TheCalibrationIsReadAnewAndTheSharedOneStays) {
  TestConfiguration test;
  test.Records.ZCalibration.MountHeight = 1000;
  test.Records.ZCalibration.HeadDepth_8ch = 500;
  test.Records.AxisZ.MmPerStep = 1;
  test.Records.AxisZ.OffsetSign = 1;
  test.Records.Head.Channels = 8;
  EXPECT_EQ(StepsOf(test, false, Depth::Counts, Depth::Omitted), 0) << "an empty section";
  test.Ini.Set("Z_Calibration", {{"MountHeight", "50"}, {"HeadDepth_8ch", "20"}});
  EXPECT_EQ(StepsOf(test, false, Depth::Counts, Depth::Omitted), 30) << "a change counts at once";
  test.Ini.ReadsFail = true;
  EXPECT_EQ(StepsOf(test, false, Depth::Counts, Depth::Omitted), Failure);
  EXPECT_EQ(test.Records.ZCalibration.MountHeight, 1000);
  EXPECT_TRUE(test.Ini.Writes.empty());
}

TEST(HeadDepthTest, TheTwoLookUpsDifferForNoHeadAndForPlateHeads) {
  ZCalibration calibration;
  calibration.HeadDepth_1ch_Short = 1;
  calibration.Headdepth_1ch_Long = 2;
  calibration.HeadDepth_8ch = 3;
  calibration.HeadDepth_12ch = 4;
  calibration.HeadDepth_96_384 = 5;
  calibration.HeadDepth_TeachTool_1Ch = 6;
  calibration.HeadDepth_TeachTool_96_384 = 7;
  struct Row {
    std::int16_t channels;
    const char* headCode;
    const char* kind;
    double atStage;
    double inNest;
  };
  const Row rows[] = {
      {0, "", "", 2, 0},
      {0, "1_CH_SHORT", "SERIALDILUTE", 1, 0},
      {0, "1_CH_SHORT", "CALIBRATE", 6, 0},
      {0, "1_CH_SHORT", "", 0, 0},
      {1, "1_CH_LONG", "SERIALDILUTE", 2, 2},
      {1, "", "CALIBRATE", 2, 2},
      {1, "1_ch_short", "SERIALDILUTE", 2, 2},
      {1, "1_CH_SHORT", "SERIALDILUTE", 1, 1},
      {1, "1_CH_SHORT", "CALIBRATE", 6, 6},
      {1, "1_CH_SHORT", "MICROTITER", 0, 0},
      {1, "1_CH_SHORT", "serialdilute", 0, 0},
      {8, "1_CH_SHORT", "CALIBRATE", 3, 3},
      {8, "", "", 3, 3},
      {12, "1_CH_SHORT", "SERIALDILUTE", 4, 4},
      {96, "96_CH", "MICROTITER", 5, 0},
      {96, "1_CH_SHORT", "CALIBRATE", 7, 0},
      {96, "96_CH", "SERIALDILUTE", 0, 0},
      {384, "", "MICROTITER", 5, 0},
      {384, "", "CALIBRATE", 7, 0},
      {384, "", "", 0, 0},
      {2, "1_CH_SHORT", "SERIALDILUTE", 0, 0},
      {13, "", "CALIBRATE", 0, 0},
      {24, "", "MICROTITER", 0, 0},
      {-1, "1_CH_SHORT", "SERIALDILUTE", 0, 0},
      {-8, "", "", 0, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::to_string(row.channels) + " channels, " + row.headCode + ", " + row.kind);
    HeadType head;
    head.Channels = row.channels;
    head.HeadCode = row.headCode;
    head.Kind = row.kind;
    EXPECT_EQ(HeadDepthAtStage(head, calibration), row.atStage);
    EXPECT_EQ(HeadDepthInNest(head, calibration), row.inNest);
  }
}

}  // namespace
}  // namespace OrvelCalibrateS
