#include <gtest/gtest.h>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

constexpr std::int16_t start = 0;
const std::string pressed = "stop False\nmessage Calibrate S Axis Reference Point\n";
const std::string homing = "status Home all\nstatus Homing all axes\n";
const std::string moving = "status Moving to calibration location\n";
const Lines wayWithXAxis = {"MOVE X 150",    "MOVE SLIDER_OPEN", "MOVE SD_Y -37",
                            "MOVE SD_X 201", "MOVE Z -16000",    "MOVE S 500"};

std::string All(const Lines& lines) {
  std::string text;
  for (const std::string& line : lines) text += Line(line);
  return text;
}

TEST(MoveToCalibrationLocation, StartHomesMovesAndPutsSOnRecord) {
  Wizard wizard;
  wizard.ToMainPage();
  wizard.Press(8);  // the value on record replaces a jogged one
  wizard.Forget();
  EXPECT_TRUE(wizard.Press(start));
  EXPECT_EQ(wizard.Transcript(), pressed + homing + Line("HOME ALL") + "status \n" + moving + Line("STATUS SLIDER") +
                                     All(wayWithXAxis) + "status \n");
  EXPECT_EQ(wizard.CurrentSteps(), "500");
  EXPECT_TRUE(wizard.Form->Flags().Homed);
  EXPECT_EQ(wizard.PressableButtons(), "0 5 6 7 8 14 16");

  wizard.Forget();
  wizard.Press(start);
  EXPECT_EQ(wizard.Transcript(), pressed + moving + Line("STATUS SLIDER") + All(wayWithXAxis) + "status \n")
      << "homed already: no second Home All";
}

TEST(MoveToCalibrationLocation, TheSliderIsOpenedWhenItSaysThatItIsClosed) {
  struct Row {
    const char* name;
    const char* reply;
    FakeHost::Outcome outcome;
    bool opened;
  };
  using enum FakeHost::Outcome;
  for (const Row& row :
       {Row{"closed", "SLIDER CLOSED", Ok, true}, Row{"the word may stand anywhere", "xCLOSEDx", Ok, true},
        Row{"small letters don't count", "slider closed", Ok, false}, Row{"open", "SLIDER OPEN", Ok, false},
        Row{"no answer", "", Ok, false}, Row{"refused", "CLOSED", Refused, false},
        Row{"failed", "CLOSED", Failed, false}}) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    wizard.ToMainPage();
    wizard.Host.Replies["STATUS SLIDER"] = row.reply;
    wizard.Host.Outcomes["STATUS SLIDER"] = row.outcome;
    wizard.Press(start);
    Lines sent = {"HOME ALL", "STATUS SLIDER"};
    for (const std::string& line : wayWithXAxis) {
      if (row.opened || line != "MOVE SLIDER_OPEN") sent.push_back(line);
    }
    EXPECT_EQ(wizard.SentLines(), sent);
  }
}

