#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <tuple>

#include "addin/config/Calibration.h"
#include "addin/config/ItemSource.h"
#include "addin/config/NestType.h"
#include "addin/config/Position.h"
#include "addin/sequences/InstalledKeys.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

using Testing::Lines;
using Testing::LineWith;
using Testing::otherFile;
using Testing::TestConfiguration;

TEST(NestTypeTest, EachSlotHasItsPlacesAndRoundsAHalfAwayFromZero) {
  TestConfiguration machine;
  machine.Records.DeviceType.SDXYEncoderMMStepFactorOff = 0.5;
  machine.Records.AxisZ.MmPerStep = 0.5F;
  machine.Ini.Set("NestType", {{"Item1", "\"Nest\",STAGE2,H,C,1,5,-5,0.25,H,C,4.5,3,1.26,-1.25mm,,C,40000,5e9,4,x"}});
  const NestType nest = ReadNestType(machine.Config, "1");
  EXPECT_EQ(std::tie(nest.Index, nest.Name, nest.PositionName), std::tuple("1", "Nest", "STAGE2"));
  using Slot = std::tuple<bool, int, int, int, int>;
  const auto values = [](const NestSlot& slot) {
    return Slot(slot.Present, slot.SlotField4, slot.OffsetX, slot.OffsetY, slot.ZHeight);
  };
  EXPECT_EQ(values(nest.Slot1), Slot(true, 1, 3, -3, 1));
  EXPECT_EQ(values(nest.Slot2), Slot(true, 4, 2, 1, -3));
  EXPECT_EQ(values(nest.Slot3), Slot(false, 0, 0, 2, 0)) << "2.5e9 steps don't fit";
  machine.Records.AxisZ.MmPerStep = 0;
  EXPECT_EQ(values(ReadNestType(machine.Config, "1").Slot1), Slot(true, 1, 3, -3, 0)) << "no length of a Z step";
}

TEST(NestTypeTest, AHeadGoesToTheFirstSlotOfItsCodeAndToTheThirdWithoutOne) {
  using Row = std::tuple<Lines, const char*, const char*>;
  for (const auto& [codes, asked, slot] :
       {Row{{"A", "B", "C"}, "A", "1"}, Row{{"A", "B", "C"}, "B", "2"}, Row{{"A", "B", "C"}, "C", "3"},
        Row{{"A", "B", "C"}, "X", "3"}, Row{{"A", "B", "C"}, "b", "3"}, Row{{"X", "A", "A"}, "A", "2"},
        Row{{"A", "A", "X"}, "A", "1"}, Row{{"", "", ""}, "", "1"}}) {
    SCOPED_TRACE(asked);
    TestConfiguration machine;
    const std::string line = "N,P,," + codes[0] + ",,,,,," + codes[1] + ",,,,,," + codes[2];
    machine.Ini.Set("NestType", {{"Item1", line}});
    EXPECT_EQ(SlotFor(ReadNestType(machine.Config, "1"), asked).SlotNumber, slot);
  }
}

TEST(NestTypeTest, NamesThatAreComparedKeepTheirQuotes) {
  TestConfiguration machine;
  machine.Ini.Set("NestType", {{"Item1", "\"N\",\"STAGE2\",\"H\",\"A\""}});
  machine.Ini.Set("Position_", {{"Item1", "\"STAGE2\",\"Left\",\"TIPRACK\""}});
  machine.Ini.Set("Calibration_", {{"Item1", "\"STAGE2\""}});
  const NestType nest = ReadNestType(machine.Config, "1");
  EXPECT_EQ(std::tie(nest.Name, nest.PositionName, nest.Slot1.HeadName, nest.Slot1.HeadCode),
            std::tuple("N", "\"STAGE2\"", "H", "\"A\""));
  EXPECT_EQ(SlotFor(nest, "A").SlotNumber, "3");
  const Position position = ReadPosition(machine.Config, "1");
  EXPECT_EQ(std::tie(position.Name, position.DisplayName, position.Kind),
            std::tuple("\"STAGE2\"", "Left", "\"TIPRACK\""));
  EXPECT_EQ(ReadCalibration(machine.Config, "", "\"STAGE2\"").Item, "1");
}

/// The result of the search of a section for STAGE6: the record's item, and its name if it is a different one.
std::string Found(const Configuration& configuration, std::string_view section) {
  const auto found = [](const auto& item, const auto& name) { return item + (name == "STAGE6" ? "" : " " + name); };
  const Position position = ReadPosition(configuration, "", "STAGE6", otherFile);
  if (section == "Position_2") return found(position.Item, position.Name);
  const NestType nest = ReadNestType(configuration, "", "STAGE6", otherFile);
  if (section == "NestType") return found(nest.Index, nest.PositionName);
  const Calibration calibration = ReadCalibration(configuration, "", "STAGE6", otherFile);
  return found(calibration.Item, calibration.Name);
}

