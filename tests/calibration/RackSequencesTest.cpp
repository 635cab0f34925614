#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/calibration/SequenceTest.h"

namespace Helmsway {
namespace {

/// Tips of the type Long from RackA on the upper stage, with the head One.
class RackSequences : public SequenceTest {
 protected:
  const std::string HeadOn = NoHead + "click 13\n";
  const std::string TipOn = HeadOn + "click 3\n";
  static constexpr const char* CollectTip = "click 3\n";
  static constexpr const char* EjectTip = "click 2\n";

  // -443 + 64 is -379 with the tip; the plate is 116 steps high, the lift 132.
  const std::string ToRack =
      "status Moving to rack\nMOVE X 50\nMOVE SLIDER_CLOSED\nMOVE X 1100\nMOVE Y 1200\nMOVE SD_X 100\nMOVE SD_Y 110\n"
      "MOVE S 500\nMOVE Z -247\nstatus\n";
  // The working value is 40 + 500.
  const std::string Collecting =
      "status Collecting tip\nwrite TipType Installed 1\n"
      "SET_SPEED S 200\nMOVE S 580\nMOVE Z -351\nMOVE Z -247\nSET_SPEED S 300\nstatus\n";
  const std::string Ejecting =
      "status Ejecting tip\nwrite TipType Installed 0\n"
      "MOVE Z -279\nSET_SPEED S 200\nMOVE S 570\nMOVE Z -271\nSET_SPEED S 300\nstatus\n";
  const std::string Whole = ToRack + Collecting;

  /// The head One with that eject stroke in mm.
  static std::string Stroke(const std::string& mm) {
    return "file set HeadType Item1 One,SERIALDILUTE,0,30,0,1,0,0,0,0,900,0,500," + mm + ",5,7,1_CH_SHORT,0,,0,0\n";
  }

