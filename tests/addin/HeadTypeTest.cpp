#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>
#include <vector>

#include "addin/config/HeadType.h"
#include "addin/config/ItemLine.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

using Testing::LineWith;
using Steps = std::vector<double>;

/// S steps of 0.5 mm and Z steps of 0.25 mm; tip mount depths 1 to 5; lengths that tell axis and rounding apart.
struct Heads : Testing::TestConfiguration {
  Heads() {
    Records.AxisS.MmPerStep = 0.5F;
    Records.AxisZ.MmPerStep = 0.25F;
    Records.ZCalibration.TipMountDepth12 = 1;
    Records.ZCalibration.TipMountDepth30 = 2;
    Records.ZCalibration.TipMountDepth125 = 3;
    Records.ZCalibration.TipMountDepth300 = 4;
    Records.ZCalibration.TipMountDepth1250 = 5;
    Ini.Set("HeadType", {{"SDTeachToolOffsetMM", "1.25"},
                         {"SDHomeSensorSeekOffsetMM", "-1.25"},
                         {"SDPreCollectHeightMM", "0.625"},
                         {"SDRFIDReadHeightMM", "2"},
                         {"SDHeadEjectOffsetMM", "10"}});
  }

  HeadType Read(std::string_view line) {
    Ini.Set("HeadType", {{"Item3", line}});
    return ReadHeadType(Config, "3");
  }
};

Steps SerialDiluteSteps(const HeadType& head) {
  return {head.SDTeachToolOffset, head.SDHomeSensorSeekOffset, head.SDPreCollectHeight, head.SDRFIDReadHeight,
          head.SDHeadEjectOffset};
}
const Steps none{0, 0, 0, 0, 0};
const Steps all{3, -3, 3, 8, 20};

TEST(HeadTypeTest, EachPlaceFillsItsField) {
  Heads heads;
  const HeadType head = heads.Read(
      "\"Head 8\",SERIALDILUTE,2.25,125,4.5,8.5,6.75,,,,10.5,11.5,600.5,1.5,14.25,-15.5mm,8_CH,,\"Text, \"18,,20.125");
  EXPECT_EQ(head.Text18, "Text") << "a comma inside quotes divides all the same";
  const HeadType whole = heads.Read(
      "\"Head 8\",SERIALDILUTE,2.25,125,4.5,9.5,6.75,,,,10.5,11.5,600.5,1.5,14.25,-15.5mm,8_CH,,\"Text 18\",,20.125");
  EXPECT_EQ(std::tie(whole.Index, whole.Name, whole.Kind, whole.HeadCode, whole.Text18),
            std::tuple("3", "Head 8", "SERIALDILUTE", "8_CH", "Text 18"));
  EXPECT_EQ(std::tie(whole.Field2, whole.Volume, whole.Field4, whole.Field6, whole.SPositionMM, whole.EjectZOffset,
                     whole.CollectZOffset, whole.Field20, whole.TipMountDepth),
            std::tuple(2.25, 125.0, 4.5, 6.75, 1.5, 14.25, -15.5, 20.125, 3.0));
  EXPECT_EQ(std::tie(head.Channels, whole.Channels, whole.EjectSPosition, whole.Field11, whole.SPosition),
            std::tuple(8, 10, 10, 12, 600));

  Testing::ExpectFlagsAtPlaces<HeadType>({{7, &HeadType::Flag7},
                                          {8, &HeadType::Flag8},
                                          {9, &HeadType::Flag9},
                                          {17, &HeadType::Flag17},
                                          {19, &HeadType::Flag19}},
                                         [&](const std::string& line) { return heads.Read(line); });
}

TEST(HeadTypeTest, TheVolumeClassPicksTheTipMountDepth) {
  struct Row {
    const char* volume;
    double depth;
  };
  for (const Row& row : {Row{"12.5", 1}, Row{"30", 2}, Row{"125", 3}, Row{"300", 4}, Row{"1250", 5}, Row{"12.50 ul", 1},
                         Row{"12", 0}, Row{"12.51", 0}, Row{"13", 0}, Row{"0", 0}, Row{"", 0}}) {
    Heads heads;
    EXPECT_EQ(heads.Read(LineWith(3, row.volume)).TipMountDepth, row.depth) << row.volume;
  }
}

