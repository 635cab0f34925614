#include <gtest/gtest.h>

#include <string>

#include "tests/calibration/SequenceTest.h"

namespace Helmsway {
namespace {

/// Runs after the operator has confirmed that the stage position is empty, with the head One on the module.
class EjectHeadToStage : public SequenceTest {
 protected:
  const std::string StageEmpty =
      "click 10\ncheck chkToolUninstalled\nclick 9\ncheck chkStageEmpty\nfile set HeadType Installed 1\n";
  const std::string NoneInstalled = "file set HeadType Installed 0\n";
  const std::string Registered = "write HeadType Installed 5\nwrite TipType Installed 0\n";

  // The SD values are those of a calibration: 82.5 is rounded to the even 82.
  const std::string AtSix =
      "status Ejecting Pipette Head\nHOME ALL\nMOVE X 6100\nMOVE Y 6200\nMOVE SD_X 81\nMOVE SD_Y 82\n"
      "MOVE Z -100\nMOVE S 900\nMOVE Z -100\nMOVE S 0\nstatus\n";
  // 120 - 443
  const std::string AtTwo =
      "status Ejecting Pipette Head\nHOME ALL\nMOVE X 2100\nMOVE Y 2200\nMOVE SD_X 71\nMOVE SD_Y 72\n"
      "MOVE Z -323\nMOVE S 900\nMOVE Z -100\nMOVE S 0\nstatus\n";
};

TEST_F(EjectHeadToStage, TheHeadGoesToTheFreePosition) {
  const std::string noXLine = "file remove Device_Type2_Cage1 Axis6\n";
  const std::string noYLine = "file set Device_Type2_Cage1 Axis5 x,0.1,1,2,3,0,9000,0,0,0,0,0,1,-1,0\n";
  const std::string tool = "file set HeadType Item5 Tool,OTHER,0,30,0,1,0,0,0,0,700,0,480,0,9,0,1_CH_SHORT\n";
  // clang-format off
  ExpectAll(StageEmpty, "click 4\n", {
      {"position 6 of a device with X axis", "", AtSix},
      {"position 2 of one without, at the release height", NoXAxis, AtTwo},
      {"no line for Y", noYLine, With(AtSix, "MOVE Y 6200\n>")},
      {"nor for X", noXLine + NoXAxis, With(AtTwo, "MOVE X 2100\n>")},
      {"a position that isn't listed", "file remove Position_2 Item6\n", With(AtSix, "X 6100>X 0|Y 6200>Y 0")},
      {"no head: the tool is registered first", NoneInstalled, Registered + With(AtSix, "S 900>S 700")},
      // The record of no head counts as a long one: 120 - 363.
      {"the height is that of no head", NoneInstalled + NoXAxis, Registered + With(AtTwo, "S 900>S 700|-323>-243")},
      {"no head and no tool", NoneInstalled + tool, With(AtSix, "S 900>S 0")},
      // 15 / 4.28571415 is 3.5 in single and 3.50000011 in double precision; -55 / s - 3 goes to -16.
      {"single precision; -12.5 goes away from zero", NoXAxis + AxisZ("4.2857143", "1,-1"), With(AtTwo, "-323>-13")},
      // 120 - 16777659 is odd.
      {"the sum in double precision", NoXAxis + "file set Z_Calibration MountHeight 2097252\n",
       With(AtTwo, "-323>-16777539")},
      {"a stage out of 32 bits ends it", NoXAxis + FarAway, ""},
      {"a product out of 16 bits ends it", NoXAxis + AxisZ("0.125", "2185,-1"), ""},
      {"no step length ends it, but for what is registered", NoneInstalled + NoXAxis + NoZStep, Registered},
  });
  // clang-format on
}

TEST_F(EjectHeadToStage, AFailureEndsItAndAStopRunsItOut) {
  const std::string stop = "during \"MOVE Y\" click 1\n";
  // clang-format off
  ExpectAll(StageEmpty, "click 4\n", {
      {"refused", Refuse("MOVE Y"), Refused("MOVE Y 6200", AtSix)},
      {"stopped by the button of its panel", stop, Stopped("MOVE Y 6200", AtSix) + "status\n"},
      {"the other button is covered", Stop("MOVE Y"), With(AtSix, "MOVE Y 6200>  ignored click 16\nMOVE Y 6200")},
      {"a Stop from before is cleared by the click", "host stop\n", AtSix},
      {"a refusal counts more than a Stop", stop + Refuse("MOVE Y"), Stopped("MOVE Y 6200", AtSix, " refused")},
      {"no link, and no head: registered all the same", NoneInstalled + "link down\n", Registered},
      {"the link goes down during a line", "during \"MOVE Y\" link down\n", Before("MOVE SD_X", AtSix)},
      {"a file that can't be read", "file reads fail\n", ""},
      {"a file that can't be written doesn't matter to a head", "file writes fail\n", AtSix},
      {"the key names the head until then", "click 4\nclick 11\ncheck chkToolInstalled\nclick 9\n",
       AtSix + Registered + "changed false\nignored click 4\n"},
  });
  // clang-format on
}

/// On the main page as it is first reached; nothing has been homed.
class EjectTeachTool : public SequenceTest {
 protected:
  static std::string Warning(const std::string& nest, const std::string& answer) {
    return "message Eject Teach Tool ok-cancel exclamation " + answer +
           "\nThis feature will eject the teach tool to the " + nest +
           "\r\nPlease ensure that the nest is empty and doesn't contain any pipette heads.\r\n\r\n"
           "Click [OK] to continue or [Cancel] to cancel this process.\n";
  }

