#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "tests/calibration/SequenceTest.h"

namespace Helmsway {
namespace {

/// The head One in the nest NestA, on the upper stage.
class HeadSequences : public SequenceTest {
 protected:
  const std::string HeadOn = NoHead + "click 13\n";
  static constexpr const char* CollectHead = "click 13\n";
  static constexpr const char* EjectHead = "click 12\n";
  const std::string LowerNest = "pick cboNestType 1\n";

  static std::string Prompt(const std::string& head = "One", const std::string& tip = "Long",
                            const std::string& position = "Upper") {
    return "message ok none ok\n"
           "Please ensure that the following has been loaded before you continue:\r\n\r\n1. " +
           head + " installed into the pipette head nest\r\n2. " + tip + " in a " + position + "\n";
  }

  // -563 + 56 + 120 + 4 is -383; the approach adds 32 - 7, the seat takes off 32.
  const std::string Collecting =
      "status Collecting Pipette head\nSTATUS SLIDER\n"
      "MOVE Z -100\nMOVE X 3100\nMOVE Y 3200\nMOVE SD_X 310\nMOVE SD_Y 330\nSET_SPEED Z 800\nMOVE Z -358\n"
      "SET_SPEED Z 500\nMOVE Z -390\nSET_SPEED Z 800\nMOVE Z -100\nwrite HeadType Installed 1\nstatus\n";
  // Slot 3 of the other nest: -707 + 56 + 120 + 14 is -517.
  const std::string CollectingBelow =
      With(Collecting, "3100>4100|3200>4200|_X 310>_X 510|_Y 330>_Y 530|-358>-492|-390>-524");
  // 32 - 5 on -383.
  const std::string Ejecting =
      "status Ejecting Pipette head\n"
      "MOVE Z -100\nMOVE SD_X 300\nMOVE SD_Y 310\nMOVE SLIDER_CLOSED\nMOVE X 3100\nMOVE Y 3200\n"
      "MOVE SD_X 310\nMOVE SD_Y 330\nSET_SPEED Z 800\nMOVE Z -356\nSET_SPEED Z 500\nMOVE Z -388\n"
      "SET_SPEED S 200\nMOVE S 900\nSET_SPEED S 300\nSET_SPEED Z 800\nMOVE Z -100\n"
      "write HeadType Installed 0\nstatus\n";
  const std::string Front = Prompt() + Homing;
  const std::string Whole = Front + Collecting;
};

TEST_F(HeadSequences, TheSliderIsSetOnlyWhenItStandsTheOtherWay) {
  const std::string closed = With(Collecting, "MOVE X 3100>MOVE X 50\nMOVE SLIDER_CLOSED\nMOVE X 3100");
  const std::string opened = With(CollectingBelow, "MOVE X 4100>MOVE X 50\nMOVE SLIDER_OPEN\nMOVE X 4100");
  const std::tuple<std::string, const std::string&, const std::string&> replies[] = {
      {"\"\"", Collecting, CollectingBelow}, {"SLIDER_CLOSED.", Collecting, opened},
      {"OPEN", closed, CollectingBelow},     {"\"open closed\"", Collecting, CollectingBelow},
      {"\"OPEN CLOSED\"", closed, opened},
  };
  for (const auto& [reply, above, below] : replies) {
    const std::string script = "instrument reply STATUS " + reply + "\n";
    EXPECT_EQ(Play(NoHead, script + CollectHead), Front + above) << reply;
    EXPECT_EQ(Play(NoHead, script + LowerNest + CollectHead), Front + below) << reply;
  }
}

TEST_F(HeadSequences, CollectHeadFollowsSelectionAndConfiguration) {
  const auto head = [&](const char* name, const char* index, const std::string& changes) {
    return Prompt(name) + Homing + With(Collecting, changes + "|Installed 1>Installed " + index);
  };
  const std::string slot2 = "_X 310>_X 330|_Y 330>_Y 350|";
  const std::string slot3 = "_X 310>_X 350|_Y 330>_Y 370|";
  const std::string sameCodes =
      "file set NestType Item1 NestA,STAGE3,,OTHER,0,1,2,0.5,,1_CH_SHORT,0,3,4,0.75,,1_CH_SHORT,0,5,6,1\n";
  const std::string colliding = With(Whole, "MOVE Z -390>HW_Z_COLLISION OFF\nMOVE Z -390\nHW_Z_COLLISION ON");
  const std::string nowhere = "3100>0|3200>0|_X 310>_X 10|_Y 330>_Y 20";
  const std::string open = "instrument reply STATUS OPEN\n";
  // clang-format off
  ExpectAll(NoHead, CollectHead, {
      {"slot 1", "", Whole},
      // 168 of its own, 6 of the slot, - 8
      {"slot 2", "pick cboHeadType 1\n", head("Eight", "2", slot2 + "-358>-309|-390>-341")},
      // 176, 8, + 4
      {"slot 3 without a match", "pick cboHeadType 2\n", head("Twelve", "3", slot3 + "-358>-287|-390>-319")},
      {"the lower slot", sameCodes, With(Whole, slot2 + "-358>-356|-390>-388")},
      {"a nest on no position", "file remove Position_2 Item3\n", With(Whole, nowhere)},
      {"no X axis", open + NoXAxis, With(Whole, "STATUS SLIDER\n>|MOVE X 3100\n>|-358>-366|-390>-398")},
      {"a refused question has no answer", open + Refuse("STATUS"), With(Whole, "SLIDER>SLIDER refused")},
      {"collision detection in use", ZCollision, colliding},
      {"as it is behind the answer", "during STATUS file set DeviceType ZCollisionStatus 1\n", colliding},
      // 560 - 3 - 56 - 120 - 4 = 377
      {"Z in the other direction", ZReversed, With(Whole, "-358>352|-390>384")},
      {"a sum out of 32 bits has no line", WideNest, With(Whole, "MOVE SD_X 310\n>")},
      // 56 + 120 + 4
      {"a stage out of 32 bits: from 0", FarAway, With(Whole, "-358>205|-390>173")},
  });
  // clang-format on
  // Without a selection the installed records count. The teach tool has 96 in place of 120, and no collect offset.
  EXPECT_EQ(Play(NoHeads + NoHead, CollectHead), head("", "5", "-358>-375|-390>-407"));
  EXPECT_EQ(Play("file remove TipType Item1\nfile remove Position_2 Item1\n" + NoHead, CollectHead),
            Prompt("One", "", "") + Homing + With(Collecting, nowhere));
  // -563 + 56 + 120 + 0, and slot 1 isn't the head's.
  EXPECT_EQ(Play("file remove NestType Item1\nfile remove NestType Item2\n" + NoHead, CollectHead),
            With(Whole, "3100>0|3200>0|_X 310>_X 0|_Y 330>_Y 0|-358>-362|-390>-394"));
}

TEST_F(HeadSequences, AFailureLeavesTheKeyAndAStopWritesIt) {
  const std::string begun = "status Collecting Pipette head\n";
  const std::string closing = "write HeadType Installed 1\nstatus\n";
  const std::string stoppedHoming = Stopped("HOME ALL", Front) + "status\n";
  const std::string ejectingWithoutX = With(Ejecting, "MOVE SLIDER_CLOSED\nMOVE X 3100\n>|-356>-364|-388>-396");
  const std::string offline = Before("HOME ALL", Front) + begun + "status Ejecting Pipette head\n";
  const std::string again = Homing + Collecting + Ejecting;
  const std::string cycle = "click 13\nclick 12\n";
  // clang-format off
  ExpectAll(NoHead, cycle.c_str(), {
      {"refused", Refuse("MOVE Z -390"), Refused("MOVE Z -390", Whole) + Ejecting},
      {"homing refused counts as homed", Refuse("HOME"), Refused("HOME ALL", Front) + Collecting + Ejecting},
      {"stopped", Stop("MOVE Y"), Stopped("MOVE Y 3200", Whole) + closing + Ejecting},
      {"stopped at the question: no line", Stop("STATUS"), Stopped("STATUS SLIDER", Whole) + closing + Ejecting},
      {"stopped while homing: the question takes it back", Stop("HOME"), stoppedHoming + Collecting + Ejecting},
      {"no X axis: nothing moves", NoXAxis + Stop("HOME"), stoppedHoming + begun + closing + ejectingWithoutX},
      {"a pick in a line: homed again", "during \"MOVE Y\" pick cboTipRack 1\n", Whole + Homing + Ejecting},
      {"but not one while homing", "during HOME pick cboPosition 1\n", Whole + Ejecting},
      {"no link", "link down\n", offline},
      {"a file that can't be written", "file writes fail\n",
       With(Whole + Ejecting, "write HeadType Installed 1\n>|write HeadType Installed 0\n>")},
      {"each collection homes, and the prompt comes again behind a pick only", cycle + cycle + "pick cboPosition 1\n",
       Whole + Ejecting + again + Prompt("One", "Long", "Lower") + again},
  });
  // clang-format on
  EXPECT_EQ(Play(NoHead, "file reads fail\nclick 13\n"),
            Prompt() + "status Home all\n" + begun + "MOVE Z 0\nMOVE Y 0\nMOVE SD_X 0\nMOVE SD_Y 0\nSET_SPEED Z 0\n" +
                "MOVE Z 0\nSET_SPEED Z 500\nMOVE Z 0\nSET_SPEED Z 0\nMOVE Z 0\n" + closing);
}

TEST_F(HeadSequences, EjectHeadFollowsTheConfiguration) {
  const std::string begun = "status Ejecting Pipette head\n";
  const std::string closing = "write HeadType Installed 0\nstatus\n";
  const std::string colliding =
      With(Ejecting, "MOVE Z -388>HW_Z_COLLISION OFF\nMOVE Z -388|S 300>S 300\nHW_Z_COLLISION ON");
  // Slot 3 of the lower nest: -517 + 32 - 5.
  const std::string below =
      With(Ejecting,
           "_X 300>_X 400|_Y 310>_Y 410|MOVE SLIDER_CLOSED>MOVE X 50\nMOVE SLIDER_OPEN|3100>4100|3200>4200|"
           "_X 310>_X 510|_Y 330>_Y 530|-356>-490|-388>-522");
  // clang-format off
  ExpectAll(HeadOn, EjectHead, {
      {"homed", "", Ejecting},
      {"not homed", AnyPick, Homing + Ejecting},
      {"collision detection is off over the S stroke too", ZCollision, colliding},
      {"no X axis", NoXAxis, With(Ejecting, "MOVE SLIDER_CLOSED\nMOVE X 3100\n>|-356>-364|-388>-396")},
      // 168 + 6 + 32 - 6 on -507
      {"8 channels", "pick cboHeadType 1\n",
       Homing + With(Ejecting, "_X 310>_X 330|_Y 330>_Y 350|900>910|-356>-307|-388>-339")},
      {"Z in the other direction, the nest as it was loaded", ZReversed, With(Ejecting, "-356>350|-388>382")},
      {"refused: the key stays as it is", ZCollision + Refuse("MOVE S 9"), Refused("MOVE S 900", colliding)},
      {"stopped: no head is recorded", Stop("MOVE Z"), begun + Stopped("MOVE Z -100", "MOVE Z -100\n") + closing},
      {"a pick loads no nest, and homing the installed one", LowerNest, Homing + Ejecting},
      {"which can be another", "file set NestType Installed 2\n" + AnyPick, Homing + below},
      {"a stage out of 32 bits: from 0", FarAway, With(Ejecting, "-356>207|-388>175")},
      {"the nest's record counts, not the file", "file set NestType Item1 NestA,STAGE4\n", Ejecting},
  });
  // clang-format on
  EXPECT_EQ(Play(NoHead, LowerNest + CollectHead + EjectHead), Front + CollectingBelow + below);
}

}  // namespace
}  // namespace Helmsway