TEST(HeadTypeTest, TheSerialDiluteKeysAreForSomeHeads) {
  struct Row {
    const char* name;
    std::string line;
    Steps steps;
  };
  for (const Row& row : {
           Row{"serial-dilute head", "A,SERIALDILUTE" + LineWith(15, "8_CH"), all},
           Row{"short teach tool", "A,CALIBRATE" + LineWith(15, "1_CH_SHORT"), all},
           Row{"teach tool of another shape", "A,CALIBRATE" + LineWith(15, "1_CH_LONG"), none},
           Row{"teach tool with its shape in quotes", "A,CALIBRATE" + LineWith(15, "\"1_CH_SHORT\""), none},
           Row{"microtiter head of that shape", "A,MICROTITER" + LineWith(15, "1_CH_SHORT"), none},
           Row{"microtiter head whose place 16 is empty", "A,MICROTITER" + LineWith(15, ""), none},
           Row{"microtiter head without a place 16", "A,MICROTITER" + LineWith(14, ""), all},
           Row{"kind in other letters", "A,serialdilute" + LineWith(15, "8_CH"), none},
           Row{"kind in quotes", "A,\"SERIALDILUTE\"" + LineWith(15, "8_CH"), none},
           Row{"line of a name alone", "A", all},
           Row{"no line", "", all},
       }) {
    SCOPED_TRACE(row.name);
    Heads heads;
    EXPECT_EQ(SerialDiluteSteps(heads.Read(row.line)), row.steps);
  }
}

TEST(HeadTypeTest, ASerialDiluteKeyThatCannotBeUsedCostsItsOwnFieldOnly) {
  Heads heads;
  heads.Records.AxisS.MmPerStep = 0.01F;
  heads.Ini.Set("HeadType",
                {{"SDTeachToolOffsetMM", "1.23"}, {"SDHeadEjectOffsetMM", "0.015"}, {"SDRFIDReadHeightMM", ""}});
  heads.Ini.Set("HeadType", {{"SDHomeSensorSeekOffsetMM", "1.25mm"}});
  EXPECT_EQ(SerialDiluteSteps(heads.Read("")), (Steps{123, 0, 3, 0, 2}));
  heads.Records.AxisS.MmPerStep = 0;
  EXPECT_EQ(SerialDiluteSteps(heads.Read("")), (Steps{0, 0, 3, 0, 0})) << "no step length";
  heads.Ini.Marivane.clear();
  EXPECT_EQ(SerialDiluteSteps(heads.Read("")), none) << "no keys";
}

TEST(HeadTypeTest, AnEmptySelectionIsTheInstalledHead) {
  Heads heads;
  heads.Ini.Set("HeadType", {{"Installed", "0"}, {"Item", "bare,SERIALDILUTE"}});
  const HeadType noHead = ReadHeadType(heads.Config);
  EXPECT_EQ(std::tie(noHead.Index, noHead.Name, noHead.Channels), std::tuple("0", "", 0));
  EXPECT_EQ(SerialDiluteSteps(noHead), all);
  EXPECT_EQ(heads.Ini.Reads,
            (std::vector<std::string>{"HeadType/Installed", "HeadType/Item0", "HeadType/SDTeachToolOffsetMM",
                                      "Headtype/SDHomeSensorSeekOffsetMM", "Headtype/SDPreCollectHeightMM",
                                      "Headtype/SDRFIDReadHeightMM", "Headtype/SDHeadEjectOffsetMM"}));

  heads.Ini.Marivane.erase({"HEADTYPE", "INSTALLED"});
  const HeadType bare = ReadHeadType(heads.Config);
  EXPECT_EQ(std::tie(bare.Index, bare.Name), std::tuple("", "bare")) << "the key is the bare word";

  // Selection and line follow the file argument; the keys never do.
  heads.Ini.Helmsway[{"HEADTYPE", "INSTALLED"}] = "5";
  heads.Ini.Helmsway[{"HEADTYPE", "ITEM5"}] = "other";
  heads.Ini.Helmsway[{"HEADTYPE", "SDTEACHTOOLOFFSETMM"}] = "500";
  const HeadType other = ReadHeadType(heads.Config, "", Testing::otherFile);
  EXPECT_EQ(std::tie(other.Index, other.Name), std::tuple("5", "other"));
  EXPECT_EQ(SerialDiluteSteps(other), all);
}

