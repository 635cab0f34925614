#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "addin/config/Calibration.h"
#include "addin/config/ItemSource.h"
#include "addin/config/Position.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

using Testing::ExpectFlagsAtPlaces;
using Testing::LineWith;
using Testing::otherFile;
using Testing::TestConfiguration;

auto Values(const NestSlot& slot) {
  return std::tuple{slot.SlotNumber, slot.Present, slot.HeadCode, slot.HeadName,
                    slot.SlotField4, slot.OffsetX, slot.OffsetY,  slot.ZHeight};
}
std::tuple<std::string, bool, std::string, std::string, std::int16_t, std::int32_t, std::int32_t, std::int32_t> Slot(
    const char* number, const char* code = "", const char* name = "", std::int16_t field4 = 0, std::int32_t x = 0,
    std::int32_t y = 0, std::int32_t z = 0) {
  return {number, *name != '\0', code, name, field4, x, y, z};
}

TEST(NestTypeTest, ALineMakesThreeSlots) {
  TestConfiguration machine;
  machine.Records.DeviceType.SDXYEncoderMMStepFactorOff = 80;
  machine.Records.AxisZ.MmPerStep = 0.05F;
  machine.Ini.Set("NestType", {{"Item1",
                                "\"Nest\",STAGE2,\"Head 1\",1_CH_SHORT,4.5,1.5,-0.5,2.5,Head 2,8_CH,5.5,0.25,"
                                "0.26,-2.5mm,,12_CH,40000,3e7,4,x"}});
  NestType nest = ReadNestType(machine.Config, "1");
  EXPECT_EQ(std::tie(nest.Index, nest.Name, nest.PositionName), std::tuple("1", "Nest", "STAGE2"));
  EXPECT_EQ(Values(nest.Slot1), Slot("1", "1_CH_SHORT", "Head 1", 4, 120, -40, 50));
  EXPECT_EQ(Values(nest.Slot2), Slot("2", "8_CH", "Head 2", 6, 20, 21, -50));
  EXPECT_EQ(Values(nest.Slot3), Slot("3", "12_CH", "", 0, 0, 320, 0)) << "2.4e9 steps don't fit";

  machine.Records.DeviceType.SDXYEncoderMMStepFactorOff = 0.5;
  machine.Records.AxisZ.MmPerStep = 0;
  machine.Ini.Set("NestType", {{"Item1", "N,P,H,C,1,5,-5,7"}});
  nest = ReadNestType(machine.Config, "1");
  EXPECT_EQ(Values(nest.Slot1), Slot("1", "C", "H", 1, 3, -3, 0)) << "halves away from zero; no length of a Z step";
  EXPECT_EQ(Values(nest.Slot2), Slot("2"));
  EXPECT_EQ(Values(ReadNestType(machine.Config).Slot3), Slot("3")) << "no nest is installed";
}

TEST(NestTypeTest, AHeadGoesToTheFirstSlotOfItsShapeOrToTheThird) {
  NestType nest;
  nest.Slot1 = {.SlotNumber = "1", .HeadCode = "A"};
  nest.Slot2 = {.SlotNumber = "2", .HeadCode = "B"};
  nest.Slot3 = {.SlotNumber = "3", .HeadCode = "A"};
  for (const auto& [code, number] : {std::pair("A", "1"), {"B", "2"}, {"a", "3"}, {"", "3"}}) {
    EXPECT_EQ(SlotFor(nest, code).SlotNumber, number) << code;
  }
  nest.Slot1.HeadCode = "";
  nest.Slot2.HeadCode = "";
  EXPECT_EQ(SlotFor(nest, "").SlotNumber, "1");
}

/// A walk by name over lines 1, 2, 3 and so on; an empty line stands for a missing key.
struct WalkRow {
  const char* name;
  std::vector<const char*> lines;
  const char* wanted;
  const char* item;  ///< of the record that the walk ends with
  bool found;
};

template <class Read>
void ExpectWalks(const std::vector<WalkRow>& rows, std::string_view section, const Read& read) {
  for (const WalkRow& row : rows) {
    SCOPED_TRACE(row.name);
    TestConfiguration machine;
    machine.Records.DeviceType.Name = "2";
    for (std::size_t i = 0; i < row.lines.size(); ++i) {
      machine.Ini.Set(section, {{"Item" + std::to_string(i + 1), row.lines[i]}});
    }
    machine.Ini.Helmsway[{UpperCased(section), "ITEM1"}] = "STAGE6,STAGE6,in the other file";
    EXPECT_EQ(read(machine.Config, row.wanted), std::tuple(std::string(row.item), row.found));
  }
}

