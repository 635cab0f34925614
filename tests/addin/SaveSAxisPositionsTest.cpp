#include <gtest/gtest.h>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

using enum forms::MessageAnswer;

constexpr std::int16_t save = 6;

/// Save is reached through Start or a jog; this goes there and forgets the way.
void ToCalibrationLocation(Wizard& wizard) {
  wizard.ToMainPage();
  wizard.Press(7);
  wizard.Press(8);
  wizard.Forget();
}

const std::string verifying = "stop False\nstatus Verifying calibrated position\n" + Line("HOME S") +
                              "status Moving S Axis\n" + Line("MOVE S 500") +
                              "status \nmessage Calibrate Syringe Axis\nstatus \n";
const std::string asked = "message Save S Axis Positions\n";
const std::string saving = "status Saving values...\n";
const std::string updating = "status Updating the Marivane's memory...\n";
const std::string closing = "status \nchanged False\n";

/// What the example's three concerned heads become with the working value 500: teach tool offset 100, so S is 600.
const Lines writtenHeads = {
    "HeadType/Item1=\"Teach Tool\",CALIBRATE,0,0,0,1,0,0,0,0,620,0,600,0,0,0,1_CH_SHORT,0,\"\",0,0",
    "HeadType/Item2=\"8 Channel\",SERIALDILUTE,1.5,125,0,8,2,1,0,1,620,11,600,1.5,3.25,-4,8_CH,1,\"note\",0,2.5",
    "HeadType/Item4=\"1 Channel\",SERIALDILUTE,0,12.5,0,1,0,0,0,0,620,0,600,2,0,0,1_CH,0,\"\",0,0",
    "DeviceType/AxisCalibratedS=1"};
const Lines upload = {"SET_CALIBRATION TipEject_8Ch_125_S -30", "SET_CALIBRATION AspirateOrigin_8Ch_125_S 600",
                      "SET_CALIBRATION TipEject_1Ch_12_S -40", "SET_CALIBRATION AspirateOrigin_1Ch_12_S 600",
                      "SET_CALIBRATION SAVE"};

std::string First(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += Line(upload[i]);
  return text;
}

