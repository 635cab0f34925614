#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "addin/config/AxisData.h"
#include "addin/config/Conversions.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

constexpr const char* section = "Device_Type2_Cage1";

/// A machine of device 2 and cage 1.
struct Axes : Testing::TestConfiguration {
  explicit Axes(double factor = 1) {
    Records.DeviceType.Name = "2";
    Records.DeviceType.SDXYEncoderMMStepFactorOff = factor;
    Records.CageType.Name = "1";
  }

  void Read(const std::vector<std::string>& lines) {
    Ini.Marivane.clear();
    for (std::size_t i = 0; i < lines.size(); ++i) Ini.Set(section, {{"Axis" + std::to_string(i + 1), lines[i]}});
    ReadAxisData(Config);
  }
};

/// The record in the form of its line; empty for an axis that isn't present and blank throughout.
std::string LineOf(const AxisRecord& axis) {
  std::ostringstream line;
  line << axis.Name << ',' << axis.MmPerStep;
  for (const std::int32_t place :
       {axis.SpeedA, axis.SpeedB, axis.SpeedC, axis.LowLimit, axis.HighLimit, axis.Place7, std::int32_t{axis.Place8},
        std::int32_t{axis.Place9}, std::int32_t{axis.Place10}, std::int32_t{axis.Place11}, std::int32_t{axis.MoveSign},
        std::int32_t{axis.OffsetSign}, axis.SafePosition}) {
    line << ',' << place;
  }
  if (axis.Present) return line.str();
  return line.str() == ",0,0,0,0,0,0,0,0,0,0,0,0,0,0" ? "" : "not present, but " + line.str();
}

TEST(AxisDataTest, ALineFillsTheAxisThatItNames) {
  const std::map<std::string, AxisRecord SharedRecords::*> axes{
      {"X", &SharedRecords::AxisX},    {"Y", &SharedRecords::AxisY},     {"Z", &SharedRecords::AxisZ},
      {"S", &SharedRecords::AxisS},    {"SDX", &SharedRecords::AxisSDX}, {"SDY", &SharedRecords::AxisSDY},
      {"SDS", &SharedRecords::AxisSDS}};
  for (const char* name :
       {"X", "Y", "Z", "S", "SDX", "SDY", "SDS", "\"S\"DX\"", "x", "sdx", " X", "X ", "", "SD", "A"}) {
    SCOPED_TRACE(name);
    Axes machine;
    machine.Read({std::string(name) + ",0.05,2,3.5,4.5,5,6,7,8,9,10,11,1,-1,14.5"});
    for (const auto& [axisName, axis] : axes) {
      EXPECT_EQ(LineOf(machine.Records.*axis),
                axisName == CleanText(name) ? axisName + ",0.05,2,4,4,5,6,7,8,9,10,11,1,-1,14" : "");
    }
  }
}

TEST(AxisDataTest, SerialDiluteXAndYAreScaled) {
  struct Row {
    const char* name;
    double factor;
    const char* line;
    const char* scaled;
  };
  for (const Row& row : {
           Row{"doubled", 2, ",0.02,1,2,3,5,401,7,8,9,10,11,1,-1,3", ",0.01,1,2,3,10,802,7,8,9,10,11,1,-1,6"},
           Row{"ties to the even number above", 1.5, ",0.75,1,2,3,5,-5,7,8,9,10,11,1,-1,1",
               ",0.5,1,2,3,8,-8,7,8,9,10,11,1,-1,2"},
           Row{"ties to the even number below", 0.5, ",0.75,1,2,3,5,-5,7,8,9,10,11,1,-1,1",
               ",1.5,1,2,3,2,-2,7,8,9,10,11,1,-1,0"},
           Row{"factor 0 keeps the step length alone", 0, ",0.02,1,2,3,5,401,7,8,9,10,11,1,-1,3",
               ",0.02,1,2,3,0,0,7,8,9,10,11,1,-1,0"},
           Row{"a product outside 32 bits stays unscaled", 2, ",1,1,2,3,-1073741825,1073741824,7,8,9,10,11,1,-1,3",
               ",0.5,1,2,3,-1073741825,1073741824,7,8,9,10,11,1,-1,6"},
           Row{"the last products inside 32 bits", 2, ",1,1,2,3,-1073741824,1073741823,7,8,9,10,11,1,-1,3",
               ",0.5,1,2,3,-2147483648,2147483646,7,8,9,10,11,1,-1,6"},
           Row{"a step length outside single precision stays", 1e-30, ",1e20,1,2,3,5,6,7,8,9,10,11,1,-1,3",
               ",1e+20,1,2,3,0,0,7,8,9,10,11,1,-1,0"},
       }) {
    SCOPED_TRACE(row.name);
    Axes machine(row.factor);
    machine.Read({std::string("SDX") + row.line, std::string("SDY") + row.line});
    EXPECT_EQ(LineOf(machine.Records.AxisSDX), std::string("SDX") + row.scaled);
    EXPECT_EQ(LineOf(machine.Records.AxisSDY), std::string("SDY") + row.scaled);
  }
  Axes machine(2);
  machine.Records.DeviceType.SDXYEncoderStatus = true;
  machine.Records.DeviceType.SDXYEncoderMMStepFactorOn = 3;
  machine.Read({"SDS,3,1,2,3,5,401", "SDX"});
  EXPECT_EQ(machine.Records.AxisSDS.HighLimit, 401) << "never scaled";
  EXPECT_EQ(machine.Records.AxisSDX.HighLimit, 1203) << "the encoder is on";
}

