#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

#include "addin/config/PlateType.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

using Testing::LineWith;
using Testing::TestConfiguration;

constexpr std::array flags{
    &PlateType::Place14, &PlateType::Place15, &PlateType::Place16, &PlateType::Place17, &PlateType::Place18,
    &PlateType::Place19, &PlateType::Place20, &PlateType::Place21, &PlateType::Place22, &PlateType::Place23,
    &PlateType::Place24, &PlateType::Place25, &PlateType::Place26, &PlateType::Place27,
};

TEST(PlateTypeTest, ALineAndTwoKeysMakeTheRecord) {
  TestConfiguration test;
  test.Ini.Set("PlateType", {{"Item3", "\"Ra\"ck\", TIPRACK ,8,-12,14.5,5.5,6.5,7.5,8.5,9.5,\"t\",11.5,12.5,1e1,1"},
                             {"SBSA1Xmm", "1.25"},
                             {"SBSA1Ymm", " -2.5 "}});
  const PlateType plate = ReadPlateType(test.Files, "3");
  EXPECT_EQ(plate.Item, "3");
  EXPECT_EQ(plate.Name, "Rack");
  EXPECT_EQ(plate.Kind, " TIPRACK ");
  EXPECT_EQ(plate.Place2, 8);
  EXPECT_EQ(plate.Place3, -12);
  EXPECT_EQ(plate.PlateHeight, 14.5);
  EXPECT_EQ(plate.Place5, 5.5);
  EXPECT_EQ(plate.Place6, 6.5);
  EXPECT_EQ(plate.Place7, 7.5);
  EXPECT_EQ(plate.Place8, 8.5);
  EXPECT_EQ(plate.Place9, 9.5);
  EXPECT_EQ(plate.Place10, "\"t\"");
  EXPECT_EQ(plate.Place11, 11.5);
  EXPECT_EQ(plate.Place12, 12.5);
  EXPECT_EQ(plate.Place13, 10);
  EXPECT_TRUE(plate.Place14);
  EXPECT_EQ(plate.SBSA1Xmm, 1.25);
  EXPECT_EQ(plate.SBSA1Ymm, -2.5);
}

TEST(PlateTypeTest, EachFlagPlaceReachesItsField) {
  for (std::size_t i = 0; i < flags.size(); ++i) {
    SCOPED_TRACE(14 + i);
    TestConfiguration test;
    test.Ini.Set("PlateType", {{"Item1", LineWith(14 + i, "True")}});
    const PlateType plate = ReadPlateType(test.Files, "1");
    EXPECT_TRUE(plate.*flags[i]);
    EXPECT_EQ(std::count_if(flags.begin(), flags.end(), [&](auto flag) { return plate.*flag; }), 1);
  }
}

TEST(PlateTypeTest, ANumberIsReadStrictly) {
  struct Row {
    const char* text;
    double plateHeight;
    std::int16_t place2;
  };
  for (const Row& row : {Row{"14.4 mm", 0, 0}, Row{"", 0, 0}, Row{"\"14\"", 0, 0}, Row{"2.5", 2.5, 2},
                         Row{"3.5", 3.5, 4}, Row{" 6\t", 6, 6}, Row{"1 6", 0, 0}, Row{"40000", 40000, 0}}) {
    SCOPED_TRACE(row.text);
    TestConfiguration test;
    test.Ini.Set("PlateType", {{"Item1", LineWith(4, row.text) + ",5"}, {"Item2", LineWith(2, row.text) + ",5"}});
    const PlateType plate = ReadPlateType(test.Files, "1");
    EXPECT_EQ(plate.PlateHeight, row.plateHeight);
    EXPECT_EQ(plate.Place5, 5) << "the places behind it are read";
    EXPECT_EQ(ReadPlateType(test.Files, "2").Place2, row.place2);
    EXPECT_EQ(ReadPlateType(test.Files, "2").Place3, 5);
  }
}

TEST(PlateTypeTest, WhatIsMissingStaysEmpty) {
  TestConfiguration test;
  test.Ini.Set("PlateType", {{"Installed", "3"},
                             {"Item", "Bare,,1"},
                             {"Item3", "Third,,,,7"},
                             {"Item4", "\"Cut, by its comma\",TIPRACK,8,12,14.5"},
                             {"SBSA1Xmm", "1.5"}});
  EXPECT_EQ(ReadPlateType(test.Files, "").Name, "Bare") << "nothing is installed of a plate";
  EXPECT_EQ(ReadPlateType(test.Files, "").Item, "");
  const PlateType missing = ReadPlateType(test.Files, "9");
  EXPECT_EQ(missing.Item, "9");
  EXPECT_EQ(missing.Name, "");
  EXPECT_EQ(missing.PlateHeight, 0);
  EXPECT_EQ(missing.SBSA1Xmm, 1.5);
  EXPECT_EQ(missing.SBSA1Ymm, 0);
  EXPECT_EQ(ReadPlateType(test.Files, "4").Name, "Cut");
  EXPECT_EQ(ReadPlateType(test.Files, "4").Kind, " by its comma\"");
  EXPECT_EQ(ReadPlateType(test.Files, "4").PlateHeight, 12);
}

TEST(PlateTypeTest, TheKeysComeFromTheOneFileTheLineFromTheFileGiven) {
  TestConfiguration test;
  test.Ini.Set("PlateType", {{"Item1", "Here,,,,7"}, {"SBSA1Xmm", "1.5"}, {"SBSA1Ymm", "2.5"}});
  test.Ini.Helmsway[{"PLATETYPE", "ITEM1"}] = "There,,,,8";
  test.Ini.Helmsway[{"PLATETYPE", "SBSA1XMM"}] = "9";
  const PlateType plate = ReadPlateType(test.Files, "1", Testing::otherFile);
  EXPECT_EQ(plate.Name, "There");
  EXPECT_EQ(plate.PlateHeight, 8);
  EXPECT_EQ(plate.SBSA1Xmm, 1.5);
  EXPECT_EQ(plate.SBSA1Ymm, 2.5);
}

TEST(PlateTypeTest, AFileThatCannotBeReadGivesTheItemAlone) {
  TestConfiguration test;
  test.Ini.Set("PlateType", {{"Item1", "Rack,TIPRACK,8,12,14.5"}, {"SBSA1Xmm", "1.5"}});
  test.Ini.ReadsFail = true;
  const PlateType plate = ReadPlateType(test.Files, "1");
  EXPECT_EQ(plate.Item, "1");
  EXPECT_EQ(plate.Name, "");
  EXPECT_EQ(plate.PlateHeight, 0);
  EXPECT_EQ(plate.SBSA1Xmm, 0);
}

}  // namespace
}  // namespace OrvelCalibrateS
