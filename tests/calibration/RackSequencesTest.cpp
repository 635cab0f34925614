#include <gtest/gtest.h>

#include <string>

#include "tests/calibration/SequenceTest.h"

namespace Helmsway {
namespace {

/// Tips of the type Long from RackA on the upper stage, with the head One.
class RackSequences : public SequenceTest {
 protected:
  const std::string HeadOn = std::string(NoHead) + "click 13\n";
  const std::string TipOn = HeadOn + "click 3\n";
  static constexpr const char* CollectTip = "click 3\n";
  static constexpr const char* EjectTip = "click 2\n";
  static constexpr const char* AnyPick = "pick cboTipRack 1\npick cboTipRack 0\n";  // forgets Homed and AtRack

  // -443 - 64 is -379 with the tip; the plate is 116 steps high, the lift 132.
  const std::string ToRack =
      "status Moving to rack\n"
      "MOVE X 50\nMOVE SLIDER_CLOSED\nMOVE X 1100\nMOVE Y 1200\nMOVE SD_X 100\nMOVE SD_Y 110\nMOVE S 500\n"
      "MOVE Z -247\nstatus cleared\n";
  // The working value is 40 + 500.
  const std::string Collecting =
      "status Collecting tip\nwrite [TipType] Installed=1\n"
      "SET_SPEED S 200\nMOVE S 580\nMOVE Z -351\nMOVE Z -247\nSET_SPEED S 300\nstatus cleared\n";
  const std::string Ejecting =
      "status Ejecting tip\nwrite [TipType] Installed=0\n"
      "MOVE Z -279\nSET_SPEED S 200\nMOVE S 570\nMOVE Z -271\nSET_SPEED S 300\nstatus cleared\n";
  const std::string Whole = ToRack + Collecting;
};

TEST_F(RackSequences, CollectTipGoesToThePickedRack) {
  const auto rack = [](const char* x, const char* slider, const char* y, const char* sd, const char* s, const char* z) {
    return std::string("status Moving to rack\nMOVE X 50\nMOVE SLIDER_") + slider + "\nMOVE X " + x + "\nMOVE Y " + y +
           "\nMOVE SD_" + sd + "\nMOVE S " + s + "\nMOVE Z " + z + "\nstatus cleared\n";
  };
  const auto tip = [](const char* s, const char* down, const char* up) {
    return std::string("status Collecting tip\nwrite [TipType] Installed=1\nSET_SPEED S 200\nMOVE S ") + s +
           "\nMOVE Z " + down + "\nMOVE Z " + up + "\nSET_SPEED S 300\nstatus cleared\n";
  };
  ExpectAll(
      HeadOn, CollectTip,
      {
          {"homed and not at the rack", "", Whole},
          {"not homed", AnyPick, Homing + Whole},
          {"a rack on the lower stage", "pick cboPosition 1\n",
           Homing + rack("5100", "OPEN", "5200", "X 500\nMOVE SD_Y 510", "500", "-391") + tip("580", "-495", "-391")},
          {"a head of 8 channels", "pick cboHeadType 1\n",
           Homing + rack("1100", "CLOSED", "1200", "X 120\nMOVE SD_Y 130", "510", "-199") + tip("590", "-303", "-199")},
          {"a head of 12 channels", "pick cboHeadType 2\n",
           Homing + rack("1100", "CLOSED", "1200", "X 140\nMOVE SD_Y 150", "520", "-191") + tip("600", "-295", "-191")},
          {"a head of 96 channels", "pick cboHeadType 3\n",
           Homing + rack("1100", "CLOSED", "1200", "X 0\nMOVE SD_Y 0", "530", "-367") + tip("610", "-471", "-367")},
          {"a higher rack", "pick cboTipRack 1\n",
           Homing + rack("1100", "CLOSED", "1200", "X 100\nMOVE SD_Y 110", "500", "-203") + tip("580", "-307", "-203")},
      });
}

TEST_F(RackSequences, CollectTipFollowsTheConfiguration) {
  const auto z = [&](const char* rack, const char* down, const char* up) {
    return Changed(ToRack, {{"MOVE Z -247", rack}}) + Changed(Collecting, {{"MOVE Z -351", down}, {"MOVE Z -247", up}});
  };
  const std::string colliding = ToRack + Changed(Collecting, {{"MOVE Z -351", "HW_Z_COLLISION OFF\nMOVE Z -351"},
                                                              {"-247\n", "-247\nHW_Z_COLLISION ON\n"}});
  const std::string withoutZ =
      Changed(ToRack, {{"MOVE Z -247\n", ""}}) + Changed(Collecting, {{"MOVE Z -351\nMOVE Z -247\n", ""}});
  ExpectAll(
      HeadOn, CollectTip,
      {
          {"collision detection in use", ZCollision, colliding},
          {"as a number", "file set DeviceType ZCollisionStatus 1\n", colliding},
          {"collision detection not in use", "file set DeviceType ZCollisionStatus False\n", Whole},
          {"collision detection that can't be told", "file set DeviceType ZCollisionStatus Y\n", Whole},
          {"no X axis", NoXAxis, Changed(Whole, {{"MOVE X 50\nMOVE SLIDER_CLOSED\nMOVE X 1100\n", ""}})},
          {"no X axis and a lower stage",
           std::string(NoXAxis) + "file set Position_2 Item1 STAGE1,Upper,TIPRACK,1,2,10,11,12,13,14,15,True\n",
           Changed(z("MOVE Z -391", "MOVE Z -495", "MOVE Z -391"),
                   {{"MOVE X 50\nMOVE SLIDER_CLOSED\nMOVE X 1100\nMOVE Y 1200\n", "MOVE Y 2\n"}})},
          // The mounting depth counts: -403 in place of -379. The stroke is 2 mm.
          {"a tip without a name", "file set TipType Item1 \"\\\"\\\",SERIALDILUTE,0,0,0,0,0,4,2,0,50\"\n",
           z("MOVE Z -271", "MOVE Z -343", "MOVE Z -271")},
          {"a plate height that isn't a number", "file set PlateType Item1 \"RackA,TIPRACK,8,12,14.4 mm\"\n",
           z("MOVE Z -363", "MOVE Z -467", "MOVE Z -363")},
          // -379 + 16.5 and -443 + 0.5 - 24
          {"half a step goes away from zero", "file set PlateType Item1 RackA,TIPRACK,8,12,0.0625\n",
           z("MOVE Z -363", "MOVE Z -467", "MOVE Z -363")},
          // 440 - 3, 376 - 3; the plate's steps are -116.
          {"Z in the other direction", ZReversed, z("MOVE Z 241", "MOVE Z 345", "MOVE Z 241")},
          // -40 + 500, and once more -40.
          {"S in the other direction", "file set Device_Type2_Cage1 Axis2 S,0.25,1,200,300,0,9000,0,0,0,0,0,-1,1,0\n",
           Changed(Whole, {{"MOVE S 580", "MOVE S 420"}})},
          // 500 + 145 - 30 and 400 + 165
          {"a step of 0.1 mm",
           "file set Device_Type2_Cage1 Axis1 Z,0.1,1,2,800,0,9000,0,0,0,0,0,1,-1,-100\n"
           "file set Z_Calibration DeltaZ -1050\nfile set TipType Item1 Long,SERIALDILUTE,0,0,0,0,0,6,3,0,-10\n",
           z("MOVE Z 565", "MOVE Z 615", "MOVE Z 565")},
          {"no step length: no Z line", NoZStep, withoutZ},
          {"no axis lines", NoAxes,
           Changed(withoutZ, {{"MOVE X 50", "MOVE X 0"},
                              {"SET_SPEED S 200", "SET_SPEED S 0"},
                              {"SET_SPEED S 300", "SET_SPEED S 0"},
                              {"MOVE S 580", "MOVE S 500"}})},
          {"a depth out of 32 bits: the plate's term alone", "file set Z_Calibration MountHeight 1e12\n",
           z("MOVE Z 132", "MOVE Z 92", "MOVE Z 132")},
          // -443 + 132
          {"a tip too long for 32 bits: the first depth stays",
           "file set TipType Item1 Long,SERIALDILUTE,0,0,0,0,0,6,3,0,1e12\n",
           z("MOVE Z 132", "MOVE Z -351", "MOVE Z -311")},
      });
}

TEST_F(RackSequences, WithoutASelectionALoadDoesNotHappen) {
  struct Case {
    const char* name;
    std::string before;
    std::string transcript;
  };
  const auto z = [&](const std::string& text, const char* rack, const char* down) {
    return Before("MOVE Z", text) + rack + "\nstatus cleared\n" +
           Changed(Collecting, {{"MOVE Z -351", down}, {"MOVE Z -247", rack}});
  };
  const Case cases[] = {
      {"no position: the record is empty", "file remove Position_2 Item1\n",
       Changed(ToRack, {{"1100", "0"}, {"1200", "0"}, {"SD_X 100", "SD_X 0"}, {"SD_Y 110", "SD_Y 0"}}) + Collecting},
      {"no rack: a plate of no height", "file remove PlateType Item1\nfile remove PlateType Item2\n",
       z(ToRack, "MOVE Z -363", "MOVE Z -467")},
      {"no tip: that of the last load, which is none", "file remove TipType Item1\n",
       Changed(z(ToRack, "MOVE Z -271", "MOVE Z -327"), {{"Installed=1", "Installed=0"}})},
      // The teach tool: -467, and -403 with the tip; the working value is 40 + 480.
      {"no head: that of the last load, which is the installed one",
       "file remove HeadType Item1\nfile remove HeadType Item2\nfile remove HeadType Item3\n"
       "file remove HeadType Item4\n",
       Changed(z(ToRack, "MOVE Z -271", "MOVE Z -375"), {{"MOVE S 500", "MOVE S 480"}, {"MOVE S 580", "MOVE S 560"}})},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Play(row.before + HeadOn, CollectTip), row.transcript);
  }
}

TEST_F(RackSequences, ARefusedLineEndsItsSequenceAndAStopEndsThemAllThroughTheirClosingSteps) {
  const std::string closing = "status cleared\nstatus Collecting tip\nwrite [TipType] Installed=1\nstatus cleared\n";
  const std::string colliding = Changed(Collecting, {{"MOVE Z -351", "HW_Z_COLLISION OFF\nMOVE Z -351"}});
  ExpectAll(
      HeadOn, "click 3\nclick 2\n",
      {
          {"no failure: the rack has been reached", "", Whole + Ejecting},
          {"refused on the way to the rack, which isn't reached", "instrument refuse \"MOVE Y\"\n",
           Before("MOVE Y", ToRack) + "MOVE Y 1200 refused\n" + Collecting + ToRack + Ejecting},
          {"failed outright", "instrument fail \"MOVE Y\"\n",
           Before("MOVE Y", ToRack) + "MOVE Y 1200 failed\n" + Collecting + ToRack + Ejecting},
          {"refused at the stroke: collision detection stays off, the tip is recorded",
           std::string(ZCollision) + "instrument refuse \"MOVE Z -351\"\n",
           ToRack + Before("MOVE Z -351", colliding) + "MOVE Z -351 refused\n" + Ejecting},
          {"refused while the tip is ejected: none is recorded", "instrument refuse \"MOVE Z -279\"\n",
           Whole + Before("MOVE Z", Ejecting) + "MOVE Z -279 refused\n"},
          {"homing refused", std::string(AnyPick) + "instrument refuse HOME\n",
           "status Home all\nstatus Homing all axes\nHOME ALL refused\n" + Whole + Ejecting},
          {"stopped on the way to the rack, which counts as reached", "during \"MOVE Y\" click 16\n",
           Before("MOVE Y", ToRack) + Stopped("MOVE Y 1200") + closing + Ejecting},
          {"stopped by the host", "during \"MOVE Y\" host stop\n", Before("MOVE SD_X", ToRack) + closing + Ejecting},
          {"stopped in the last line to the rack", "during \"MOVE Z\" click 16\n",
           Before("MOVE Z", ToRack) + Stopped("MOVE Z -247") + closing + Ejecting},
          {"stopped at the stroke: collision detection stays off",
           std::string(ZCollision) + "during \"MOVE Z -351\" click 16\n",
           ToRack + Before("MOVE Z -351", colliding) + Stopped("MOVE Z -351") + "status cleared\n" + Ejecting},
          {"stopped while homing: no line, and all counts as done", std::string(AnyPick) + "during HOME click 16\n",
           Before("HOME ALL", Homing) + Stopped("HOME ALL") + "status cleared\nstatus Moving to rack\n" + closing +
               Ejecting},
          {"stopped during a line that is refused: the refusal counts",
           "during \"MOVE S 580\" click 16\ninstrument refuse \"MOVE S 580\"\n",
           ToRack + Before("MOVE S 580", Collecting) + Stopped("MOVE S 580", " refused") + Ejecting},
          {"stopped during a refused line to the rack: the next list finds the Stop, and goes nowhere",
           "during \"MOVE Y\" click 16\ninstrument refuse \"MOVE Y\"\n",
           Before("MOVE Y", ToRack) + Stopped("MOVE Y 1200", " refused") +
               "status Collecting tip\nwrite [TipType] Installed=1\nstatus cleared\n" + ToRack + Ejecting},
      });
}

TEST_F(RackSequences, ASecondTipIsCollectedWithoutGoingBackToTheRack) {
  EXPECT_EQ(Play(TipOn, "click 2\nclick 3\n"), Ejecting + Collecting);
}

TEST_F(RackSequences, APickDuringALineResetsFlagsAndLeavesTheListAlone) {
  ExpectAll(HeadOn, "click 3\nclick 2\n",
            {
                // The list to the rack stands; what is loaded behind it is of the lower stage: -587 - 64 - ...
                {"on the way: the rack counts as reached, the next sequence takes the pick",
                 "during \"MOVE Y\" pick cboPosition 1\n",
                 ToRack + Changed(Collecting, {{"-351", "-495"}, {"-247", "-391"}}) +
                     Changed(Ejecting, {{"-279", "-423"}, {"-271", "-415"}})},
                {"behind it: back to the rack first, without homing", "during \"SET_SPEED S 300\" pick cboTipRack 1\n",
                 Whole + Changed(ToRack, {{"-247", "-203"}}) + Changed(Ejecting, {{"-279", "-235"}, {"-271", "-227"}})},
                {"other buttons are out of order", "during \"MOVE Y\" click 14\nduring \"MOVE Y\" click 5\n",
                 Changed(ToRack,
                         {{"MOVE Y 1200", "MOVE Y 1200 ...\n  ignored click 14\n  ignored click 5\n... MOVE Y 1200"}}) +
                     Collecting + Ejecting},
            });
}

TEST_F(RackSequences, WithoutTheHostTheSequencesRunThroughTheirSteps) {
  ExpectAll(HeadOn, CollectTip,
            {
                {"no link, but homed by then; the rack hasn't been reached",
                 std::string(AnyPick) + "link down\nclick 3\nlink up\nclick 2\n",
                 "status Home all\nstatus Homing all axes\nstatus Moving to rack\nstatus Collecting tip\n"
                 "write [TipType] Installed=1\n" +
                     ToRack + Ejecting + Collecting},
                {"a file that can't be written", "file writes fail\n",
                 Changed(Whole, {{"write [TipType] Installed=1\n", ""}})},
                {"a file that can't be read", "file reads fail\n",
                 "status Moving to rack\nMOVE Y 0\nMOVE SD_X 0\nMOVE SD_Y 0\nMOVE S 0\nstatus cleared\n"
                 "status Collecting tip\nwrite [TipType] Installed=1\nSET_SPEED S 0\nMOVE S 0\nSET_SPEED S 0\n"
                 "status cleared\n"},
            });
}

TEST_F(RackSequences, EjectTipFollowsTheConfiguration) {
  const std::string noOffset =
      "file remove HeadType SDTeachToolOffsetMM\n"
      "file set HeadType Item1 One,SERIALDILUTE,0,30,0,1,0,0,0,0,900,0,500,1,5,7,1_CH_SHORT,0,,0,0\n"
      "file set Device_Type2_Cage1 Axis2 S,0.05,1,200,300,0,9000,0,0,0,0,0,1,-1,0\n";
  ExpectAll(
      TipOn, EjectTip,
      {
          {"at the rack", "", Ejecting},
          {"elsewhere: to the rack, and never home", AnyPick, ToRack + Ejecting},
          {"collision detection plays no part", ZCollision, Ejecting},
          {"the lower stage", "pick cboPosition 1\n",
           Changed(ToRack, {{"CLOSED", "OPEN"},
                            {"1100", "5100"},
                            {"1200", "5200"},
                            {"SD_X 100", "SD_X 500"},
                            {"SD_Y 110", "SD_Y 510"},
                            {"-247", "-391"}}) +
               Changed(Ejecting, {{"-279", "-423"}, {"-271", "-415"}})},
          // -395 + 164, 40 + 550 - 10, -355 + 132
          {"a head of 8 channels", "pick cboHeadType 1\n",
           Changed(ToRack, {{"SD_X 100", "SD_X 120"}, {"SD_Y 110", "SD_Y 130"}, {"S 500", "S 510"}, {"-247", "-199"}}) +
               Changed(Ejecting, {{"-279", "-231"}, {"570", "580"}, {"-271", "-223"}})},
          {"500 - 20 by a step of 0.05 mm", noOffset + AnyPick,
           ToRack + Changed(Ejecting, {{"MOVE S 570", "MOVE S 480"}})},
          // -40 + 540 + 10
          {"S in the other direction", "file set Device_Type2_Cage1 Axis2 S,0.25,1,200,300,0,9000,0,0,0,0,0,-1,1,0\n",
           Changed(Ejecting, {{"570", "510"}})},
          // -164 - 3 + 440, -132 - 3 + 400
          {"Z in the other direction", ZReversed, Changed(Ejecting, {{"-279", "273"}, {"-271", "265"}})},
          {"a file that has an entry for no tip", "file set TipType Item0 Bare,X,0,0,0,0,0,0,0,0,4\n",
           Changed(Ejecting, {{"-271", "-279"}})},
          {"a key that can't be written: the tip still counts", "file writes fail\n",
           Changed(Ejecting, {{"write [TipType] Installed=0\n", ""}, {"-271", "-247"}})},
          {"no S step length: no S line", "file set Device_Type2_Cage1 Axis2 S,0,1,200,300,0,9000,0,0,0,0,0,1,-1,0\n",
           Changed(Ejecting, {{"MOVE S 570\n", ""}})},
          {"no Z step length: no Z line", NoZStep, Changed(Ejecting, {{"MOVE Z -279\n", ""}, {"MOVE Z -271\n", ""}})},
          {"a mounting depth out of 32 bits: the first depth stays", "file set Z_Calibration TipMountDepth30 1e12\n",
           Changed(Ejecting, {{"-271", "-311"}})},
          {"stopped: the key stays", "during \"MOVE Z -279\" click 16\n",
           Before("MOVE Z", Ejecting) + Stopped("MOVE Z -279") + "status cleared\n"},
      });
}

TEST_F(RackSequences, MoveToRackAloneWritesTheWorkingValue) {
  const std::string offset100 = "file set HeadType SDTeachToolOffsetMM 25\n";
  const std::string reversed = "file set Device_Type2_Cage1 Axis2 S,0.25,1,200,300,0,9000,0,0,0,0,0,-1,1,0\n";
  struct Case {
    const char* name;
    std::string script;
    const char* current;
  };
  const Case cases[] = {
      {"100 + 500", offset100, "current 600\n"},
      {"-100 + 500", offset100 + reversed, "current 400\n"},
      {"a line that is refused doesn't take it back", "instrument refuse \"MOVE X\"\n", "current 540\n"},
      {"a head to which the offset doesn't apply",
       "file set HeadType Item1 One,MICROTITER,0,30,0,1,0,0,0,0,900,0,500,2.5,5,7,1_CH_SHORT,0,,0,0\n",
       "current 500\n"},
      {"a head that is gone: no place at all, and the offset alone", "file remove HeadType Item1\n", "current 40\n"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    const std::string transcript = Play(HeadOn, row.script + "click 3\nshow\nclick 2\nshow\n");
    EXPECT_NE(transcript.find(row.current), std::string::npos) << transcript;
    EXPECT_TRUE(transcript.ends_with(row.current)) << transcript;
  }
}

}  // namespace
}  // namespace Helmsway