TEST(Save, VerifiesAsksAndSavesOrShowsTheHintAgain) {
  struct Row {
    const char* name;
    std::deque<forms::MessageAnswer> answers;
    std::string transcript;
    Lines writes;
  };
  const std::vector<Row> rows = {
      {"yes and OK saves", {Yes, Ok}, verifying + asked + saving + updating + First(5) + closing, writtenHeads},
      {"yes and Cancel writes nothing", {Yes, Cancel}, verifying + asked, {}},
      {"no writes nothing and shows the hint", {No}, verifying + "message Calibrate S Axis Reference Point\n", {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    ToCalibrationLocation(wizard);
    wizard.Boxes.Answers = row.answers;
    EXPECT_TRUE(wizard.Press(save));
    EXPECT_EQ(wizard.Transcript(), row.transcript);
    EXPECT_EQ(wizard.Ini().Writes, row.writes);
    EXPECT_EQ(wizard.CurrentSteps(), "500");
    EXPECT_EQ(wizard.PressableButtons(), "0 5 6 7 8 14 16");
  }
}

TEST(Save, TheBoxesSayWhatTheOperatorHasToKnow) {
  Wizard wizard;
  ToCalibrationLocation(wizard);
  Answering({Yes, Cancel, No})(wizard);
  wizard.Press(save);
  wizard.Press(save);
  ASSERT_EQ(wizard.Boxes.Shown.size(), 4U);
  const auto& question = wizard.Boxes.Shown[0];
  EXPECT_EQ(question.Text,
            "Please visually check the teach tool calibration position to ensure that\r\nthe lower edge of the upper "
            "part of the teach tool \r\ncompletely covers the silver indication ring beneath it.\r\n\r\nIs the "
            "calibration position correct?");
  EXPECT_TRUE(question.Buttons == forms::MessageButtons::YesNo && question.Icon == forms::MessageIcon::None);
  const auto& warning = wizard.Boxes.Shown[1];
  EXPECT_EQ(warning.Text,
            "The current S Axis value will be saved and used as the initial \r\nposition for all 1, 8 and 12 channel "
            "pipetting heads.\r\n\r\nThis information will be stored on this computer and will\r\nalso be transferred "
            "into the Marivane's memory.\r\n\r\nClick [OK] to save these values.");
  EXPECT_TRUE(warning.Buttons == forms::MessageButtons::OkCancel && warning.Icon == forms::MessageIcon::Exclamation);
  const auto& hint = wizard.Boxes.Shown[3];
  EXPECT_EQ(hint.Text,
            "To determine the S Axis reference point, click the Up and Down buttons\r\nto move the upper part of the "
            "teach tool until the lower edge\r\ncompletely covers the silver indication ring beneath it.");
  EXPECT_TRUE(hint.Buttons == forms::MessageButtons::Ok && hint.Icon == forms::MessageIcon::None);
}

TEST(Save, TheVerificationsSendsAreNotLookedAtButAFailingStepCountsAsYes) {
  struct Row {
    const char* name;
    Given given;
    std::string transcript;
    Lines writes;
  };
  const std::string begun = "stop False\nstatus Verifying calibrated position\n";
  const std::string onward = asked + saving + updating + First(5) + closing;
  const std::vector<Row> rows = {
      {"a refused homing of S", Refuse("HOME S"), verifying + onward, writtenHeads},
      {"a refused move of S leaves its status text for the time of the question", Refuse("MOVE S 500"),
       begun + Line("HOME S") + "status Moving S Axis\n" + Line("MOVE S 500") +
           "message Calibrate Syringe Axis\nstatus \n" + onward,
       writtenHeads},
      {"a Stop during the homing of S skips the move, and stands at the upload", StopDuring("HOME S"),
       begun + StoppedLine("HOME S") + "status Moving S Axis\nstatus \nmessage Calibrate Syringe Axis\nstatus \n" +
           asked + saving + updating + closing,
       writtenHeads},
      {"no status panel: the save dialog comes at once", Both(NoStatusPanel, Answering({Ok})),
       "stop False\n" + asked + First(5) + "changed False\n", writtenHeads},
      {"the link is down: the save dialog comes, the file leads", Both(LinkDown, Answering({Ok})),
       "status Verifying calibrated position\nstatus Moving S Axis\n" + asked + saving + updating + closing,
       writtenHeads},
      {"nothing can be split: no head is found, and no line goes out",
       Both(SplitsFail, Answering({Ok})),
       begun + Line("HOME S") + "status Moving S Axis\n" + asked + saving + updating + closing,
       {"DeviceType/AxisCalibratedS=1"}},
      {"the status panel is lost while the question shows",
       [](Wizard& wizard) {
         wizard.Boxes.Meanwhile = [&] { wizard.Host.StatusFails = true; };
         Answering({No, Ok})(wizard);
       },
       begun + Line("HOME S") + "status Moving S Axis\n" + Line("MOVE S 500") +
           "status \nmessage Calibrate Syringe Axis\n" + asked + First(5) + "changed False\n",
       writtenHeads},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    ToCalibrationLocation(wizard);
    wizard.Boxes.Answers = {Yes, Ok};
    row.given(wizard);
    wizard.Press(save);
    EXPECT_EQ(wizard.Transcript(), row.transcript);
    EXPECT_EQ(wizard.Ini().Writes, row.writes);
    EXPECT_EQ(wizard.PressableButtons(), "0 5 6 7 8 14 16");
  }
}

TEST(SaveSAxisPositions, EndsThroughItsClosingStepsOnEveryRoad) {
  struct Row {
    const char* name;
    Given given;
    std::string transcript;
    Lines writes = writtenHeads;
  };
  const std::string begun = asked + saving + updating;
  const std::vector<Row> rows = {
      {"all lines go out", Nothing, begun + First(5) + closing},
      {"a Stop that nobody has cleared: the file is written, no line goes out",
       [](Wizard& wizard) { wizard.Host.StopRequested = true; }, begun + closing},
      {"a Stop during the first line", StopDuring(upload[0]), begun + StoppedLine(upload[0]) + closing},
      {"a Stop during a middle line", StopDuring(upload[2]), begun + First(2) + StoppedLine(upload[2]) + closing},
      {"a Stop during the last line", StopDuring(upload[4]), begun + First(4) + StoppedLine(upload[4]) + closing},
      {"a refused first line", Refuse(upload[0]), begun + First(1) + closing},
      {"a refused last line", Refuse(upload[4]), begun + First(5) + closing},
      {"a Stop during a line that is refused", Both(StopDuring(upload[1]), Refuse(upload[1])),
       begun + First(1) + StoppedLine(upload[1]) + closing},
      {"the link goes down on the way", LinkDownDuring(upload[1]), begun + First(2) + closing},
      {"no upload wanted: no command and no second text",
       [](Wizard& wizard) { wizard.Records.DeviceType.UploadCalibrationData = false; }, asked + saving + closing},
      {"no concerned head: the mark in the file, and SAVE alone",
       [](Wizard& wizard) {
         wizard.Ini().Set("HeadType", {{"Item1", "A,CALIBRATE,,,,,,,,,,,,,,,8_CH"},
                                       {"Item2", "B,MICROTITER,,125,,8,,,,,,,,,,,1_CH_SHORT"},
                                       {"Item4", "C,SERIALDILUTE X,,125,,8"}});
       },
       begun + Line("SET_CALIBRATION SAVE") + closing,
       {"DeviceType/AxisCalibratedS=1"}},
      {"the file can't be written: the lines go out all the same", WritesFail, begun + First(5) + closing, {}},
      {"the file can't be read: no head is found",
       ReadsFail,
       begun + Line("SET_CALIBRATION SAVE") + closing,
       {"DeviceType/AxisCalibratedS=1"}},
      {"no host window", NoHostWindow, begun + First(5) + "status \n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    ToCalibrationLocation(wizard);
    wizard.Boxes.Answers = {Ok};
    row.given(wizard);
    wizard.Form->SaveChanges();
    EXPECT_EQ(wizard.Transcript(), row.transcript);
    EXPECT_EQ(wizard.Ini().Writes, row.writes);
  }
}

/// Saves a catalogue of that one head: the line that is written for it, if one is, and the commands.
Lines SavedAs(const std::string& head, const Given& given) {
  Wizard wizard;
  ToCalibrationLocation(wizard);
  given(wizard);
  wizard.Ini().Set("HeadType", {{"Item1", head}, {"Item2", ""}});
  Answering({Ok})(wizard);
  wizard.Form->SaveChanges();
  Lines saved = wizard.Ini().Writes;
  EXPECT_EQ(saved.back(), "DeviceType/AxisCalibratedS=1");
  saved.pop_back();
  for (const std::string& line : wizard.SentLines()) saved.push_back(line);
  EXPECT_EQ(saved.back(), "SET_CALIBRATION SAVE");
  saved.pop_back();
  return saved;
}

TEST(SaveSAxisPositions, PositionAndStrokeGoToTheFileAndTheInstrument) {
  const auto steps = [](const char* text) {
    return [=](Wizard& wizard) { wizard.Form->Form().Get<forms::TextBox>("txtCurrentCollect").SetText(text); };
  };
  const auto offset = [](const char* mm) { return Key("HeadType", "SDTeachToolOffsetMM", mm); };
  const auto mmPerStep = [](float mm) { return [=](Wizard& wizard) { wizard.Records.AxisS.MmPerStep = mm; }; };
  struct Row {
    const char* name;
    const char* volume;
    const char* stroke;
    const char* positions;  ///< places 10 to 12 as written; empty: not written
    std::string tipEject;
    std::string origin;
    Given given = Nothing;
  };
  const std::vector<Row> rows = {
      {"the class 12.5", "12.5", "1.5", "620,0,600", "12_S -30", "12_S 600"},
      {"the class 30", "30", "1.5", "620,0,600", "30_S -30", "30_S 600"},
      {"the class 125", "125", "1.5", "620,0,600", "125_S -30", "125_S 600"},
      {"the class 300", "300", "1.5", "620,0,600", "300_S -30", "300_S 600"},
      {"the class 1250", "1250", "1.5", "620,0,600", "1250_S -30", "1250_S 600"},
      {"no class: in the file only", "12", "1.5", "620,0,600", "", ""},
      {"no stroke is -0", "125", "0", "620,0,600", "125_S -0", "125_S 600"},
      {"a negative stroke gets two signs", "125", "-1.5", "620,0,600", "125_S --30", "125_S 600"},
      // 5 mm are 2.5 steps, and the eject offset of 1 mm is half a step.
      {"halves round away from zero", "125", "5", "501,0,500", "125_S -3", "125_S 500",
       Both(offset("0"), mmPerStep(2))},
      {"Up the other way round", "125", "1.5", "420,0,400", "125_S -30", "125_S 400",
       [](Wizard& wizard) { wizard.Records.AxisS.MoveSign = -1; }},
      {"an empty working value is 0", "125", "1.5", "120,0,100", "125_S -30", "125_S 100", steps("")},
      {"no step length: no offsets and no stroke", "125", "1.5", "500,0,500", "", "125_S 500", mmPerStep(0)},
      {"outside 32 bits: the old position", "125", "1.5", "27,0,7", "125_S -30", "125_S 7", offset("200000000")},
      {"place 10 has no such limit", "125", "1.5", "2147483660,0,2147483640", "125_S -30", "125_S 2147483640",
       steps("2147483540")},
      {"an infinite stroke: not in the file", "125", "1e999", "", "", "125_S 600"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const auto head = [&](const std::string& positions) {
      return std::string("\"H\",SERIALDILUTE,0,") + row.volume + ",0,8,0,0,0,0," + positions + "," + row.stroke +
             ",0,0,8_CH,0,\"\",0,0";
    };
    Lines expected;
    if (*row.positions != '\0') expected.push_back("HeadType/Item1=" + head(row.positions));
    if (!row.tipEject.empty()) expected.push_back("SET_CALIBRATION TipEject_8Ch_" + row.tipEject);
    if (!row.origin.empty()) expected.push_back("SET_CALIBRATION AspirateOrigin_8Ch_" + row.origin);
    EXPECT_EQ(SavedAs(head("5,0,7"), row.given), expected);
  }
}

TEST(SaveSAxisPositions, AHeadsLineIsWrittenInFull) {
  struct Row {
    const char* name;
    const char* head;
    Lines saved;
  };
  const std::vector<Row> rows = {
      {"numbers and flags in their plain form",
       "H\",SERIALDILUTE,0.10,12,+7,8,1 250,TRUE,2,x,5,6.5,7,.5,-3.0,1e20,8_CH,-1,te\"xt,False,0.000123",
       {"HeadType/Item1=\"H\",SERIALDILUTE,0.1,12,7,8,1250,1,1,0,620,6,600,0.5,-3,1e+20,8_CH,1,\"text\",0,0.000123"}},
      {"places that were missing",
       "H,SERIALDILUTE,3",
       {"HeadType/Item1=\"H\",SERIALDILUTE,3,0,0,0,0,0,0,0,620,0,600,0,0,0,,0,\"\",0,0"}},
      {"without a name: saved before it ends the list",
       ",SERIALDILUTE,3",
       {"HeadType/Item1=\"\",SERIALDILUTE,3,0,0,0,0,0,0,0,620,0,600,0,0,0,,0,\"\",0,0"}},
      {"a number that has no text keeps the head out of the file, not out of the memory",
       "H,SERIALDILUTE,1e999,30,0,8",
       {"SET_CALIBRATION TipEject_8Ch_30_S -0", "SET_CALIBRATION AspirateOrigin_8Ch_30_S 600"}},
      {"a teach tool with a volume class gets lines",
       "H,CALIBRATE,0,30,0,1,0,0,0,0,5,0,7,0,0,0,1_CH_SHORT,0,,0,0",
       {"HeadType/Item1=\"H\",CALIBRATE,0,30,0,1,0,0,0,0,620,0,600,0,0,0,1_CH_SHORT,0,\"\",0,0",
        "SET_CALIBRATION TipEject_1Ch_30_S -0", "SET_CALIBRATION AspirateOrigin_1Ch_30_S 600"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(SavedAs(row.head, Nothing), row.saved);
  }
}

TEST(SaveSAxisPositions, TheHostMayAskForItBeforeAnythingHasBeenRead) {
  Wizard wizard;
  wizard.Forget();
  wizard.Form->SaveChanges();
  EXPECT_EQ(wizard.Transcript(), asked) << "answered with Cancel";

  wizard.Boxes.Answers = {Ok};
  wizard.Forget();
  wizard.Form->SaveChanges();
  EXPECT_EQ(wizard.Transcript(), asked + saving + closing) << "nothing is known of an upload";
  EXPECT_EQ(wizard.Ini().Writes.size(), 4U);
  EXPECT_EQ(wizard.PressableButtons(), "10");
}

TEST(SaveSAxisPositions, WhatWasSavedIsWhatTheNextReadFinds) {
  Wizard wizard;
  ToCalibrationLocation(wizard);
  wizard.Press(7);
  wizard.Boxes.Answers = {Yes, Ok};
  wizard.Press(save);
  EXPECT_FALSE(wizard.Records.DeviceType.AxisCalibratedS) << "the shared record waits for the next load";
  wizard.Press(14);
  wizard.Press(9);
  EXPECT_EQ(wizard.CurrentSteps(), "502");
  EXPECT_TRUE(wizard.Records.DeviceType.AxisCalibratedS);
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
