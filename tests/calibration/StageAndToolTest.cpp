#include <gtest/gtest.h>

#include <string>

#include "tests/calibration/SequenceTest.h"

namespace Helmsway {
namespace {

class StageAndTool : public SequenceTest {
 protected:
  static constexpr const char* NoTool =
      "file set HeadType Item5 Tool,OTHER,0,30,0,1,0,0,0,0,700,0,480,0,9,0,1_CH_SHORT,0,,0,0\n";
};

/// Behind the operator's word that the stage position is empty, with the head One on the module.
class EjectHeadToStage : public StageAndTool {
 protected:
  const std::string StageEmpty =
      "click 10\ncheck chkToolUninstalled\nclick 9\ncheck chkStageEmpty\nfile set HeadType Installed 1\n";
  static constexpr const char* NoHeadInstalled = "file set HeadType Installed 0\n";
  static constexpr const char* Registered = "write [HeadType] Installed=5\nwrite [TipType] Installed=0\n";

  // The SD values are a calibration's: 82.5 goes to the even 82.
  const std::string AtSix =
      "status Ejecting Pipette Head\nHOME ALL\nMOVE X 6100\nMOVE Y 6200\nMOVE SD_X 81\nMOVE SD_Y 82\n"
      "MOVE Z -100\nMOVE S 900\nMOVE Z -100\nMOVE S 0\nstatus cleared\n";
  // 120 - 443
  const std::string AtTwo =
      "status Ejecting Pipette Head\nHOME ALL\nMOVE X 2100\nMOVE Y 2200\nMOVE SD_X 71\nMOVE SD_Y 72\n"
      "MOVE Z -323\nMOVE S 900\nMOVE Z -100\nMOVE S 0\nstatus cleared\n";

