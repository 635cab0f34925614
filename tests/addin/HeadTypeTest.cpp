#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "addin/config/HeadType.h"
#include "addin/config/ItemLine.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

using Testing::Lines;
using Testing::LineWith;
using Steps = std::vector<double>;

/// S steps of 0.5 mm and Z steps of 0.25 mm; tip mount depths 1 to 5; lengths that differ by axis and rounding.
struct Heads : Testing::TestConfiguration {
  Heads() {
    Records.AxisS.MmPerStep = 0.5F;
    Records.AxisZ.MmPerStep = 0.25F;
    ZCalibration& z = Records.ZCalibration;
    std::tie(z.TipMountDepth12, z.TipMountDepth30, z.TipMountDepth125) = std::tuple(1, 2, 3);
    std::tie(z.TipMountDepth300, z.TipMountDepth1250) = std::tuple(4, 5);
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

TEST(HeadTypeTest, WholeNumbersTakeTheEvenNeighbourAndRealOnesTheirLeadingNumber) {
  const HeadType head = Heads().Read("\"H\" 8,X,2.25,,4.5,8.5,,,,,10.5,11.5,600.5,1.5,14.25,-15.5mm");
  EXPECT_EQ(std::tie(head.Index, head.Name), std::tuple("3", "H 8"));
  EXPECT_EQ(std::tie(head.Channels, head.EjectSPosition, head.Field11, head.SPosition), std::tuple(8, 10, 12, 600));
  EXPECT_EQ(std::tie(head.EjectZOffset, head.CollectZOffset), std::tuple(14.25, -15.5));
}

TEST(HeadTypeTest, TheVolumeClassPicksTheTipMountDepth) {
  using Row = std::pair<const char*, double>;
  for (const auto& [volume, depth] : {Row{"12.5", 1}, Row{"30", 2}, Row{"125", 3}, Row{"300", 4}, Row{"1250", 5},
                                      Row{"12.50 ul", 1}, Row{"12", 0}, Row{"12.51", 0}, Row{"", 0}}) {
    EXPECT_EQ(Heads().Read(LineWith(3, volume)).TipMountDepth, depth) << volume;
  }
}

TEST(HeadTypeTest, TheSerialDiluteKeysAreForSomeHeads) {
  using Row = std::tuple<const char*, std::string, Steps>;
  for (const auto& [name, line, steps] : {
           Row{"short teach tool", "A,CALIBRATE" + LineWith(15, "1_CH_SHORT"), all},
           Row{"teach tool of another shape", "A,CALIBRATE" + LineWith(15, "1_CH_LONG"), none},
           Row{"teach tool with its shape in quotes", "A,CALIBRATE" + LineWith(15, "\"1_CH_SHORT\""), none},
           Row{"microtiter head of that shape", "A,MICROTITER" + LineWith(15, "1_CH_SHORT"), none},
           Row{"microtiter head whose place 16 is empty", "A,MICROTITER" + LineWith(15, ""), none},
           Row{"microtiter head without a place 16", "A,MICROTITER" + LineWith(14, ""), all},
           Row{"no line", "", all},
       }) {
    EXPECT_EQ(SerialDiluteSteps(Heads().Read(line)), steps) << name;
  }
}

TEST(HeadTypeTest, ASerialDiluteKeyThatCannotBeUsedCostsItsOwnFieldOnly) {
  Heads heads;
  heads.Records.AxisS.MmPerStep = 0.01F;
  heads.Ini.Set("HeadType", {{"SDTeachToolOffsetMM", "1.23"},
                             {"SDHomeSensorSeekOffsetMM", "1.25mm"},
                             {"SDRFIDReadHeightMM", ""},
                             {"SDHeadEjectOffsetMM", "0.015"}});
  EXPECT_EQ(SerialDiluteSteps(heads.Read("")), (Steps{123, 0, 3, 0, 2}));
  heads.Ini.Set("HeadType", {{"SDTeachToolOffsetMM", "1e307"}, {"SDHeadEjectOffsetMM", "1e99"}});
  EXPECT_EQ(SerialDiluteSteps(heads.Read("")).front(), 0) << "1e309 steps are no number";
  EXPECT_GT(SerialDiluteSteps(heads.Read("")).back(), 1e100) << "the field isn't limited to 32 bits";
  heads.Records.AxisS.MmPerStep = 0;
  EXPECT_EQ(SerialDiluteSteps(heads.Read("")), (Steps{0, 0, 3, 0, 0})) << "no step length";
}

TEST(HeadTypeTest, AnEmptySelectionIsTheInstalledHead) {
  Heads heads;
  heads.Ini.Set("HeadType", {{"Item", "bare,SERIALDILUTE"}});
  EXPECT_EQ(ReadHeadType(heads.Config).Name, "bare") << "the key is the bare word";
  EXPECT_EQ(heads.Ini.Reads[3], "Headtype/SDHomeSensorSeekOffsetMM") << "the section is spelled in two ways";
  heads.Ini.Helmsway = {
      {{"HEADTYPE", "INSTALLED"}, "5"}, {{"HEADTYPE", "ITEM5"}, "other"}, {{"HEADTYPE", "SDTEACHTOOLOFFSETMM"}, "500"}};
  const HeadType other = ReadHeadType(heads.Config, "", Testing::otherFile);
  EXPECT_EQ(std::tie(other.Index, other.Name), std::tuple("5", "other"));
  EXPECT_EQ(SerialDiluteSteps(other), all) << "selection and line follow the file argument, the keys never do";
}

TEST(HeadTypeTest, AHostThatFailsLeavesABlankRecord) {
  Heads heads;
  heads.Ini.SplitsFail = true;
  EXPECT_EQ(SerialDiluteSteps(heads.Read("\"A\",MICROTITER")), all) << "a line without places has no place 16";
  heads.Ini.ReadsFail = true;
  EXPECT_EQ(SerialDiluteSteps(ReadHeadType(heads.Config, "3")), none);
}

TEST(HeadTypeTest, ALengthIsDividedInDoublePrecision) {
  // The axis holds 0.0500000007: 4.025 mm are 80.4999988 steps, and 80.5 in single precision.
  Heads heads;
  heads.Records.AxisS.MmPerStep = 0.05F;
  heads.Ini.Set("HeadType", {{"SDTeachToolOffsetMM", "4.025"}, {"SDHeadEjectOffsetMM", "-4.025"}});
  EXPECT_EQ(SerialDiluteSteps(heads.Read("")).front(), 80);
  EXPECT_EQ(SerialDiluteSteps(heads.Read("")).back(), -80);
}

TEST(HeadTypeTest, TheHeadLineIsWrittenBackPlaceByPlace) {
  Heads heads;
  HeadType head = heads.Read(
      "Head 8,SERIALDILUTE,2.250,125,4.5,8,6.75,True,False,-1,1000,11,500,1.50,14.25,-15.5,8_CH,0,\"Text "
      "18\",TRUE,2e1");
  head.SPosition = 600;
  WriteHeadType(heads.Files, head, heads.Files.MarivaneIni());
  // The release position is added in double precision.
  WriteHeadType(heads.Files, {.Index = "4", .SPosition = 2147483647, .SDHeadEjectOffset = 20}, Testing::otherFile);
  EXPECT_EQ(heads.Ini.Writes,
            (Lines{"HeadType/Item3=\"Head 8\",SERIALDILUTE,2.25,125,4.5,8,6.75,1,0,1,620,11,600,1.5,14.25,-15.5,8_CH,0,"
                   "\"Text 18\",1,20",
                   "HeadType/Item4=\"\",,0,0,0,0,0,0,0,0,2147483667,0,2147483647,0,0,0,,0,\"\",0,0"}));
  EXPECT_TRUE(heads.Ini.Helmsway.contains({"HEADTYPE", "ITEM4"})) << "into the file given";
}

TEST(ItemLineTest, EmptyPlacesAtTheEndAreLeftOut) {
  using Row = std::pair<Lines, std::string>;
  for (const auto& [texts, line] : {Row{{"a", "", ""}, "a"}, Row{{"", "b", ""}, ",b"}, Row{{"", ""}, ""}, Row{{}, ""},
                                    Row{{"a", "\"\""}, "a,\"\""}, Row{{"a,", ""}, "a"}}) {
    Testing::TestConfiguration machine;
    WriteItemLine(machine.Files, "S", "K", texts, machine.Files.MarivaneIni());
    EXPECT_EQ(machine.Ini.Writes, Lines{"S/K=" + line});
    machine.Ini.WritesFail = true;
    EXPECT_NO_THROW(WriteItemLine(machine.Files, "S", "K", texts, machine.Files.MarivaneIni()));
  }
}

}  // namespace
}  // namespace OrvelCalibrateS