TEST(NestTypeTest, ASearchEndsAtThePositionOrAtAnEmptyName) {
  ExpectWalks({{"second nest", {"A,STAGE2", "B,STAGE6"}, "STAGE6", "2", true},
               {"first of two", {"A,STAGE6", "B,STAGE6"}, "STAGE6", "1", true},
               {"letter case counts", {"A,stage6"}, "STAGE6", "2", false},
               {"a match without a name is a match", {",STAGE6"}, "STAGE6", "1", true},
               {"an empty name ends the list", {",STAGE2", "B,STAGE6"}, "STAGE6", "1", false},
               {"a gap ends the list", {"A,STAGE2", "", "C,STAGE6"}, "STAGE6", "2", false}},
              "NestType", [](const Configuration& configuration, const char* wanted) {
                const NestType nest = ReadNestType(configuration, "", wanted, otherFile);
                return std::tuple(nest.Index, nest.PositionName == wanted);
              });
}

TEST(PositionTest, AWalkEndsAtTheNameOrAtAnEmptyDisplayName) {
  ExpectWalks({{"second position", {"STAGE2,A", "STAGE6,B"}, "STAGE6", "2", true},
               {"letter case counts", {"stage6,A"}, "STAGE6", "2", false},
               {"a match without a display name is a match", {"STAGE6"}, "STAGE6", "1", true},
               {"an empty display name ends the list", {"STAGE2,", "STAGE6,B"}, "STAGE6", "1", false},
               {"an empty name doesn't", {",A", "STAGE6,B"}, "STAGE6", "2", true},
               {"a gap ends the list", {"STAGE2,A", "", "STAGE6,C"}, "STAGE6", "2", false}},
              "Position_2", [](const Configuration& configuration, const char* wanted) {
                const Position position = ReadPosition(configuration, "", wanted, otherFile);
                return std::tuple(position.Item, position.Name == wanted);
              });
}

TEST(CalibrationTest, AWalkEndsAtTheNameOrAtAnEmptyName) {
  ExpectWalks({{"second calibration", {"STAGE2", "STAGE6"}, "STAGE6", "2", true},
               {"letter case counts", {"stage6,A"}, "STAGE6", "2", false},
               {"an empty name ends the list", {",A", "STAGE6,B"}, "STAGE6", "1", false},
               {"a gap ends the list", {"STAGE2,A", "", "STAGE6,C"}, "STAGE6", "2", false}},
              "Calibration_2", [](const Configuration& configuration, const char* wanted) {
                const Calibration calibration = ReadCalibration(configuration, "", wanted, otherFile);
                return std::tuple(calibration.Item, calibration.Name == wanted);
              });
}

TEST(PositionTest, AnItemNumberGoesAheadOfANameAndNeitherReadsNothing) {
  TestConfiguration machine;
  machine.Records.DeviceType.Name = "2";
  machine.Ini.Set("Position_2", {{"Item", "bare"}, {"Item1", "A,a"}, {"Item2", "B,b"}});
  machine.Ini.Set("Calibration_2", {{"Item", "bare"}, {"Item1", "A"}, {"Item2", "B"}});
  EXPECT_EQ(ReadPosition(machine.Config, "2", "A").Name, "B");
  EXPECT_EQ(ReadCalibration(machine.Config, "2", "A").Name, "B");
  EXPECT_EQ(ReadPosition(machine.Config, "7").Item, "7");
  EXPECT_EQ(ReadCalibration(machine.Config, "7").Item, "7");
  machine.Ini.Helmsway = {{{"POSITION_2", "ITEM2"}, "C"}, {{"CALIBRATION_2", "ITEM2"}, "D"}};
  EXPECT_EQ(ReadPosition(machine.Config, "2", "", otherFile).Name, "C");
  EXPECT_EQ(ReadCalibration(machine.Config, "2", "", otherFile).Name, "D");
  machine.Ini.Reads.clear();
  EXPECT_EQ(ReadPosition(machine.Config, "").Name, "");
  EXPECT_EQ(ReadCalibration(machine.Config, "").Name, "");
  EXPECT_TRUE(machine.Ini.Reads.empty());
  machine.Records.DeviceType = {};
  ReadPosition(machine.Config, "1");
  ReadCalibration(machine.Config, "1");
  EXPECT_EQ(machine.Ini.Reads, (std::vector<std::string>{"Position_/Item1", "Calibration_/Item1"}));
}

