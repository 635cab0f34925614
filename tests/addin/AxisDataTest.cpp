#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "addin/config/AxisData.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

using Testing::Lines;

/// A machine of device 2 and cage 1.
struct Axes : Testing::TestConfiguration {
  explicit Axes(double factor = 1) {
    Records.DeviceType.Name = "2";
    Records.DeviceType.SDXYEncoderMMStepFactorOff = factor;
    Records.CageType.Name = "1";
  }

  void Read(const Lines& lines) {
    Ini.Marivane.clear();
    for (std::size_t i = 0; i < lines.size(); ++i) {
      Ini.Set("Device_Type2_Cage1", {{"Axis" + std::to_string(i + 1), lines[i]}});
    }
    ReadAxisData(Config);
  }
};

/// The record in the form of its line; empty for an axis that isn't present and is blank throughout.
std::string LineOf(const AxisRecord& axis) {
  std::ostringstream line;
  line << axis.Name << ',' << axis.MmPerStep;
  for (const std::int32_t place : std::vector<std::int32_t>{
           axis.SpeedA, axis.SpeedB, axis.SpeedC, axis.LowLimit, axis.HighLimit, axis.Place7, axis.Place8, axis.Place9,
           axis.Place10, axis.Place11, axis.MoveSign, axis.OffsetSign, axis.SafePosition}) {
    line << ',' << place;
  }
  if (axis.Present) return line.str();
  return line.str() == ",0,0,0,0,0,0,0,0,0,0,0,0,0,0" ? "" : "not present, but " + line.str();
}

TEST(AxisDataTest, ALineFillsTheAxisThatItNames) {
  const std::string places = ",0.05,2,3.5,4.5,5,6,7,8,9,10,11,1,-1,14.5";
  const std::string read = ",0.05,2,4,4,5,6,7,8,9,10,11,1,-1,14";
  Axes machine;
  const SharedRecords& records = machine.Records;
  const std::pair<const char*, const AxisRecord*> axes[] = {
      {"X", &records.AxisX}, {"S", &records.AxisS}, {"SDX", &records.AxisSDX}, {"SDS", &records.AxisSDS}};
  for (const char* name : {"X", "Y", "Z", "S", "SDX", "SDY", "SDS", "x", " X", ""}) {
    machine.Read({std::string("\"") + name + "\"" + places});
    for (const auto& [axis, record] : axes) EXPECT_EQ(LineOf(*record), std::string(name) == axis ? axis + read : "");
  }
}

TEST(AxisDataTest, SerialDiluteXAndYAreScaled) {
  using Row = std::tuple<const char*, double, const char*, const char*>;
  // clang-format off
  for (const auto& [name, factor, line, scaled] : {
           Row{"ties to the even number above", 1.5,
               ",0.75,1,2,3,5,-5,7,8,9,10,11,1,-1,1", ",0.5,1,2,3,8,-8,7,8,9,10,11,1,-1,2"},
           Row{"ties to the even number below", 0.5,
               ",0.75,1,2,3,5,-5,7,8,9,10,11,1,-1,1", ",1.5,1,2,3,2,-2,7,8,9,10,11,1,-1,0"},
           Row{"factor 0 keeps the step length alone", 0,
               ",0.02,1,2,3,5,401,7,8,9,10,11,1,-1,3", ",0.02,1,2,3,0,0,7,8,9,10,11,1,-1,0"},
           Row{"a product outside 32 bits stays unscaled", 2, ",1,1,2,3,-1073741825,1073741824,7,8,9,10,11,1,-1,3",
               ",0.5,1,2,3,-1073741825,1073741824,7,8,9,10,11,1,-1,6"},
           Row{"a step length outside single precision stays", 1e-30,
               ",1e20,1,2,3,5,6,7,8,9,10,11,1,-1,3", ",1e+20,1,2,3,0,0,7,8,9,10,11,1,-1,0"}}) {
    // clang-format on
    SCOPED_TRACE(name);
    Axes machine(factor);
    machine.Read({std::string("SDX") + line, std::string("SDY") + line});
    EXPECT_EQ(LineOf(machine.Records.AxisSDX), std::string("SDX") + scaled);
    EXPECT_EQ(LineOf(machine.Records.AxisSDY), std::string("SDY") + scaled);
  }
  Axes machine(2);
  machine.Records.DeviceType.SDXYEncoderStatus = true;
  machine.Records.DeviceType.SDXYEncoderMMStepFactorOn = 3;
  machine.Read({"SDS,3,1,2,3,5,401", "SDX"});
  EXPECT_EQ(machine.Records.AxisSDS.HighLimit, 401) << "never scaled";
  EXPECT_EQ(machine.Records.AxisSDX.HighLimit, 1203) << "the encoder is on";
}

