#include <gtest/gtest.h>

#include <string>

#include "tests/calibration/SequenceTest.h"

namespace Helmsway {
namespace {

/// The head One in the nest NestA, on the upper stage.
class HeadSequences : public SequenceTest {
 protected:
  const std::string HeadOn = std::string(NoHead) + "click 13\n";
  static constexpr const char* CollectHead = "click 13\n";
  static constexpr const char* EjectHead = "click 12\n";
  static constexpr const char* LowerNest = "pick cboNestType 1\n";
  static constexpr const char* AnyPick = "pick cboTipRack 1\npick cboTipRack 0\n";

  static std::string Prompt(const std::string& head = "One", const std::string& tip = "Long",
                            const std::string& position = "Upper") {
    return "message \"\" ok none ok\n"
           "Please ensure that the following has been loaded before you continue:\r\n\r\n1. " +
           head + " installed into the pipette head nest\r\n2. " + tip + " in a " + position + "\n";
  }

  // -563 + 56 + 120 + 4 is -383; the approach adds 32 - 7, the seat takes off 32.
  const std::string Collecting =
      "status Collecting Pipette head\nSTATUS SLIDER\n"
      "MOVE Z -100\nMOVE X 3100\nMOVE Y 3200\nMOVE SD_X 310\nMOVE SD_Y 330\nSET_SPEED Z 800\nMOVE Z -358\n"
      "SET_SPEED Z 500\nMOVE Z -390\nSET_SPEED Z 800\nMOVE Z -100\n"
      "write [HeadType] Installed=1\nstatus cleared\n";
  // Slot 3 of the other nest: -707 + 56 + 120 + 14 is -517.
  const std::string CollectingBelow =
      "status Collecting Pipette head\nSTATUS SLIDER\n"
      "MOVE Z -100\nMOVE X 4100\nMOVE Y 4200\nMOVE SD_X 510\nMOVE SD_Y 530\nSET_SPEED Z 800\nMOVE Z -492\n"
      "SET_SPEED Z 500\nMOVE Z -524\nSET_SPEED Z 800\nMOVE Z -100\n"
      "write [HeadType] Installed=1\nstatus cleared\n";
  // 32 - 5 on -383.
  const std::string Ejecting =
      "status Ejecting Pipette head\n"
      "MOVE Z -100\nMOVE SD_X 300\nMOVE SD_Y 310\nMOVE SLIDER_CLOSED\nMOVE X 3100\nMOVE Y 3200\n"
      "MOVE SD_X 310\nMOVE SD_Y 330\nSET_SPEED Z 800\nMOVE Z -356\nSET_SPEED Z 500\nMOVE Z -388\n"
      "SET_SPEED S 200\nMOVE S 900\nSET_SPEED S 300\nSET_SPEED Z 800\nMOVE Z -100\n"
      "write [HeadType] Installed=0\nstatus cleared\n";
  const std::string Front = Prompt() + Homing;
  const std::string Whole = Front + Collecting;
};

TEST_F(HeadSequences, TheSliderIsSetOnlyWhenItStandsTheOtherWay) {
  const std::string closed = Changed(Collecting, {{"MOVE X 3100", "MOVE X 50\nMOVE SLIDER_CLOSED\nMOVE X 3100"}});
  const std::string opened = Changed(CollectingBelow, {{"MOVE X 4100", "MOVE X 50\nMOVE SLIDER_OPEN\nMOVE X 4100"}});
  struct Case {
    const char* name;
    std::string script;
    const std::string& above;
    const std::string& below;
  };
  const Case cases[] = {
      {"no word", "", Collecting, CollectingBelow},
      {"closed", "instrument reply STATUS CLOSED\n", Collecting, opened},
      {"open", "instrument reply STATUS OPEN\n", closed, CollectingBelow},
      {"a word within words", "instrument reply STATUS \"SLIDER_CLOSED.\"\n", Collecting, opened},
      {"small letters", "instrument reply STATUS \"open closed Open Closed\"\n", Collecting, CollectingBelow},
      {"both words", "instrument reply STATUS \"OPEN CLOSED\"\n", closed, opened},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Play(NoHead, row.script + CollectHead), Front + row.above);
    EXPECT_EQ(Play(NoHead, row.script + LowerNest + CollectHead), Front + row.below);
  }
  ExpectAll(NoHead, CollectHead,
            {{"a refused question has no answer", "instrument reply STATUS OPEN\ninstrument refuse STATUS\n",
              Changed(Whole, {{"STATUS SLIDER", "STATUS SLIDER refused"}})},
             {"one that failed has none either", "instrument reply STATUS OPEN\ninstrument fail STATUS\n",
              Changed(Whole, {{"STATUS SLIDER", "STATUS SLIDER failed"}})},
             {"no X axis, no question", std::string("instrument reply STATUS OPEN\n") + NoXAxis,
              Changed(Whole, {{"STATUS SLIDER\n", ""}, {"MOVE X 3100\n", ""}, {"-358", "-366"}, {"-390", "-398"}})}});
}

TEST_F(HeadSequences, CollectHeadTakesTheSlotOfTheHeadsShape) {
  const auto head = [&](const char* name, const char* sd, const char* approach, const char* seat, const char* index) {
    return Prompt(name) + Homing +
           Changed(Collecting, {{"310\nMOVE SD_Y 330", sd}, {"-358", approach}, {"-390", seat}, {"d=1", index}});
  };
  const std::string otherCodes =
      "file set NestType Item1 NestA,STAGE3,,1_CH_LONG,0,1,2,0.5,,9_CH,0,3,4,0.75,,1_CH_SHORT,0,5,6,1\n";
  const std::string sameCodes =
      "file set NestType Item1 NestA,STAGE3,,1_CH_LONG,0,1,2,0.5,,1_CH_SHORT,0,3,4,0.75,,1_CH_SHORT,0,5,6,1\n";
  ExpectAll(NoHead, CollectHead,
            {
                {"slot 1", "", Whole},
                // 168 of its own, 6 of the slot, - 8
                {"slot 2", "pick cboHeadType 1\n", head("Eight", "330\nMOVE SD_Y 350", "-309", "-341", "d=2")},
                // 176, 8, + 4
                {"slot 3 without a match", "pick cboHeadType 2\n",
                 head("Twelve", "350\nMOVE SD_Y 370", "-287", "-319", "d=3")},
                {"a head of 96 channels has no depth", "pick cboHeadType 3\n",
                 head("Many", "350\nMOVE SD_Y 370", "-467", "-499", "d=4")},
                {"slot 3 with a match", otherCodes, head("One", "350\nMOVE SD_Y 370", "-354", "-386", "d=1")},
                {"the lower of two slots", sameCodes, head("One", "330\nMOVE SD_Y 350", "-356", "-388", "d=1")},
                {"a nest on no position: targets of 0", "file set NestType Item1 NestA,STAGE9,,1_CH_SHORT,0,1,2,0.5\n",
                 Changed(Whole, {{"3100", "0"}, {"3200", "0"}, {"SD_X 310", "SD_X 10"}, {"SD_Y 330", "SD_Y 20"}})},
            });
}

TEST_F(HeadSequences, CollectHeadFollowsTheConfiguration) {
  const std::string colliding = Changed(Whole, {{"MOVE Z -390", "HW_Z_COLLISION OFF\nMOVE Z -390\nHW_Z_COLLISION ON"}});
  const auto z = [&](const char* approach, const char* seat) {
    return Changed(Whole, {{"-358", approach}, {"-390", seat}});
  };
  ExpectAll(NoHead, CollectHead,
            {
                {"collision detection in use", ZCollision, colliding},
                {"the key is read behind the slider's answer", "during STATUS file set DeviceType ZCollisionStatus 1\n",
                 colliding},
                {"the heights are read in front of it", "during STATUS file set Z_Calibration MountHeight 0\n", Whole},
                // 560 - 3 - 56 - 120 - 4 = 377
                {"Z in the other direction", ZReversed, z("352", "384")},
                {"no step length", NoZStep, z("0", "0")},
                {"no axis lines", NoAxes,
                 Changed(Before("SET_SPEED", Whole), {{"Z -100", "Z 0"}}) +
                     "SET_SPEED Z 0\nMOVE Z 0\nSET_SPEED Z 500\nMOVE Z 0\nSET_SPEED Z 0\nMOVE Z 0\n"
                     "write [HeadType] Installed=1\nstatus cleared\n"},
                // 0 + 56 + 120 + 4 + 32 - 7
                {"a stage out of 32 bits counts as 0", "file set Z_Calibration MountHeight 1e12\n", z("205", "173")},
                {"a sum out of 32 bits has no line",
                 "file set Position_2 Item3 STAGE3,Nest3,NEST,3100,3200,214748364,31,32,33,34,35,False\n",
                 Changed(Whole, {{"MOVE SD_X 310\n", ""}})},
                // Single-precision 8/3: -70/s-3 = -29.25 is -29, W(7/s) = 3, W(15/s) = 6, slot W(0.5/s) = 0,
                // -20 + 1.49999996 - 7 = -25.50000004, and 2 back.
                {"a step of 2.6666667 mm",
                 "file set Device_Type2_Cage1 Axis1 Z,2.6666667,1,2,800,0,9000,0,0,0,0,0,1,-1,-100\n", z("-26", "-28")},
            });
}

TEST_F(HeadSequences, CollectHeadHomesEveryTimeAndPromptsOnce) {
  EXPECT_EQ(Play(NoHead, "click 13\nclick 12\nclick 13\n"), Whole + Ejecting + Homing + Collecting);
  EXPECT_EQ(Play(NoHead, "click 13\nclick 12\npick cboPosition 1\nclick 13\n"),
            Whole + Ejecting + Prompt("One", "Long", "Lower") + Homing + Collecting);
}

TEST_F(HeadSequences, AFailureLeavesTheKeyAndAStopWritesIt) {
  const std::string closing = "write [HeadType] Installed=1\nstatus cleared\n";
  const std::string stoppedHoming = Prompt() + Before("HOME ALL", Homing) + Stopped("HOME ALL") + "status cleared\n";
  ExpectAll(
      NoHead, "click 13\nclick 12\n",
      {
          {"no failure", "", Whole + Ejecting},
          {"refused", "instrument refuse \"MOVE Z -390\"\n",
           Before("MOVE Z -390", Whole) + "MOVE Z -390 refused\n" + Ejecting},
          {"the last line refused", "instrument refuse \"SET_SPEED Z 800\" 2\n",
           Before("SET_SPEED Z 800", Whole) + "SET_SPEED Z 800 refused\n" + Before("SET_SPEED Z 800", Ejecting) +
               "SET_SPEED Z 800 refused\n"},
          {"homing refused counts as homed", "instrument refuse HOME\n",
           Changed(Whole, {{"HOME ALL\nstatus cleared\n", "HOME ALL refused\n"}}) + Ejecting},
          {"stopped", "during \"MOVE Y\" click 16\n",
           Before("MOVE Y", Whole) + Stopped("MOVE Y 3200") + closing + Ejecting},
          {"stopped by the host", "during \"MOVE Y\" host stop\n", Before("MOVE SD_X", Whole) + closing + Ejecting},
          {"stopped during the slider's question: no line of the list", "during STATUS click 16\n",
           Changed(Before("MOVE Z", Whole), {{"STATUS SLIDER\n", Stopped("STATUS SLIDER")}}) + closing + Ejecting},
          {"stopped while homing: the slider's question takes it back", "during HOME click 16\n",
           stoppedHoming + Collecting + Ejecting},
          {"stopped while homing, no X axis: nothing moves", std::string(NoXAxis) + "during HOME click 16\n",
           stoppedHoming + "status Collecting Pipette head\n" + closing +
               Changed(Ejecting, {{"MOVE SLIDER_CLOSED\nMOVE X 3100\n", ""}, {"-356", "-364"}, {"-388", "-396"}})},
          {"stopped during a line that is refused", "during \"MOVE Y\" click 16\ninstrument refuse \"MOVE Y\"\n",
           Before("MOVE Y", Whole) + Stopped("MOVE Y 3200", " refused") + Ejecting},
          {"a pick during a line: the list stands, and the next sequence homes",
           "during \"MOVE Y\" pick cboTipRack 1\n", Whole + Homing + Ejecting},
          {"a pick while homing counts, but not against the homing", "during HOME pick cboPosition 1\n",
           Whole + Ejecting},
          {"no link", "link down\n",
           Prompt() + "status Home all\nstatus Homing all axes\nstatus Collecting Pipette head\n"
                      "status Ejecting Pipette head\n"},
          {"a file that can't be written", "file writes fail\n",
           Changed(Whole, {{"write [HeadType] Installed=1\n", ""}}) +
               Changed(Ejecting, {{"write [HeadType] Installed=0\n", ""}})},
      });
}

TEST_F(HeadSequences, AFileThatCannotBeReadLeavesEmptyRecords) {
  EXPECT_EQ(Play(NoHead, "file reads fail\nclick 13\n"),
            Prompt() +
                "status Home all\nstatus Collecting Pipette head\n"
                "MOVE Z 0\nMOVE Y 0\nMOVE SD_X 0\nMOVE SD_Y 0\nSET_SPEED Z 0\nMOVE Z 0\nSET_SPEED Z 500\n"
                "MOVE Z 0\nSET_SPEED Z 0\nMOVE Z 0\nwrite [HeadType] Installed=1\nstatus cleared\n");
}

TEST_F(HeadSequences, WithoutASelectionTheInstalledRecordsCount) {
  const std::string noHeads =
      "file remove HeadType Item1\nfile remove HeadType Item2\nfile remove HeadType Item3\n"
      "file remove HeadType Item4\n";
  // The teach tool: 96 in place of 120, and no collect offset.
  EXPECT_EQ(Play(noHeads + NoHead, CollectHead),
            Prompt("") + Homing + Changed(Collecting, {{"-358", "-375"}, {"-390", "-407"}, {"d=1", "d=5"}}));
  EXPECT_EQ(Play("file remove TipType Item1\nfile remove Position_2 Item1\n" + std::string(NoHead), CollectHead),
            Changed(Prompt("One", "", "") + Homing + Collecting,
                    {{"3100", "0"}, {"3200", "0"}, {"SD_X 310", "SD_X 10"}, {"SD_Y 330", "SD_Y 20"}}));
  // -563 + 56 + 120 + 0, and slot 1 isn't the head's.
  EXPECT_EQ(Play("file remove NestType Item1\nfile remove NestType Item2\n" + std::string(NoHead), CollectHead),
            Changed(Whole, {{"3100", "0"},
                            {"3200", "0"},
                            {"SD_X 310", "SD_X 0"},
                            {"SD_Y 330", "SD_Y 0"},
                            {"-358", "-362"},
                            {"-390", "-394"}}));
}

TEST_F(HeadSequences, EjectHeadFollowsTheConfiguration) {
  const std::string twoCodes =
      "file set NestType Item1 NestA,STAGE3,,,0,1,2,0.5,,1_CH_SHORT,0,3,4,0.75,,1_CH_SHORT,0,5,6,1\n";
  const std::string noCode = "file set HeadType Item1 One,SERIALDILUTE,0,30,0,1,0,0,0,0,900,0,500,2.5,5,7,,0,,0,0\n";
  const auto z = [&](const char* approach, const char* seat) {
    return Changed(Ejecting, {{"-356", approach}, {"-388", seat}});
  };
  ExpectAll(HeadOn, EjectHead,
            {
                {"homed", "", Ejecting},
                {"not homed", AnyPick, Homing + Ejecting},
                {"collision detection is off over the S stroke too", ZCollision,
                 Changed(Ejecting, {{"MOVE Z -388", "HW_Z_COLLISION OFF\nMOVE Z -388"},
                                    {"SET_SPEED S 300", "SET_SPEED S 300\nHW_Z_COLLISION ON"}})},
                {"collision detection that can't be told", "file set DeviceType ZCollisionStatus Y\n", Ejecting},
                {"no X axis", NoXAxis, Changed(z("-364", "-396"), {{"MOVE SLIDER_CLOSED\nMOVE X 3100\n", ""}})},
                // 168 + 6 + 32 - 6 on -507
                {"a head of 8 channels", "pick cboHeadType 1\n",
                 Homing + Changed(z("-307", "-339"), {{"310\nMOVE SD_Y 330", "330\nMOVE SD_Y 350"}, {"900", "910"}})},
                // 8 + 32 - 0 on -507
                {"a head of 96 channels", "pick cboHeadType 3\n",
                 Homing + Changed(z("-467", "-499"), {{"310\nMOVE SD_Y 330", "350\nMOVE SD_Y 370"}, {"900", "930"}})},
                // A long head: 200 in place of 120.
                {"no code in head and slot 1", twoCodes + noCode + AnyPick, Homing + z("-276", "-308")},
                {"Z in the other direction, the nest as it was loaded", ZReversed, z("350", "382")},
                {"no step length", NoZStep, z("0", "0")},
                {"a stage out of 32 bits counts as 0", "file set Z_Calibration MountHeight 1e12\n", z("207", "175")},
                {"a sum out of 32 bits has no line",
                 "file set Position_2 Item3 STAGE3,Nest3,NEST,3100,3200,214748364,31,32,33,34,35,False\n",
                 Changed(Ejecting, {{"MOVE SD_X 310\n", ""}, {"SD_X 300", "SD_X 2147483640"}})},
                {"refused: speed and head stay as they are, and so does the key",
                 std::string(ZCollision) + "instrument refuse \"MOVE S 9\"\n",
                 Changed(Before("MOVE S 900", Ejecting), {{"MOVE Z -388", "HW_Z_COLLISION OFF\nMOVE Z -388"}}) +
                     "MOVE S 900 refused\n"},
                {"stopped: no head is recorded, wherever it is", "during \"MOVE Z\" click 16\n",
                 "status Ejecting Pipette head\n" + Stopped("MOVE Z -100") +
                     "write [HeadType] Installed=0\nstatus cleared\n"},
                {"stopped while homing", std::string(AnyPick) + "during HOME click 16\n",
                 Before("HOME ALL", Homing) + Stopped("HOME ALL") +
                     "status cleared\nstatus Ejecting Pipette head\nwrite [HeadType] Installed=0\nstatus cleared\n"},
            });
}

TEST_F(HeadSequences, EjectHeadTakesTheNestThatWasLoadedLast) {
  // Slot 3 of the lower nest: -517 + 32 - 5.
  const std::string below = Changed(Ejecting, {{"SD_X 300\nMOVE SD_Y 310", "SD_X 400\nMOVE SD_Y 410"},
                                               {"MOVE SLIDER_CLOSED\nMOVE X 3100\nMOVE Y 3200",
                                                "MOVE X 50\nMOVE SLIDER_OPEN\nMOVE X 4100\nMOVE Y 4200"},
                                               {"SD_X 310\nMOVE SD_Y 330", "SD_X 510\nMOVE SD_Y 530"},
                                               {"-356", "-490"},
                                               {"-388", "-522"}});
  EXPECT_EQ(Play(NoHead, "pick cboNestType 1\nclick 13\nclick 12\n"), Front + CollectingBelow + below)
      << "that of the collection";
  EXPECT_EQ(Play(HeadOn, "pick cboNestType 1\nclick 12\n"), Homing + Ejecting)
      << "a pick alone loads none, and homing the installed one";
  EXPECT_EQ(Play(HeadOn, "file set NestType Installed 2\npick cboTipRack 1\nclick 12\n"), Homing + below);
  EXPECT_EQ(Play(HeadOn, "file set NestType Item1 NestA,STAGE4\nclick 12\n"), Ejecting) << "the record, not the file";
}

}  // namespace
}  // namespace Helmsway