TEST(PositionTest, EachPlaceFillsItsField) {
  TestConfiguration machine;
  machine.Records.DeviceType.SDXYEncoderMMStepFactorOff = 2;
  machine.Ini.Set("Position_", {{"Item1", "\"S\",\"Stage 2\",TIPRACK,3.5,4.5,5,6,7,8,9,10,,,Text,,,16.5,17.25mm"}});
  const Position position = ReadPosition(machine.Config, "1");
  EXPECT_EQ(std::tie(position.Item, position.Name, position.DisplayName, position.Kind, position.Place13),
            std::tuple("1", "\"S\"", "Stage 2", "TIPRACK", "Text"));
  EXPECT_EQ(std::tie(position.X, position.Y, position.SdX1, position.SdY1, position.SdX8, position.SdY8, position.SdX12,
                     position.SdY12, position.Place16),
            std::tuple(4, 4, 10, 12, 14, 16, 18, 20, 16));
  EXPECT_EQ(position.Place17, 17.25);
  ExpectFlagsAtPlaces<Position>(
      {{11, &Position::LowerStage}, {12, &Position::Place12}, {14, &Position::Place14}, {15, &Position::Place15}},
      [&](const std::string& line) {
        machine.Ini.Set("Position_", {{"Item7", line}});
        return ReadPosition(machine.Config, "7");
      });
  machine.Ini.Set("Calibration_", {{"Item1", "\"S\",1.5,2.5,3,4,5,6,7,8,True"}});
  const Calibration calibration = ReadCalibration(machine.Config, "1");
  EXPECT_EQ(std::tie(calibration.Item, calibration.Name, calibration.Place9), std::tuple("1", "\"S\"", true));
  EXPECT_EQ(std::tie(calibration.Place1, calibration.Place2, calibration.Place3, calibration.Place4, calibration.Place5,
                     calibration.Place6, calibration.SdX, calibration.SdY),
            std::tuple(2, 2, 6, 8, 10, 12, 14, 16));
}

TEST(PositionTest, TheStageIsNeitherWhereItsFlagCannotBeRead) {
  struct Row {
    const char* text;
    bool lower;
    bool upper;
  };
  for (const Row& row : {Row{"True", true, false}, Row{"1", true, false}, Row{"False", false, true},
                         Row{"0", false, true}, Row{"", false, false}, Row{"Y", false, false}}) {
    TestConfiguration machine;
    machine.Ini.Set("Position_", {{"Item1", LineWith(11, row.text)}});
    const Position position = ReadPosition(machine.Config, "1");
    EXPECT_EQ(std::tie(position.LowerStage, position.UpperStage), std::tie(row.lower, row.upper)) << row.text;
  }
}

TEST(PositionTest, PositionsAndCalibrationsTreatTiesDifferently) {
  struct Row {
    double factor;
    const char* text;
    std::int32_t position;
    std::int32_t calibration;
  };
  for (const Row& row :
       {Row{1, "125.4", 125, 125}, Row{1, "2.5", 3, 2}, Row{2, "10.25", 21, 20}, Row{2, "-10.25", -21, -20},
        Row{2, "10.75", 22, 22}, Row{2, "10.26mm", 21, 21}, Row{2, "1073741823.5", 2147483647, 2147483647},
        Row{2, "1073741824", 0, 0}, Row{0, "7", 0, 0}, Row{0, "1e400", 0, 0}}) {
    SCOPED_TRACE(row.text);
    TestConfiguration machine;
    machine.Records.DeviceType.SDXYEncoderMMStepFactorOff = row.factor;
    machine.Ini.Set("Position_", {{"Item1", LineWith(5, row.text)}});
    machine.Ini.Set("Calibration_", {{"Item1", LineWith(7, row.text)}});
    EXPECT_EQ(ReadPosition(machine.Config, "1").SdX1, row.position);
    EXPECT_EQ(ReadCalibration(machine.Config, "1").SdX, row.calibration);
  }
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