TEST(WalkByNameTest, EndsAtTheNameOrAtAnEmptyOne) {
  // The lines 1, 2, 3; an empty line means a missing key.
  using Row = std::tuple<const char*, const char*, Lines, std::string>;
  for (const auto& [name, section, lines, found] : {
           Row{"first of two", "NestType", {"A,STAGE2", "B,STAGE6", "C,STAGE6"}, "2"},
           Row{"letter case counts", "NestType", {"A,stage6"}, "2 "},
           Row{"a match without a name is a match", "NestType", {",STAGE6"}, "1"},
           Row{"an empty name ends the list", "NestType", {",STAGE2", "B,STAGE6"}, "1 STAGE2"},
           Row{"a gap ends the list", "NestType", {"A,STAGE2", "", "C,STAGE6"}, "2 "},
           Row{"second position", "Position_2", {"STAGE2,A", "STAGE6,B"}, "2"},
           Row{"a match without a display name is a match", "Position_2", {"STAGE6"}, "1"},
           Row{"an empty display name ends the list", "Position_2", {"STAGE2,", "STAGE6,B"}, "1 STAGE2"},
           Row{"an empty name doesn't", "Position_2", {",A", "STAGE6,B"}, "2"},
           Row{"second calibration", "Calibration_2", {"STAGE2", "STAGE6"}, "2"},
           Row{"an empty name does here", "Calibration_2", {",A", "STAGE6,B"}, "1 "},
       }) {
    SCOPED_TRACE(name);
    TestConfiguration machine;
    machine.Records.DeviceType.Name = "2";
    for (std::size_t i = 0; i < lines.size(); ++i) {
      machine.Ini.Set(section, {{"Item" + std::to_string(i + 1), lines[i]}});
    }
    machine.Ini.Helmsway[{UpperCased(section), "ITEM1"}] = "STAGE6,STAGE6,in the other file";
    EXPECT_EQ(Found(machine.Config, section), found);
  }
}

TEST(PositionTest, AnItemNumberGoesAheadOfANameAndNeitherReadsNothing) {
  TestConfiguration machine;
  machine.Ini.Set("Position_", {{"Item", "bare"}, {"Item1", "A,a"}, {"Item2", "B,b"}});
  machine.Ini.Set("Calibration_", {{"Item", "bare"}, {"Item1", "A"}, {"Item2", "B"}});
  EXPECT_EQ(ReadPosition(machine.Config, "2", "A").Name + ReadCalibration(machine.Config, "2", "A").Name, "BB");
  machine.Ini.Helmsway = {{{"POSITION_", "ITEM2"}, "C"}, {{"CALIBRATION_", "ITEM2"}, "D"}};
  EXPECT_EQ(ReadPosition(machine.Config, "2", "", otherFile).Name, "C");
  EXPECT_EQ(ReadCalibration(machine.Config, "2", "", otherFile).Name, "D");
  EXPECT_EQ(ReadPosition(machine.Config, "").Name + ReadCalibration(machine.Config, "").Name, "");
}

TEST(PositionTest, PositionsAndCalibrationsTreatTiesDifferently) {
  using Row = std::tuple<double, const char*, std::int32_t, std::int32_t>;
  for (const auto& [factor, text, position, calibration] :
       {Row{1, "125.4", 125, 125}, Row{1, "2.5", 3, 2}, Row{2, "10.25", 21, 20}, Row{2, "-10.25", -21, -20},
        Row{2, "10.75", 22, 22}, Row{2, "10.26mm", 21, 21}, Row{2, "1073741823.5", 2147483647, 2147483647},
        Row{2, "1073741824", 0, 0}, Row{0, "7", 0, 0}, Row{0, "1e400", 0, 0}}) {
    SCOPED_TRACE(text);
    TestConfiguration machine;
    machine.Records.DeviceType.SDXYEncoderMMStepFactorOff = factor;
    machine.Ini.Set("Position_", {{"Item1", LineWith(5, text)}});
    machine.Ini.Set("Calibration_", {{"Item1", LineWith(7, text)}});
    EXPECT_EQ(ReadPosition(machine.Config, "1").SdX1, position);
    EXPECT_EQ(ReadCalibration(machine.Config, "1").SdX, calibration);
  }
}

TEST(WalkByNameTest, LooksForTheNameThatItBeganWithAlsoWhenItsRecordIsReplacedMeanwhile) {
  // The host can run another load during any call, and the name may be a field of a record that this load replaces.
  TestConfiguration test;
  const std::string name = "A place with a name of some length";
  test.Records.DeviceType.Name = "2";
  test.Ini.Set("Position_2", {{"Item1", "OTHER,\"Other\""}, {"Item2", name + ",\"Sought\""}});
  test.Ini.Set("Calibration_2", {{"Item1", "OTHER"}, {"Item2", name + ",7"}});
  test.Ini.Set("NestType", {{"Item1", "\"Other\",OTHER"}, {"Item2", "\"Sought\"," + name}});
  std::string field;
  test.Ini.Meanwhile = [&] { field.assign(name.size(), '-'); };
  EXPECT_EQ(ReadPosition(test.Config, "", field = name).DisplayName, "Sought");
  EXPECT_EQ(ReadCalibration(test.Config, "", field = name).Place1, 7);
  EXPECT_EQ(ReadNestType(test.Config, "", field = name).Name, "Sought");

  field = name;
  WriteInstalledHead(test.Files, field);
  field = name;
  WriteInstalledTip(test.Files, field);
  EXPECT_EQ(test.Ini.Writes, (Lines{"HeadType/Installed=" + name, "TipType/Installed=" + name}));
}

TEST(ItemSourceTest, AWalkWithoutAnEndEndsBehindTheLargestNumber) {
  for (const FailureMode mode : {FailureMode::Skip, FailureMode::PassUp}) {
    std::string last;
    const bool ranThrough = Skip([&] {
      WalkItems(mode, [&](const std::string& number) {
        last = number;
        return true;
      });
    });
    EXPECT_EQ(last, "32767");
    EXPECT_EQ(ranThrough, mode == FailureMode::Skip);
  }
  EXPECT_NO_THROW(WalkItems(FailureMode::PassUp, [](const std::string& number) { return number != "32767"; }));
}

}  // namespace
}  // namespace OrvelCalibrateS
