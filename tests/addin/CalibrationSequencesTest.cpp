#include <gtest/gtest.h>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

constexpr std::int16_t start = 0, home = 5, up = 7, down = 8;

const std::string taken = "stop False\n";  // a press takes an earlier Stop back
const std::string cleared = "status \n";
const std::string homeTexts = "status Home all\nstatus Homing all axes\n";
const std::string homing = homeTexts + Line("HOME ALL");
const std::string hint = "message Calibrate S Axis Reference Point\n";
const std::string pressed = taken + hint;
const std::string moving = "status Moving to calibration location\n";
const std::string slider = moving + Line("STATUS SLIDER");
const std::string jogging = "status Moving S Axis\n";

const Lines way = {"MOVE X 150", "MOVE SLIDER_OPEN", "MOVE SD_Y -37", "MOVE SD_X 201", "MOVE Z -16000", "MOVE S 500"};

struct Row {
  const char* name;
  Given given;
  std::string transcript;
  bool homed = true;
  const char* steps = "500";
};

/// Plays the press of the button from the main page as first reached.
void ExpectAll(std::int16_t button, std::initializer_list<Row> rows) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    wizard.ToMainPage();
    row.given(wizard);
    EXPECT_TRUE(wizard.Press(button));
    EXPECT_EQ(wizard.Transcript(), row.transcript);
    EXPECT_EQ(wizard.Form->Flags().Homed, row.homed);
    EXPECT_EQ(wizard.CurrentSteps(), row.steps);
    EXPECT_EQ(wizard.PressableButtons(), button == home ? "0 5 6 14 16" : "0 5 6 7 8 14 16");
    EXPECT_EQ(wizard.Ini().Writes, Lines{});
  }
}

TEST(HomeAll, TheButtonCountsAsHomedHoweverItEnds) {
  // clang-format off
  ExpectAll(home, {
      {"all goes well", Nothing, taken + homing + cleared},
      {"refused: the status text stays", Refuse("HOME ALL"), taken + homing},
      {"stopped: as if run through", StopDuring("HOME ALL"), taken + homeTexts + StoppedLine("HOME ALL") + cleared},
      {"stopped and refused: the status text stays", Both(StopDuring("HOME ALL"), Refuse("HOME ALL")),
       taken + homeTexts + StoppedLine("HOME ALL")},
      {"the link is down: it ends at its look at the Stop", LinkDown, homeTexts},
      {"no status panel: it ends at its first step", NoStatusPanel, taken},
      {"the file can't be read: it ends at the Z calibration", ReadsFail, taken + "status Home all\n"},
      {"nothing can be split: it ends at the command text", SplitsFail, taken + homeTexts},
      {"nor that text alone", CommandTextsFail, taken + homeTexts},
  });
  // clang-format on
}