TEST(AxisDataTest, APlaceThatCannotBeReadKeepsTheValueOfTheLineBefore) {
  struct Row {
    const char* name;
    std::vector<std::string> lines;
    const char* read;  ///< what the lines leave of AxisY or AxisSDY; the factor is 2
  };
  const std::string full = ",0.5,2,3,4,5,6,7,8,9,10,11,1,-1,14";
  for (const Row& row : {
           Row{"line of a name alone", {"X" + full, "Y"}, "Y,0.5,2,3,4,5,6,7,8,9,10,11,1,-1,14"},
           Row{"first line of a name alone", {"Y"}, "Y,0,0,0,0,0,0,0,0,0,0,0,0,0,0"},
           Row{"empty places: 4 and 14 become 0",
               {"X" + full, "Y,,,,,,,,,,,,,,"},
               "Y,0.5,2,3,0,5,6,7,8,9,10,11,1,-1,0"},
           Row{"texts: 4 and 14 give their leading number",
               {"X" + full, "Y,1mm,x,3x,44x,5x,6x,7x,8x,9x,10x,11x,1x,1x,15x"},
               "Y,0.5,2,3,44,5,6,7,8,9,10,11,1,-1,15"},
           Row{"numbers outside 16 and 32 bits and single precision",
               {"X" + full, "Y,1e39,2147483648,33,3e9,55,66,77,32768,-32769,32767,-32768,40000,1,-3e9"},
               "Y,0.5,2,33,4,55,66,77,8,9,32767,-32768,1,1,14"},
           Row{"a line of no axis is a line before",
               {"X" + full, "q,0.25,22", "Y"},
               "Y,0.25,22,3,4,5,6,7,8,9,10,11,1,-1,14"},
           Row{"scaled values stay", {"SDX" + full, "Y"}, "Y,0.25,2,3,4,10,12,7,8,9,10,11,1,-1,28"},
           Row{"scaled values are scaled again", {"SDX" + full, "SDY"}, "SDY,0.125,2,3,4,20,24,7,8,9,10,11,1,-1,56"},
       }) {
    SCOPED_TRACE(row.name);
    Axes machine(2);
    machine.Read(row.lines);
    EXPECT_EQ(LineOf(machine.Records.AxisY) + LineOf(machine.Records.AxisSDY), row.read);
  }
}

TEST(AxisDataTest, TheLinesRunWithoutAGapAndTheLaterOneOfAnAxisWins) {
  Axes axes;
  axes.Ini.Set(section, {{"Axis1", "X,1"}, {"Axis2", "X,2"}, {"Axis4", "Z,4"}, {"Axis0", "S,5"}});
  axes.Ini.Set("Device_Type2_Cage", {{"Axis3", "Y,3"}});
  ReadAxisData(axes.Config);
  EXPECT_EQ(axes.Records.AxisX.MmPerStep, 2);
  EXPECT_FALSE(axes.Records.AxisZ.Present);
  const std::string in = std::string(section) + "/Axis";
  EXPECT_EQ(axes.Ini.Reads, (std::vector{in + "1", in + "2", in + "3"}));
}

TEST(AxisDataTest, ALoadClearsWhatTheFileNoLongerHas) {
  struct Row {
    const char* name;
    std::function<void(Axes&)> change;
    bool keepsX;
  };
  for (const Row& row : {
           Row{"a gap takes the lines behind it too",
               [](Axes& axes) {
                 axes.Ini.Marivane.erase({"DEVICE_TYPE2_CAGE1", "AXIS2"});
               },
               true},
           Row{"no section", [](Axes& axes) { axes.Records.CageType.Name = "9"; }, false},
           Row{"reads fail", [](Axes& axes) { axes.Ini.ReadsFail = true; }, false},
           Row{"splits fail", [](Axes& axes) { axes.Ini.SplitsFail = true; }, false},
       }) {
    SCOPED_TRACE(row.name);
    Axes axes;
    axes.Read({"X,1", "Y,2", "Z,3"});
    ASSERT_TRUE(axes.Records.AxisX.Present && axes.Records.AxisY.Present && axes.Records.AxisZ.Present);
    row.change(axes);
    ReadAxisData(axes.Config);
    EXPECT_EQ(axes.Records.AxisX.Present, row.keepsX);
    EXPECT_EQ(LineOf(axes.Records.AxisY) + LineOf(axes.Records.AxisZ), "");
  }
}

}  // namespace
}  // namespace OrvelCalibrateS