  /// The way to the rack and the collection with other heights: the height of the rack and the height of the stroke.
  std::string At(const std::string& rack, const std::string& stroke) const {
    return With(ToRack, "-247>" + rack) + With(Collecting, "-351>" + stroke + "|-247>" + rack);
  }
};

TEST_F(RackSequences, CollectTipFollowsSelectionAndConfiguration) {
  const std::string colliding =
      With(Collecting, "MOVE Z -351>HW_Z_COLLISION OFF\nMOVE Z -351|-247>-247\nHW_Z_COLLISION ON");
  const std::string noName = "file set TipType Item1 \"\\\"\\\",X,0,0,0,0,0,4,2,0,50\"\n";
  // clang-format off
  ExpectAll(HeadOn, CollectTip, {
      {"homed and not at the rack", "", Whole},
      {"not homed", AnyPick, Homing + Whole},
      {"the lower stage", "pick cboPosition 1\n",
       Homing + With(At("-391", "-495"), "CLOSED>OPEN|1100>5100|1200>5200|_X 100>_X 500|_Y 110>_Y 510")},
      {"8 channels", "pick cboHeadType 1\n",
       Homing + With(At("-199", "-303"), "_X 100>_X 120|_Y 110>_Y 130|S 500>S 510|580>590")},
      {"12 channels", "pick cboHeadType 2\n",
       Homing + With(At("-191", "-295"), "_X 100>_X 140|_Y 110>_Y 150|S 500>S 520|580>600")},
      {"96 channels", "pick cboHeadType 3\n",
       Homing + With(At("-367", "-471"), "_X 100>_X 0|_Y 110>_Y 0|S 500>S 530|580>610")},
      {"a higher rack", "pick cboTipRack 1\n", Homing + At("-203", "-307")},
      {"collision detection in use", ZCollision, ToRack + colliding},
      {"no X axis", NoXAxis, With(Whole, "MOVE X 50\nMOVE SLIDER_CLOSED\nMOVE X 1100\n>")},
      // The mounting depth counts: -403 in place of -379. The stroke is 2 mm.
      {"a tip without a name", noName, At("-271", "-343")},
      // -379 + 16.5 and -443 + 0.5 - 24
      {"half a step goes away from zero", "file set PlateType Item1 RackA,X,8,12,0.0625\n", At("-363", "-467")},
      // 440 - 3, 376 - 3; the plate's steps are -116.
      {"Z in the other direction", ZReversed, At("241", "345")},
      // -40 + 500, and once more -40.
      {"S in the other direction", AxisS("0.25", "-1,1"), With(Whole, "580>420")},
      {"a depth out of 32 bits: the plate's term alone", FarAway, At("132", "92")},
      {"the tip's depth alone: the first depth stays", "file set TipType Item1 Long,X,0,0,0,0,0,6,3,0,1e12\n",
       With(ToRack, "-247>132") + With(Collecting, "-247>-311")},
      // Odd, so that single precision doesn't have it, and the sum out of 32 bits: 40 + 2147483681.
      {"S in double precision", "file set HeadType Item1 One,SERIALDILUTE,0,30,0,1,0,0,0,0,900,0,2147483641,2.5,5,7,"
       "1_CH_SHORT,0,,0,0\n", With(Whole, "S 500>S 2147483641|580>2147483721")},
      // -2097207 * 8 - 3 + 116 - 24; -2097199 * 8 - 3 + 132
      {"Z too", "file set Z_Calibration MountHeight 2097252\n", At("-16777463", "-16777567")},
      // -47 * 16 - 3 + 132; -55 * 16 - 3 + 116 - 4e9 * 8
      {"a stroke out of 32 bits", AxisZ("0.125", "1,-2") + "file set TipType Item1 Long,X,0,0,0,0,0,6,2e9,0,8\n",
       At("-623", "-32000000767")},
  });
  // clang-format on
  const std::pair<std::string, std::string> unselected[] = {
      {"file remove Position_2 Item1\n", With(Whole, "1100>0|1200>0|_X 100>_X 0|_Y 110>_Y 0")},
      {"file remove PlateType Item1\nfile remove PlateType Item2\n", At("-363", "-467")},
      {"file remove TipType Item1\n", With(At("-271", "-327"), "Installed 1>Installed 0")},
      // The installed head, which is the teach tool: -467, and -403 with the tip; the working value is 40 + 480.
      {NoHeads, With(At("-271", "-375"), "S 500>S 480|S 580>S 560")},
  };
  for (const auto& [file, transcript] : unselected) EXPECT_EQ(Play(file + HeadOn, CollectTip), transcript) << file;
}

TEST_F(RackSequences, ARefusedLineEndsItsSequenceAndAStopEndsThemAllThroughTheirClosingSteps) {
  const std::string begun = "status Collecting tip\nwrite TipType Installed 1\n";
  const std::string closing = "status\n" + begun + "status\n";
  const std::string colliding = ToRack + With(Collecting, "MOVE Z -351>HW_Z_COLLISION OFF\nMOVE Z -351");
  const std::string below = With(Collecting, "-351>-495|-247>-391") + With(Ejecting, "-279>-423|-271>-415");
  const std::string otherRack = With(ToRack, "-247>-203") + With(Ejecting, "-279>-235|-271>-227");
  // clang-format off
  ExpectAll(HeadOn, "click 3\nclick 2\n", {
      {"a second tip without going back", "click 3\nclick 2\n", Whole + Ejecting + Collecting + Ejecting},
      {"refused: not reached", Refuse("MOVE Y"), Refused("MOVE Y 1200", ToRack) + Collecting + ToRack + Ejecting},
      {"refused at the stroke", ZCollision + Refuse("MOVE Z -351"), Refused("MOVE Z -351", colliding) + Ejecting},
      {"refused: no tip is recorded", Refuse("MOVE Z -279"), Whole + Refused("MOVE Z -279", Ejecting)},
      {"homing refused", AnyPick + Refuse("HOME"), Refused("HOME ALL", Homing) + Whole + Ejecting},
      {"stopped: the rack counts as reached", Stop("MOVE Y"), Stopped("MOVE Y 1200", ToRack) + closing + Ejecting},
      {"stopped there", ZCollision + Stop("MOVE Z -351"), Stopped("MOVE Z -351", colliding) + "status\n" + Ejecting},
      {"stopped: the key stays", Stop("MOVE Z -279"), Whole + Stopped("MOVE Z -279", Ejecting) + "status\n"},
      {"stopped while homing: no line", AnyPick + Stop("HOME"),
       Stopped("HOME ALL", Homing) + "status\nstatus Moving to rack\n" + closing + Ejecting},
      // The lines to the rack are already built; the records loaded after them are of the lower stage: -587 + 64 + ...
      {"a pick on the way: the rack counts as reached", "during \"MOVE Y\" pick cboPosition 1\n", ToRack + below},
      {"behind it: back to the rack", "during \"SET_SPEED S 300\" pick cboTipRack 1\n", Whole + otherRack},
      {"no link: homed, but not at the rack", AnyPick + "link down\nclick 3\nlink up\nclick 2\n",
       Before("HOME ALL", Homing) + "status Moving to rack\n" + begun + ToRack + Ejecting + Collecting + Ejecting},
  });
  // clang-format on
  EXPECT_EQ(Play(HeadOn, "file reads fail\nclick 3\n"),
            "status Moving to rack\nMOVE Y 0\nMOVE SD_X 0\nMOVE SD_Y 0\nMOVE S 0\nstatus\n" + begun +
                "SET_SPEED S 0\nMOVE S 0\nSET_SPEED S 0\nstatus\n");
}

TEST_F(RackSequences, EjectTipFollowsTheConfiguration) {
  // clang-format off
  ExpectAll(TipOn, EjectTip, {
      {"at the rack", "", Ejecting},
      {"elsewhere: to the rack, and never home", AnyPick, ToRack + Ejecting},
      {"without X axis", NoXAxis + AnyPick, With(ToRack, "MOVE X 50\nMOVE SLIDER_CLOSED\nMOVE X 1100\n>") + Ejecting},
      {"collision detection plays no part", ZCollision, Ejecting},
      // -395 + 164, 40 + 550 - 10, -355 + 132
      {"8 channels", "pick cboHeadType 1\n", With(ToRack, "_X 100>_X 120|_Y 110>_Y 130|S 500>S 510|-247>-199") +
           With(Ejecting, "-279>-231|570>580|-271>-223")},
      // -40 + 540 + 10
      {"S in the other direction", AxisS("0.25", "-1,1"), With(Ejecting, "570>510")},
      // -164 - 3 + 440, -132 - 3 + 400
      {"Z in the other direction", ZReversed, With(Ejecting, "-279>273|-271>265")},
      // 40 + 540 - 4e9, and 579.5
      {"a stroke out of 32 bits", Stroke("1e9"), With(Ejecting, "570>-3999999420")},
      {"half a step goes away from zero, at the end", Stroke("0.125"), With(Ejecting, "570>580")},
      // -443 + 16777223 * 8, -403 + 16777219 * 8
      {"a height beyond single precision", "file set PlateType Item1 RackA,TIPRACK,8,12,16777217\n",
       With(Ejecting, "-279>134217341|-271>134217349")},
      {"an entry for no tip", "file set TipType Item0 Bare,X,0,0,0,0,0,0,0,0,4\n", With(Ejecting, "-271>-279")},
      {"the tip still counts", "file writes fail\n", With(Ejecting, "write TipType Installed 0\n>|-271>-247")},
      {"no Z step length: no Z line", NoZStep, With(Ejecting, "MOVE Z -279\n>|MOVE Z -271\n>")},
      {"a failed depth: the first stays", "file set Z_Calibration TipMountDepth30 1e12\n", With(Ejecting, "-271>-311")},
  });
  // clang-format on
}

}  // namespace
}  // namespace Helmsway