TEST(MoveToCalibrationLocation, AStopOrARefusalCutsItAndTheFirstFailingStepEndsItTogetherWithTheHoming) {
  const std::string whole = slider + Span(way, 0, 6) + cleared;
  const std::string unopened = slider + Span(way, 0, 1) + Span(way, 2, 6) + cleared;
  const Given linkLost = [](Wizard& wizard) { wizard.Host.Meanwhile["HOME ALL"] = [&] { LinkDown(wizard); }; };
  const auto reply = [](const char* text) {
    return Both(Homed, [=](Wizard& wizard) { wizard.Host.Replies["STATUS SLIDER"] = text; });
  };
  // clang-format off
  ExpectAll(start, {
      {"it homes, moves and puts S on record", [](Wizard& wizard) { wizard.Press(down), wizard.Forget(); },
       pressed + homing + cleared + whole},
      {"homed already, and the slider's word within another", reply("xCLOSEDx"), pressed + whole},
      {"small letters don't count", reply("slider closed"), pressed + unopened},
      {"nor does a word that comes with a refusal", Both(Homed, Refuse("STATUS SLIDER")), pressed + unopened},
      {"a Stop during the homing is undone by the question for the slider", StopDuring("HOME ALL"),
       pressed + homeTexts + StoppedLine("HOME ALL") + cleared + whole},
      {"without an X axis it skips all lines", Both(WithoutXAxis, StopDuring("HOME ALL")),
       pressed + homeTexts + StoppedLine("HOME ALL") + cleared + moving + cleared},
      {"a Stop during that question skips all lines", StopDuring("STATUS SLIDER"),
       pressed + homing + cleared + moving + StoppedLine("STATUS SLIDER") + cleared},
      {"a Stop during a line", StopDuring("MOVE SD_Y -37"),
       pressed + homing + cleared + slider + Span(way, 0, 2) + StoppedLine("MOVE SD_Y -37") + cleared},
      {"a refused line", Refuse("MOVE SD_Y -37"), pressed + homing + cleared + slider + Span(way, 0, 3)},
      {"a refused homing doesn't hold it up", Refuse("HOME ALL"), pressed + homing + whole},
      {"no status panel", NoStatusPanel, pressed, false},
      {"the file can't be read: it ends in the homing", ReadsFail, pressed + "status Home all\n", false},
      {"the file can't be read, homed", Both(Homed, ReadsFail), pressed + slider + Span(way, 0, 5) + cleared},
      {"the link is down", LinkDown, hint + homeTexts, false},
      {"the link is down, homed", Both(Homed, LinkDown), hint + moving},
      {"its text can't be taken apart, homed", Both(Homed, CommandTextsFail), pressed + slider},
      {"the link goes down during the homing, which still runs out", linkLost, pressed + homing + cleared + moving},
      {"a head list without an end overruns the counter: nothing is sent", Both(Homed, EndlessHeads), pressed + slider},
  });
  // clang-format on
}

TEST(MoveToCalibrationLocation, TheFileMakesTheLines) {
  const Given twoHeads = Both(Key("HeadType", "Item1", "A,SERIALDILUTE,,,,,,,,,,,210"),
                              Key("HeadType", "Item2", "B,SERIALDILUTE,,,,,,,,,,,310"));
  const auto sdxLimit = [](const std::string& limit) {
    return Key("Device_Type2_Cage1", "Axis4", "SDX,0.02,1,2,3,-999," + limit + ",0,0,0,0,0,1,-1,0");
  };
  using FileRow = std::tuple<const char*, Given, const char*, const char*>;
  // clang-format off
  const std::vector<FileRow> rows = {
      {"half of an odd limit goes away from zero", Nothing, "MOVE SD_X 201", "500"},
      {"below zero too", sdxLimit("-401"), "MOVE SD_X -201", "500"},
      {"the first of two such heads counts", twoHeads, "MOVE SD_X 201", "110"},
      {"one without a name too", Key("HeadType", "Item1", ",SERIALDILUTE,,,,,,,,,,,210"), "MOVE SD_X 201", "110"},
      {"the kind counts whole", Both(twoHeads, Key("HeadType", "Item1", "A,SERIALDILUTE2")), "MOVE SD_X 201", "210"},
      {"a line without a name ends the list", Key("HeadType", "Item1", ",MICROTITER"), "MOVE SD_X 201", ""},
      {"the offset the other way", [](Wizard& wizard) { wizard.SetAxisS("0.05", "-1,1"); }, "MOVE SD_X 201", "700"},
  };
  // clang-format on
  for (const auto& [name, given, sdxLine, steps] : rows) {
    SCOPED_TRACE(name);
    Wizard wizard;
    WithoutXAxis(wizard);
    given(wizard);
    wizard.ToMainPage();
    wizard.Pick("cboHeadType", 1);  // whatever head is selected
    wizard.Press(start);
    Lines sent = {"HOME ALL", "MOVE SD_Y -37", sdxLine, "MOVE Z -16000"};
    if (*steps != '\0') sent.push_back(std::string("MOVE S ") + steps);
    EXPECT_EQ(wizard.Host.Sent(), sent) << "no X axis: neither X nor the slider";
    EXPECT_EQ(wizard.CurrentSteps(), steps);
  }
}