  const std::string Agreed = Warning("NestA", "ok");
  // -563 + 56 + 4 + 96 - 9
  const std::string Moves =
      "MOVE Z -100\nMOVE X 50\nMOVE SLIDER_CLOSED\nMOVE X 3100\nMOVE Y 3200\nMOVE Z -100\nMOVE SD_X 310\n"
      "MOVE SD_Y 330\nSET_SPEED Z 1000\nMOVE Z -416\nMOVE S 700\nMOVE Z -100\nMOVE S 0\n";
  const std::string Recorded = "write HeadType Installed 0\n";
  const std::string Front = Agreed + Homing;
  const std::string Whole = Front + Moves + Recorded;

  static std::string Tool(const std::string& item, const std::string& s, const std::string& eject,
                          const std::string& code) {
    return "file set HeadType " + item + " Tool,CALIBRATE,0,30,0,1,0,0,0,0," + s + ",0,480,0," + eject + ",0," + code +
           "\n";
  }
};

TEST_F(EjectTeachTool, TheFirstToolGoesToTheSlotOfItsShape) {
  const std::string nest = "file set NestType Item1 NestA,STAGE3,,OTHER,0,1,2,0.5,,";
  const auto depths = [](const std::string& mount, const std::string& nestDepth, const std::string& tool) {
    return "file set Z_Calibration MountHeight " + mount + "\nfile set Z_Calibration NestDepth_XY_6 " + nestDepth +
           "\nfile set Z_Calibration HeadDepth_TeachTool_1Ch " + tool + "\n";
  };
  const std::string halfSteps =
      AxisZ("8", "1,-1") + depths("100", "20", "4") + "file set NestType Item1 NestA,STAGE3,One,1_CH_SHORT,0,1,2,8\n";
  const std::string noNests = "file remove NestType Item1\nfile remove NestType Item2\n";
  // clang-format off
  ExpectAll(MainPage + "answer ok\n", "click 14\n", {
      {"slot 1", "", Whole},
      {"slot 2", nest + "1_CH_SHORT,0,3,4,0.75,,1_CH_SHORT\n", With(Whole, "_X 310>_X 330|_Y 330>_Y 350|-416>-414")},
      {"slot 3: no match", nest + ",0,3,4,0.75,,X,0,5,6,1\n", With(Whole, "_X 310>_X 350|_Y 330>_Y 370|-416>-412")},
      // -707 + 56 + 14 + 96 - 9, and the slider closes all the same.
      {"a nest on the lower stage", "pick cboNestType 1\n",
       With(Whole, "NestA>NestB|3100>4100|3200>4200|_X 310>_X 510|_Y 330>_Y 530|-416>-550")},
      {"homed already", "click 5\n", Homing + Agreed + Moves + Recorded},
      {"an earlier tool", Tool("Item2", "701", "10", "1_CH_SHORT"), With(Whole, "S 700>S 701|-416>-417")},
      {"none: nothing is homed", Tool("Item5", "700", "9", "X"), Agreed},
      {"no X axis", NoXAxis, With(Whole, "MOVE X 50\nMOVE SLIDER_CLOSED\nMOVE X 3100\n>|-416>-424")},
      {"collision detection plays no part", ZCollision, Whole},
      // 557 - 56 - 4 - 96 + 9
      {"Z in the other direction", ZReversed, With(Whole, "-416>410")},
      {"a sum out of 32 bits has no line", WideNest, With(Whole, "MOVE SD_X 310\n>")},
      // Nest, tool and offset are 2.5, 0.5, and 2.5 or 1.5 steps: -12 + 3 + 1 + 1, and 3 or 2 off.
      {"each term rounds away from zero", halfSteps + Tool("Item5", "700", "2.5", "1_CH_SHORT"),
       With(Whole, "-416>-10")},
      {"and by itself", halfSteps + Tool("Item5", "700", "1.5", "1_CH_SHORT"), With(Whole, "-416>-9")},
      // 2147483637 - 15 + 20 - 9; the tool's depth before the height would overflow.
      {"the height comes before the tool", AxisZ("1", "1,-1") + depths("-2147483610", "0", "20") +
       "file set NestType Item1 NestA,STAGE3,One,1_CH_SHORT,0,1,2,-15\n", With(Whole, "-416>2147483633")},
      {"a nest out of 32 bits: from 0", depths("100", "1e12", "12"), With(Whole, "-416>91")},
      {"an offset out of 32 bits: 0", Tool("Item5", "700", "1e10", "1_CH_SHORT"), With(Whole, "-416>0")},
      {"a stage out of 32 bits: from 0", FarAway, With(Whole, "-416>147")},
  });
  // clang-format on
  EXPECT_EQ(Play(MainPage, "answer cancel\nclick 14\n"), Warning("NestA", "cancel"));
  // -563 + 56 + 0 + 96 - 9
  EXPECT_EQ(Play(noNests + MainPage, "answer ok\nclick 14\n"),
            With(Whole, "NestA>|3100>0|3200>0|_X 310>_X 0|_Y 330>_Y 0|-416>-420"));
}

TEST_F(EjectTeachTool, OnlyAStopKeepsTheToolRegistered) {
  const std::string all = Front + Moves;
  // clang-format off
  ExpectAll(MainPage + "answer ok\n", "click 14\n", {
      {"refused", Refuse("MOVE Y"), Refused("MOVE Y 3200", all) + Recorded},
      {"stopped", Stop("MOVE Y"), Stopped("MOVE Y 3200", all)},
      {"stopped and refused", Stop("MOVE Y") + Refuse("MOVE Y"), Stopped("MOVE Y 3200", all, " refused")},
      {"stopped while homing", Stop("HOME"), Stopped("HOME ALL", Front) + "status\n"},
      {"homing refused: its text stays", Refuse("HOME"), Refused("HOME ALL", Front) + Moves + Recorded},
      {"others are barred", "during \"MOVE Y\" click 14\n", With(Whole, "MOVE Y 3200>  ignored click 14\nMOVE Y 3200")},
      {"no link: no Stop is found", "link down\n", Before("HOME ALL", Front) + Recorded},
      {"a file that can't be written", "file writes fail\n", all},
      {"a file that can't be read: no tool", "file reads fail\n", Agreed},
  });
  // clang-format on
}

}  // namespace
}  // namespace Helmsway