TEST(MoveToCalibrationLocation, TheFileMakesTheLines) {
  const Given twoHeads = Both(Key("HeadType", "Item1", "A,SERIALDILUTE,,,,,,,,,,,210"),
                              Key("HeadType", "Item2", "B,SERIALDILUTE,,,,,,,,,,,310"));
  const auto sdxLimit = [](const std::string& limit) {
    return Key("Device_Type2_Cage1", "Axis4", "SDX,0.02,1,2,3,-999," + limit + ",0,0,0,0,0,1,-1,0");
  };
  struct Row {
    const char* name;
    Given given;
    const char* sdxLine;
    const char* steps;
  };
  const std::vector<Row> rows = {
      {"the example", Nothing, "MOVE SD_X 201", "500"},
      {"half of an odd limit below zero", sdxLimit("-401"), "MOVE SD_X -201", "500"},
      {"half of an even limit", sdxLimit("400"), "MOVE SD_X 200", "500"},
      {"the first of two serial-dilute heads counts", twoHeads, "MOVE SD_X 201", "110"},
      {"one without a name too", Key("HeadType", "Item1", ",SERIALDILUTE,,,,,,,,,,,210"), "MOVE SD_X 201", "110"},
      {"the kind is compared whole", Both(twoHeads, Key("HeadType", "Item1", "A,SERIALDILUTE2")), "MOVE SD_X 201",
       "210"},
      {"a line without a name ends the list", Key("HeadType", "Item1", ",MICROTITER"), "MOVE SD_X 201", ""},
      {"an offset the other way round", [](Wizard& wizard) { wizard.SetAxisS("0.05", "-1,1"); }, "MOVE SD_X 201",
       "700"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    WithoutXAxis(wizard);
    row.given(wizard);
    wizard.ToMainPage();
    wizard.Pick("cboHeadType", 1);  // whatever head is selected
    wizard.Press(start);
    Lines sent = {"HOME ALL", "MOVE SD_Y -37", row.sdxLine, "MOVE Z -16000"};
    if (*row.steps != '\0') sent.push_back(std::string("MOVE S ") + row.steps);
    EXPECT_EQ(wizard.SentLines(), sent) << "no X axis: neither X nor the slider";
    EXPECT_EQ(wizard.CurrentSteps(), row.steps);
    EXPECT_EQ(wizard.Status(), "");
  }
}

TEST(MoveToCalibrationLocation, AStopOrARefusalCutsItWhereItComes) {
  const std::string home = pressed + homing + Line("HOME ALL") + "status \n" + moving;
  const std::string way = home + Line("STATUS SLIDER");
  struct Row {
    const char* name;
    Given given;
    std::string transcript;
    const char* steps = "500";
  };
  const std::vector<Row> rows = {
      {"a Stop during the homing is undone by the question for the slider", StopDuring("HOME ALL"),
       pressed + homing + StoppedLine("HOME ALL") + "status \n" + moving + Line("STATUS SLIDER") + All(wayWithXAxis) +
           "status \n"},
      {"a Stop during that question skips all lines", StopDuring("STATUS SLIDER"),
       home + StoppedLine("STATUS SLIDER") + "status \n"},
      {"a Stop during the first line", StopDuring("MOVE X 150"), way + StoppedLine("MOVE X 150") + "status \n"},
      {"a Stop during a middle line", StopDuring("MOVE SD_Y -37"),
       way + All({"MOVE X 150", "MOVE SLIDER_OPEN"}) + StoppedLine("MOVE SD_Y -37") + "status \n"},
      {"a Stop during the last line", StopDuring("MOVE S 500"),
       way + All({"MOVE X 150", "MOVE SLIDER_OPEN", "MOVE SD_Y -37", "MOVE SD_X 201", "MOVE Z -16000"}) +
           StoppedLine("MOVE S 500") + "status \n"},
      {"a refused first line", Refuse("MOVE X 150"), way + Line("MOVE X 150")},
      {"a refused last line", Refuse("MOVE S 500"), way + All(wayWithXAxis)},
      {"a Stop during a line that is refused: the refusal wins", Both(StopDuring("MOVE X 150"), Refuse("MOVE X 150")),
       way + StoppedLine("MOVE X 150")},
      {"a refused homing doesn't hold it up", Refuse("HOME ALL"),
       pressed + homing + Line("HOME ALL") + moving + Line("STATUS SLIDER") + All(wayWithXAxis) + "status \n"},
      {"a Stop before the homing line",
       [](Wizard& wizard) { wizard.Boxes.Meanwhile = [&] { wizard.Host.StopRequested = true; }; },
       pressed + homing + "status \n" + moving + Line("STATUS SLIDER") + All(wayWithXAxis) + "status \n"},
      {"without an X axis a Stop during the homing skips all lines", Both(WithoutXAxis, StopDuring("HOME ALL")),
       pressed + homing + StoppedLine("HOME ALL") + "status \n" + moving + "status \n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    wizard.ToMainPage();
    row.given(wizard);
    wizard.Press(start);
    EXPECT_EQ(wizard.Transcript(), row.transcript);
    EXPECT_EQ(wizard.CurrentSteps(), row.steps);
    EXPECT_TRUE(wizard.Form->Flags().Homed);
    EXPECT_EQ(wizard.PressableButtons(), "0 5 6 7 8 14 16");
  }
}

TEST(MoveToCalibrationLocation, TheFirstFailingStepEndsItTogetherWithTheHoming) {
  struct Row {
    const char* name;
    bool homedBefore;
    Given given;
    std::string transcript;
    bool homed;
  };
  const std::vector<Row> rows = {
      {"no status panel", false, NoStatusPanel, pressed, false},
      {"no status panel, homed", true, NoStatusPanel, pressed, true},
      {"the file can't be read: it ends in the homing", false, ReadsFail, pressed + "status Home all\n", false},
      {"the file can't be read, homed: only the S line is left out", true, ReadsFail,
       pressed + moving + Line("STATUS SLIDER") +
           All({"MOVE X 150", "MOVE SLIDER_OPEN", "MOVE SD_Y -37", "MOVE SD_X 201", "MOVE Z -16000"}) + "status \n",
       true},
      {"nothing can be split", false, SplitsFail, pressed + homing, false},
      {"the link is down", false, LinkDown, pressed.substr(11) + homing, false},
      {"the link is down, homed", true, LinkDown, pressed.substr(11) + moving, true},
      {"the link goes down during the homing: the loop still runs out", false, LinkDownDuring("HOME ALL"),
       pressed + homing + Line("HOME ALL") + "status \n" + moving, true},
      {"the link goes down during a line", true, LinkDownDuring("MOVE X 150"),
       pressed + moving + Line("STATUS SLIDER") + Line("MOVE X 150"), true},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    wizard.ToMainPage();
    if (row.homedBefore) wizard.Press(5);
    wizard.Forget();
    row.given(wizard);
    wizard.Press(start);
    EXPECT_EQ(wizard.Transcript(), row.transcript);
    EXPECT_EQ(wizard.Form->Flags().Homed, row.homed);
    EXPECT_EQ(wizard.PressableButtons(), "0 5 6 7 8 14 16");
  }
}

TEST(MoveToCalibrationLocation, AHeadListWithoutAnEndOverrunsTheCounterAndNothingIsSent) {
  Wizard wizard;
  wizard.ToMainPage();
  wizard.Press(5);
  wizard.Forget();
  for (int number = 1; number <= 32767; ++number) {
    wizard.Ini().Marivane[{"HEADTYPE", "ITEM" + std::to_string(number)}] = "A,,,,,,,,,,,,,,,,";
  }
  wizard.Press(start);
  EXPECT_EQ(wizard.Transcript(), pressed + moving + Line("STATUS SLIDER"));
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