TEST(HeadTypeTest, AHostThatFailsLeavesABlankRecord) {
  Heads heads;
  heads.Ini.Set("HeadType", {{"Item3", "\"A\",SERIALDILUTE,,125"}});
  heads.Ini.SplitsFail = true;
  const HeadType unsplit = ReadHeadType(heads.Config, "3");
  EXPECT_EQ(std::tie(unsplit.Index, unsplit.Name, unsplit.Volume), std::tuple("3", "", 0.0));
  EXPECT_EQ(SerialDiluteSteps(unsplit), all) << "a line without places has no place 16";
  heads.Ini.ReadsFail = true;
  EXPECT_EQ(SerialDiluteSteps(ReadHeadType(heads.Config, "3")), none);
}

TEST(HeadTypeTest, TheHeadLineIsWrittenBackPlaceByPlace) {
  Heads heads;
  HeadType head = heads.Read(
      "Head 8,SERIALDILUTE,2.250,125,4.5,8,6.75,True,False,-1,1000,11,500,1.50,14.25,-15.5,8_CH,0,\"Text "
      "18\",TRUE,2e1");
  head.SPosition = 600;
  WriteHeadType(heads.Files, head, heads.Files.MarivaneIni());
  WriteHeadType(heads.Files, HeadType{.Index = "4"}, heads.Files.MarivaneIni());
  EXPECT_EQ(heads.Ini.Writes,
            (std::vector<std::string>{
                "HeadType/Item3=\"Head 8\",SERIALDILUTE,2.25,125,4.5,8,6.75,1,0,1,620,11,600,1.5,14.25,-15.5,8_CH,0,"
                "\"Text 18\",1,20",
                "HeadType/Item4=\"\",,0,0,0,0,0,0,0,0,0,0,0,0,0,0,,0,\"\",0,0"}));
  EXPECT_EQ(ReadHeadType(heads.Config, "3").EjectSPosition, 620);
}

TEST(HeadTypeTest, TheReleasePositionIsAddedInDoublePrecision) {
  Heads heads;
  WriteHeadType(heads.Files, HeadType{.Index = "1", .SPosition = 2147483647, .SDHeadEjectOffset = 20},
                Testing::otherFile);
  EXPECT_EQ(
      heads.Ini.Writes,
      (std::vector<std::string>{"HeadType/Item1=\"\",,0,0,0,0,0,0,0,0,2147483667,0,2147483647,0,0,0,,0,\"\",0,0"}));
  EXPECT_TRUE(heads.Ini.Helmsway.contains({"HEADTYPE", "ITEM1"})) << "into the file given";
}

TEST(HeadTypeTest, AHeadThatCannotBePutIntoALineIsNotWritten) {
  Heads heads;
  EXPECT_THROW(WriteHeadType(heads.Files, HeadType{.Index = "1", .Volume = HUGE_VAL}, ""), StepFailed);
  EXPECT_TRUE(heads.Ini.Writes.empty());
  heads.Ini.WritesFail = true;
  EXPECT_NO_THROW(WriteHeadType(heads.Files, HeadType{.Index = "1"}, "")) << "the line writer passes nothing up";
}

TEST(ItemLineTest, EmptyPlacesAtTheEndAreLeftOut) {
  struct Row {
    std::vector<std::string> texts;
    const char* line;
  };
  for (const Row& row : {Row{{"a", "b"}, "a,b"}, Row{{"a", "", ""}, "a"}, Row{{"", "b", ""}, ",b"}, Row{{"", ""}, ""},
                         Row{{}, ""}, Row{{"a", "\"\""}, "a,\"\""}, Row{{"a,", ""}, "a"}}) {
    Testing::TestConfiguration machine;
    WriteItemLine(machine.Files, "S", "K", row.texts, machine.Files.MarivaneIni());
    EXPECT_EQ(machine.Ini.Writes, (std::vector{"S/K=" + std::string(row.line)}));
  }
}

}  // namespace
}  // namespace OrvelCalibrateS
