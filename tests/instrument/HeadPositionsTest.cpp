#include <gtest/gtest.h>

#include "bench/instrument/HeadPositions.h"
#include "tests/host/TemporaryFolder.h"

namespace Helmsway {
namespace {

/// S steps of 0.05 mm, `moveSign` and an offset of 5 mm to the teach tool, so of 100 steps.
std::string MarivaneIni(const std::string& moveSign, const std::string& heads) {
  return "[DeviceType]\nInstalled=1\nItem1=M,True,m\n[CageType]\nInstalled=1\nItem1=C,c\n"
         "[Device_Type1_Cage1]\nAxis1=S,0.05,1,2,3,-9000,9000,0,0,0,0,0," +
         moveSign + ",-1,0\n[HeadType]\nSDTeachToolOffsetMM=5\n" + heads;
}

std::string Item(const std::string& number, const std::string& name, const std::string& kind, const std::string& volume,
                 const std::string& channels, const std::string& position, const std::string& code = "8_CH") {
  return "Item" + number + "=" + name + "," + kind + ",9," + volume + ",1," + channels + ",1,1,0,0,-700,1," + position +
         ",1.5,0,0," + code + ",0,,0,0\n";
}

class HeadPositionsTest : public testing::Test {
 protected:
  HeadPositions Read(std::string_view bytes, std::string_view screenText, const CalibrationValues& memory = {}) {
    return ReadHeadPositions(folder_.Write("Marivane.ini", bytes), screenText, memory);
  }

  TemporaryFolder folder_;
};

TEST_F(HeadPositionsTest, ASaveMovesEachHeadByTheOffsetToTheTool) {
  struct Row {
    const char* moveSign;
    const char* screenText;
    std::optional<std::int32_t> screen;
  };
  for (const Row& row : {Row{"1", "500", 600}, Row{"-1", "500", 400}, Row{"1", "0.5", 101}, Row{"-1", "-0.5", -101},
                         Row{"1", "-100.4", 0}, Row{"1", "", std::nullopt}, Row{"1", "2147483547", 2147483647},
                         Row{"1", "2147483548", std::nullopt}}) {
    SCOPED_TRACE(std::string(row.moveSign) + " * 100 + " + row.screenText);
    const HeadPositions positions =
        Read(MarivaneIni(row.moveSign, Item("1", "Eight", "SERIALDILUTE", "125", "8", "-580")), row.screenText);
    ASSERT_EQ(positions.heads.size(), 1U);
    EXPECT_EQ(positions.heads[0].screen, row.screen);
    EXPECT_EQ(positions.heads[0].file, -580);
    EXPECT_NEAR(positions.mmPerStep, 0.05, 1e-8);
  }
}

TEST_F(HeadPositionsTest, OnlyConcernedHeadsAreTold) {
  // The entry without a name ends the catalogue; a save still writes it.
  const std::string heads = Item("1", "Plates", "MICROTITER", "125", "96", "1") +
                            Item("2", "Short", "SERIALDILUTE", "12.5", "1", "2", "1_CH_SHORT") +
                            Item("3", "Large tool", "CALIBRATE", "0", "96", "3", "96_STD") +
                            Item("4", "Tool", "CALIBRATE", "0", "1", "4", "1_CH_SHORT") +
                            Item("5", "Tool of a class", "CALIBRATE", "30", "1", "5", "1_CH_SHORT") +
                            Item("6", "Trial", "SERIALDILUTE", "50", "8", "6") +
                            Item("7", "", "SERIALDILUTE", "300", "8", "7") +
                            Item("8", "Behind the end", "SERIALDILUTE", "30", "8", "8");
  const HeadPositions positions = Read(MarivaneIni("1", heads), "10", {{"AspirateOrigin_1Ch_12_S", "2"}});
  std::string told;
  for (const HeadPosition& head : positions.heads) {
    told += head.item + " " + head.name + " " + std::to_string(head.file) + " " +
            std::to_string(head.screen.value_or(-1)) + " [" + head.memoryName + "] [" + head.memory + "]\n";
  }
  EXPECT_EQ(told,
            "2 Short 2 110 [AspirateOrigin_1Ch_12_S] [2]\n"
            "4 Tool 4 110 [] []\n"
            "5 Tool of a class 5 110 [AspirateOrigin_1Ch_30_S] []\n"
            "6 Trial 6 110 [] []\n"
            "7  7 110 [AspirateOrigin_8Ch_300_S] []\n");
}

TEST_F(HeadPositionsTest, TheLastHeadOfAClassStandsForAll) {
  const std::string heads =
      Item("1", "First", "SERIALDILUTE", "125", "8", "590") + Item("2", "Last", "SERIALDILUTE", "125", "8", "600") +
      Item("3", "Other", "SERIALDILUTE", "300", "8", "610") + Item("4", "Trial", "SERIALDILUTE", "50", "8", "620");
  struct Row {
    const char* memory;
    Agreement agreement;
  };
  for (const Row& row : {Row{"600", Agreement::Same}, Row{"590", Agreement::Differs}, Row{"", Agreement::NoValue}}) {
    SCOPED_TRACE(row.memory);
    CalibrationValues memory;
    if (*row.memory != '\0') memory["AspirateOrigin_8Ch_125_S"] = row.memory;
    const HeadPositions positions = Read(MarivaneIni("1", heads), "", memory);
    ASSERT_EQ(positions.heads.size(), 4U);
    EXPECT_EQ(&positions.Counting(positions.heads[0]), &positions.heads[1]);
    EXPECT_EQ(&positions.Counting(positions.heads[3]), &positions.heads[3]);
    EXPECT_EQ(positions.AgreementOf(positions.heads[0]), row.agreement);
    EXPECT_EQ(positions.AgreementOf(positions.heads[1]), row.agreement);
    EXPECT_EQ(positions.AgreementOf(positions.heads[2]), Agreement::NoValue);
    EXPECT_EQ(positions.AgreementOf(positions.heads[3]), Agreement::NotKept);
  }
}

TEST_F(HeadPositionsTest, WithoutAFileThereAreNoHeads) {
  const HeadPositions positions = ReadHeadPositions(folder_.PathOf("none.ini"), "500", {});
  EXPECT_TRUE(positions.heads.empty());
  EXPECT_EQ(positions.mmPerStep, 0);
}

}  // namespace
}  // namespace Helmsway