TEST(AxisDataTest, APlaceThatCannotBeReadKeepsTheValueOfTheLineBefore) {
  // The lines come first, then the resulting AxisY or AxisSDY; the factor is 2.
  using Row = std::tuple<const char*, Lines, const char*>;
  const std::string full = ",0.5,2,3,4,5,6,7,8,9,10,11,1,-1,14";
  // clang-format off
  for (const auto& [name, lines, read] : {
           Row{"line of a name alone", {"X" + full, "Y"}, "Y,0.5,2,3,4,5,6,7,8,9,10,11,1,-1,14"},
           Row{"first line of a name alone", {"Y"}, "Y,0,0,0,0,0,0,0,0,0,0,0,0,0,0"},
           Row{"empty: 4 and 14 become 0", {"X" + full, "Y,,,,,,,,,,,,,,"}, "Y,0.5,2,3,0,5,6,7,8,9,10,11,1,-1,0"},
           Row{"texts: 4 and 14 give their number", {"X" + full, "Y,1mm,x,3x,44x,5x,6x,7x,8x,9x,10x,11x,1x,1x,15x"},
               "Y,0.5,2,3,44,5,6,7,8,9,10,11,1,-1,15"},
           Row{"numbers outside 16 and 32 bits and single precision",
               {"X" + full, "Y,1e39,2147483648,33,3e9,55,66,77,32768,-32769,32767,-32768,40000,1,-3e9"},
               "Y,0.5,2,33,4,55,66,77,8,9,32767,-32768,1,1,14"},
           Row{"a line of no axis", {"X" + full, "q,0.25,22", "Y"}, "Y,0.25,22,3,4,5,6,7,8,9,10,11,1,-1,14"},
           Row{"scaled values stay", {"SDX" + full, "Y"}, "Y,0.25,2,3,4,10,12,7,8,9,10,11,1,-1,28"},
           Row{"and are scaled again", {"SDX" + full, "SDY"}, "SDY,0.125,2,3,4,20,24,7,8,9,10,11,1,-1,56"}}) {
    // clang-format on
    SCOPED_TRACE(name);
    Axes machine(2);
    machine.Read(lines);
    EXPECT_EQ(LineOf(machine.Records.AxisY) + LineOf(machine.Records.AxisSDY), read);
  }
}

TEST(AxisDataTest, TheLinesRunWithoutAGapTheLaterOneWinsAndALoadClearsWhatTheFileNoLongerHas) {
  Axes axes;
  axes.Read({"X,1", "Y,2", "Z,3"});
  axes.Read({"X,1", "X,2", "", "Z,4"});
  EXPECT_EQ(axes.Records.AxisX.MmPerStep, 2);
  EXPECT_EQ(LineOf(axes.Records.AxisY) + LineOf(axes.Records.AxisZ), "");
  axes.Ini.UnsplitText = "Y,2";
  axes.Read({"X,1", "Y,2", "Z,3"});
  EXPECT_EQ(LineOf(axes.Records.AxisY), "") << "a line that can't be split is passed over";
  EXPECT_EQ(axes.Records.AxisZ.MmPerStep, 3) << "and the next one counts";
  axes.Ini.SplitsFail = true;
  ReadAxisData(axes.Config);
  EXPECT_EQ(LineOf(axes.Records.AxisX), "") << "all of them";
}

}  // namespace
}  // namespace OrvelCalibrateS