  void ExpectAll(std::initializer_list<Row> rows) const { SequenceTest::ExpectAll(StageEmpty, "click 4\n", rows); }
};

TEST_F(EjectHeadToStage, TheHeadGoesToTheFreePosition) {
  const std::string noXLine = "file remove Device_Type2_Cage1 Axis6\n";
  const std::string noYLine = "file set Device_Type2_Cage1 Axis5 x,0.1,1,2,3,0,9000,0,0,0,0,0,1,-1,0\n";
  ExpectAll({
      {"position 6 of a device with X axis", "", AtSix},
      {"position 2 of one without, at the release height", NoXAxis, AtTwo},
      {"no line for X", noXLine, Changed(AtSix, {{"MOVE X 6100\n", ""}})},
      {"no line for X, no X axis", noXLine + NoXAxis, Changed(AtTwo, {{"MOVE X 2100\n", ""}})},
      {"no line for Y", noYLine, Changed(AtSix, {{"MOVE Y 6200\n", ""}})},
      {"no line for either", noYLine + noXLine, Changed(AtSix, {{"MOVE X 6100\nMOVE Y 6200\n", ""}})},
      {"a position that isn't listed", "file remove Position_2 Item6\n",
       Changed(AtSix, {{"X 6100", "X 0"}, {"Y 6200", "Y 0"}})},
      {"a calibration that isn't listed", "file remove Calibration_2 Item2\n",
       Changed(AtSix, {{"SD_X 81", "SD_X 0"}, {"SD_Y 82", "SD_Y 0"}})},
      {"no head: the teach tool is registered first", NoHeadInstalled,
       Registered + Changed(AtSix, {{"S 900", "S 700"}})},
      // The record of no head counts as a long one: 120 - 363.
      {"no head, no X axis: the height is that of no head", std::string(NoHeadInstalled) + NoXAxis,
       Registered + Changed(AtTwo, {{"S 900", "S 700"}, {"-323", "-243"}})},
      {"no head and no tool", std::string(NoHeadInstalled) + NoTool, Changed(AtSix, {{"S 900", "S 0"}})},
      {"a tool behind the list's end", std::string(NoHeadInstalled) + "file remove HeadType Item3\n",
       Changed(AtSix, {{"S 900", "S 0"}})},
      {"slider and collision detection play no part", ZCollision, AtSix},
  });
}

TEST_F(EjectHeadToStage, TheReleaseHeightIsFifteenMillimetresAboveTheStage) {
  const auto axisZ = [](const char* step, const char* moveSign) {
    return std::string(NoXAxis) + "file set Device_Type2_Cage1 Axis1 Z," + step + ",1,2,800,0,9000,0,0,0,0,0," +
           moveSign + ",-1,-100\n";
  };
  const auto at = [&](const char* z) { return Changed(AtTwo, {{"-323", z}}); };
  ExpectAll({
      {"300 - 500", axisZ("0.05", "1") + "file set Z_Calibration DeltaZ -600\n", at("-200")},
      {"-120 - 443", axisZ("0.125", "-1"), at("-563")},
      // 15 / 4.28571415 is 3.5 in single and 3.50000011 in double precision; -55 / s - 3 goes to -16.
      {"the quotient has single precision, and -12.5 goes away from zero", axisZ("4.2857143", "1"), at("-13")},
      // 2184 x 15 / 0.125 - 443
      {"the largest product that fits", axisZ("0.125", "2184"), at("261637")},
      {"a product out of 16 bits ends it", axisZ("0.125", "2185"), ""},
      {"no step length ends it", axisZ("0", "1"), ""},
      {"no step length doesn't matter where X goes to the safe height", NoZStep, AtSix},
      {"a stage out of 32 bits ends it", std::string(NoXAxis) + "file set Z_Calibration MountHeight 1e12\n", ""},
      {"what is registered by then stays", std::string(NoHeadInstalled) + axisZ("0", "1"), Registered},
  });
}

TEST_F(EjectHeadToStage, AFailureEndsItAndAStopRunsItOut) {
  ExpectAll({
      {"refused", "instrument refuse \"MOVE Y\"\n", Before("MOVE Y", AtSix) + "MOVE Y 6200 refused\n"},
      {"homing refused", "instrument refuse HOME\n", "status Ejecting Pipette Head\nHOME ALL refused\n"},
      {"stopped by the button of its panel", "during \"MOVE Y\" click 1\n",
       Before("MOVE Y", AtSix) + Stopped("MOVE Y 6200") + "status cleared\n"},
      {"the other Stop button is covered", "during \"MOVE Y\" click 16\n",
       Changed(AtSix, {{"MOVE Y 6200", "MOVE Y 6200 ...\n  ignored click 16\n... MOVE Y 6200"}})},
      {"stopped by the host", "during HOME host stop\n", Before("MOVE X", AtSix) + "status cleared\n"},
      {"a Stop from before is cleared by the click", "host stop\n", AtSix},
      {"stopped during a line that is refused", "during HOME click 1\ninstrument refuse HOME\n",
       "status Ejecting Pipette Head\n" + Stopped("HOME ALL", " refused")},
      {"stopped with the tool registered", std::string(NoHeadInstalled) + "during HOME click 1\n",
       Registered + std::string("status Ejecting Pipette Head\n") + Stopped("HOME ALL") + "status cleared\n"},
      {"no link: not even the status", "link down\n", ""},
      {"no link, and no head: registered all the same", std::string(NoHeadInstalled) + "link down\n", Registered},
      {"a file that can't be read", "file reads fail\n", ""},
      {"a file that can't be written doesn't matter to a head", "file writes fail\n", AtSix},
      {"but ends it where the tool is to be registered", std::string(NoHeadInstalled) + "file writes fail\n", ""},
      {"the link goes down during a line: the next one isn't sent", "during \"MOVE Y\" link down\n",
       Before("MOVE SD_X", AtSix)},
  });
}

TEST_F(EjectHeadToStage, TheKeyStillNamesTheHeadUntilTheToolIsConfirmed) {
  EXPECT_EQ(Play(StageEmpty, "click 4\nclick 11\ncheck chkToolInstalled\nclick 9\n"),
            AtSix + "write [HeadType] Installed=5\nwrite [TipType] Installed=0\nchanged\n");
}

/// On the main page as it is first reached; nothing has been homed.
class EjectTeachTool : public StageAndTool {
 protected:
  static std::string Warning(const std::string& nest, const std::string& answer) {
    return "message \"Eject Teach Tool\" ok-cancel exclamation " + answer +
           "\nThis feature will eject the teach tool to the " + nest +
           "\r\nPlease ensure that the nest is empty and doesn't contain any pipette heads.\r\n\r\n"
           "Click [OK] to continue or [Cancel] to cancel this process.\n";
  }