TEST(JogSAxis, APressMovesByTheStepSizeAndRoundsToWholeSteps) {
  // An empty value on record: there is no value. The step sizes are 0.1 mm (0) and 1 mm (1).
  using Jog = std::tuple<const char*, const char*, const char*, const char*, int, std::vector<std::int16_t>, Lines>;
  // clang-format off
  const std::vector<Jog> rows = {
      {"up by 0.1 mm and back", "0.05", "1,-1", "500", 0, {up, down}, {"502", "500"}},
      {"down by 1 mm", "0.05", "1,-1", "500", 1, {down}, {"480"}},
      {"an axis the other way round", "0.05", "-1,1", "500", 0, {up, down, down}, {"498", "500", "502"}},
      {"3.33 steps: each rounding stays in the sum", "0.03", "1,-1", "500", 0, {up, up, up}, {"503", "506", "509"}},
      {"up by half a step rounds away from zero", "2", "1,-1", "500", 1, {up}, {"501"}},
      {"down by half a step rounds away from zero", "2", "1,-1", "500", 1, {down}, {"500"}},
      {"a half below zero too", "2", "1,-1", "-500", 1, {up, down}, {"-500", "-501"}},
      {"the step length is a single: 1 / 0.4 stays below 2.5", "0.4", "1,-1", "500", 1, {up}, {"502"}},
      {"through zero, without a -0", "0.1", "1,-1", "1", 0, {down, down}, {"0", "-1"}},
      {"an empty working value counts as 0", "0.05", "1,-1", "", 0, {up}, {"2"}},
  };
  // clang-format on
  for (const auto& [name, mmPerStep, signs, onRecord, stepSize, presses, positions] : rows) {
    SCOPED_TRACE(name);
    Wizard wizard;
    wizard.SetAxisS(mmPerStep, signs);
    const std::string head = std::string("Head,SERIALDILUTE,,,,,,,,,,,") + onRecord;
    wizard.Ini().Set("HeadType", {{"SDTeachToolOffsetMM", "0"}, {"Item2", *onRecord == '\0' ? "" : head}});
    wizard.ToMainPage();
    EXPECT_EQ(wizard.Pick("cboCollectStep", stepSize), stepSize == 1);
    Lines expected;
    for (std::size_t i = 0; i < presses.size(); ++i) {
      EXPECT_TRUE(wizard.Press(presses[i]));
      EXPECT_EQ(wizard.CurrentSteps(), positions[i]);
      expected.push_back("MOVE S " + positions[i]);
    }
    EXPECT_EQ(wizard.Host.Sent(), expected);
  }
}

TEST(JogSAxis, NeverHomesAndMovesTheValueBeforeTheInstrument) {
  // clang-format off
  ExpectAll(up, {
      {"all goes well", Nothing, taken + jogging + Line("MOVE S 502") + cleared, false, "502"},
      {"refused: status and value stay", Refuse("MOVE S 502"), taken + jogging + Line("MOVE S 502"), false, "502"},
      {"stopped", StopDuring("MOVE S 502"), taken + jogging + StoppedLine("MOVE S 502") + cleared, false, "502"},
      {"no step length: silence, and the status text stays", [](Wizard& wizard) { wizard.Records.AxisS.MmPerStep = 0; },
       taken + jogging, false},
      {"no status panel: it ends at its first step", NoStatusPanel, taken, false},
      {"the link is down", LinkDown, jogging, false, "502"},
      {"nothing can be split", SplitsFail, taken + jogging, false, "502"},
      {"the file isn't needed", ReadsFail, taken + jogging + Line("MOVE S 502") + cleared, false, "502"},
  });
  // clang-format on
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