  void ExpectAll(std::initializer_list<Row> rows) const {
    SequenceTest::ExpectAll(std::string(MainPage) + "answer ok\n", "click 14\n", rows);
  }

  const std::string Agreed = Warning("NestA", "ok");
  // -563 + 56 + 4 + 96 - 9
  const std::string Moves =
      "MOVE Z -100\nMOVE X 50\nMOVE SLIDER_CLOSED\nMOVE X 3100\nMOVE Y 3200\nMOVE Z -100\nMOVE SD_X 310\n"
      "MOVE SD_Y 330\nSET_SPEED Z 1000\nMOVE Z -416\nMOVE S 700\nMOVE Z -100\nMOVE S 0\n";
  static constexpr const char* Recorded = "write [HeadType] Installed=0\n";
  const std::string Front = Agreed + Homing;
  const std::string Whole = Front + Moves + Recorded;
};

TEST_F(EjectTeachTool, TheToolGoesToTheSlotOfItsShape) {
  const auto to = [&](const char* sd, const char* z) {
    return Front + Changed(Moves, {{"310\nMOVE SD_Y 330", sd}, {"-416", z}}) + Recorded;
  };
  ExpectAll({
      {"slot 1", "", Whole},
      {"slot 2", "file set NestType Item1 NestA,STAGE3,,OTHER,0,1,2,0.5,,1_CH_SHORT,0,3,4,0.75,,1_CH_SHORT,0,5,6,1\n",
       to("330\nMOVE SD_Y 350", "-414")},
      {"slot 3 needs no match", "file set NestType Item1 NestA,STAGE3,,OTHER,0,1,2,0.5,,,0,3,4,0.75,,X,0,5,6,1\n",
       to("350\nMOVE SD_Y 370", "-412")},
      // -707 + 56 + 14 + 96 - 9, and the slider closes all the same.
      {"a nest on the lower stage", "pick cboNestType 1\n",
       Warning("NestB", "ok") + Homing +
           Changed(Moves, {{"X 3100", "X 4100"},
                           {"Y 3200", "Y 4200"},
                           {"310\nMOVE SD_Y 330", "510\nMOVE SD_Y 530"},
                           {"-416", "-550"}}) +
           Recorded},
      {"the installed nest plays no part", "file set NestType Installed 2\n", Whole},
      {"homed already", "click 5\n", Homing + Agreed + Moves + Recorded},
  });
}

TEST_F(EjectTeachTool, TheToolIsTheFirstOfTheList) {
  const std::string tool2 = "file set HeadType Item2 Tool2,CALIBRATE,0,30,0,1,0,0,0,0,701,0,480,0,10,0,";
  ExpectAll({
      {"an earlier one", tool2 + "1_CH_SHORT,0,,0,0\n",
       Front + Changed(Moves, {{"S 700", "S 701"}, {"-416", "-417"}}) + Recorded},
      {"a teach tool of another shape", tool2 + "96_CH,0,,0,0\n", Whole},
      {"the installed head plays no part", "file set HeadType Installed 3\n", Whole},
      {"none: nothing is homed", NoTool, Agreed},
      {"one behind the list's end", "file remove HeadType Item3\n", Agreed},
      {"one behind an entry without a name", "file set HeadType Item3 \",SERIALDILUTE\"\n", Agreed},
      {"one without a name",
       "file set HeadType Item5 \"\\\"\\\",CALIBRATE,0,30,0,1,0,0,0,0,700,0,480,0,9,0,1_CH_SHORT\"\n", Agreed},
  });
  EXPECT_EQ(Play(MainPage, "answer cancel\nclick 14\n"), Warning("NestA", "cancel"));
}

TEST_F(EjectTeachTool, ItFollowsTheConfiguration) {
  ExpectAll({
      {"no X axis", NoXAxis,
       Front + Changed(Moves, {{"MOVE X 50\nMOVE SLIDER_CLOSED\nMOVE X 3100\n", ""}, {"-416", "-424"}}) + Recorded},
      {"collision detection plays no part", ZCollision, Whole},
      // 557 - 56 - 4 - 96 + 9
      {"Z in the other direction", ZReversed, Front + Changed(Moves, {{"-416", "410"}}) + Recorded},
      {"no step length: the offset alone", NoZStep, Front + Changed(Moves, {{"-416", "-9"}}) + Recorded},
      // 0 + 56 + 4 + 96 - 9
      {"a stage out of 32 bits counts as 0", "file set Z_Calibration MountHeight 1e12\n",
       Front + Changed(Moves, {{"-416", "147"}}) + Recorded},
      {"half a step of the offset goes away from zero",
       "file set HeadType Item5 Tool,CALIBRATE,0,30,0,1,0,0,0,0,700,0,480,0,8.5,0,1_CH_SHORT,0,,0,0\n", Whole},
      {"a height out of 32 bits counts as 0",
       "file set HeadType Item5 Tool,CALIBRATE,0,30,0,1,0,0,0,0,700,0,480,0,1e10,0,1_CH_SHORT,0,,0,0\n",
       Front + Changed(Moves, {{"-416", "0"}}) + Recorded},
      {"a sum out of 32 bits has no line",
       "file set Position_2 Item3 STAGE3,Nest3,NEST,3100,3200,30,214748364,32,33,34,35,False\n",
       Front + Changed(Moves, {{"MOVE SD_Y 330\n", ""}}) + Recorded},
  });
  // -563 + 56 + 0 + 96 - 9
  EXPECT_EQ(
      Play("file remove NestType Item1\nfile remove NestType Item2\n" + std::string(MainPage), "answer ok\nclick 14\n"),
      Warning("", "ok") + Homing +
          Changed(Moves, {{"X 3100", "X 0"},
                          {"Y 3200", "Y 0"},
                          {"SD_X 310", "SD_X 0"},
                          {"SD_Y 330", "SD_Y 0"},
                          {"-416", "-420"}}) +
          Recorded);
}

TEST_F(EjectTeachTool, OnlyAStopKeepsTheToolRegistered) {
  const std::string last = Before("MOVE S 0", Moves);
  ExpectAll({
      {"refused", "instrument refuse \"MOVE Y\"\n",
       Front + Before("MOVE Y", Moves) + "MOVE Y 3200 refused\n" + Recorded},
      {"failed outright", "instrument fail \"MOVE Y\"\n",
       Front + Before("MOVE Y", Moves) + "MOVE Y 3200 failed\n" + Recorded},
      {"stopped", "during \"MOVE Y\" click 16\n", Front + Before("MOVE Y", Moves) + Stopped("MOVE Y 3200")},
      {"stopped by the host", "during \"MOVE Y\" host stop\n", Front + Before("MOVE Z -100\nMOVE SD_X", Moves)},
      {"stopped during a line that is refused", "during \"MOVE Y\" click 16\ninstrument refuse \"MOVE Y\"\n",
       Front + Before("MOVE Y", Moves) + Stopped("MOVE Y 3200", " refused")},
      {"stopped in the last line", "during \"MOVE S 0\" click 16\n", Front + last + Stopped("MOVE S 0")},
      {"refused in the last line", "instrument refuse \"MOVE S 0\"\n", Front + last + "MOVE S 0 refused\n" + Recorded},
      {"stopped while homing", "during HOME click 16\n",
       Agreed + Before("HOME ALL", Homing) + Stopped("HOME ALL") + "status cleared\n"},
      {"homing refused: its text stays", "instrument refuse HOME\n",
       Changed(Whole, {{"HOME ALL\nstatus cleared\n", "HOME ALL refused\n"}})},
      {"a second click on its button is out of order", "during \"MOVE Y\" click 14\n",
       Changed(Whole, {{"MOVE Y 3200", "MOVE Y 3200 ...\n  ignored click 14\n... MOVE Y 3200"}})},
      {"no link: no Stop is found", "link down\n", Agreed + "status Home all\nstatus Homing all axes\n" + Recorded},
      {"a file that can't be written", "file writes fail\n", Front + Moves},
      {"a file that can't be read: no tool", "file reads fail\n", Agreed},
  });
}

}  // namespace
}  // namespace Helmsway
