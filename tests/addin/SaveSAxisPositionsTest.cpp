#include <gtest/gtest.h>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

using enum forms::MessageAnswer;

constexpr std::int16_t save = 6;

/// Save is reached through Start or a jog; this goes there and clears the log.
void ToCalibrationLocation(Wizard& wizard) {
  wizard.ToMainPage();
  wizard.Press(7);
  wizard.Press(8);
  wizard.Forget();
}

const std::string cleared = "status \n";
const std::string verifying = "stop False\nstatus Verifying calibrated position\n";
const std::string homing = verifying + Line("HOME S");
const std::string moving = "status Moving S Axis\n" + Line("MOVE S 500");
const std::string looking = "message Calibrate Syringe Axis\n";
const std::string verified = homing + moving + cleared + looking + cleared;
const std::string asked = "message Save S Axis Positions\n";
const std::string saving = "status Saving values...\n";
const std::string updating = "status Updating the Marivane's memory...\n";
const std::string begun = asked + saving + updating;
const std::string closing = "status \nchanged False\n";

const std::string marked = "DeviceType/AxisCalibratedS=1";
/// The example's three heads concerned after a save of the working value 500: teach tool offset 100, so S is 600.
const Lines writtenHeads = {
    "HeadType/Item1=\"Teach Tool\",CALIBRATE,0,0,0,1,0,0,0,0,620,0,600,0,0,0,1_CH_SHORT,0,\"\",0,0",
    "HeadType/Item2=\"8 Channel\",SERIALDILUTE,1.5,125,0,8,2,1,0,1,620,11,600,1.5,3.25,-4,8_CH,1,\"note\",0,2.5",
    "HeadType/Item4=\"1 Channel\",SERIALDILUTE,0,12.5,0,1,0,0,0,0,620,0,600,2,0,0,1_CH,0,\"\",0,0", marked};
const Lines upload = {"SET_CALIBRATION TipEject_8Ch_125_S -30", "SET_CALIBRATION AspirateOrigin_8Ch_125_S 600",
                      "SET_CALIBRATION TipEject_1Ch_12_S -40", "SET_CALIBRATION AspirateOrigin_1Ch_12_S 600",
                      "SET_CALIBRATION SAVE"};

struct Row {
  const char* name;
  Given given;
  std::string transcript;
  Lines writes = writtenHeads;
};

void ExpectAll(std::initializer_list<Row> rows, std::deque<forms::MessageAnswer> answers,
               const std::function<void(Wizard&)>& act) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    ToCalibrationLocation(wizard);
    wizard.Boxes.Answers = answers;
    row.given(wizard);
    act(wizard);
    EXPECT_EQ(wizard.Transcript(), row.transcript);
    EXPECT_EQ(wizard.Ini().Writes, row.writes);
    EXPECT_EQ(wizard.PressableButtons(), "0 5 6 7 8 14 16");
  }
}

TEST(Save, VerifiesAndAsksAndAFailingStepOfTheVerificationCountsAsYes) {
  const std::string onward = begun + Span(upload, 0, 5) + closing;
  const auto panelLost = [](Wizard& wizard) { wizard.Boxes.Meanwhile = [&] { NoStatusPanel(wizard); }; };
  // clang-format off
  ExpectAll({
      {"yes and OK saves", Nothing, verified + onward},
      {"yes and Cancel writes nothing", Answering({Yes, Cancel}), verified + asked, {}},
      {"no shows the hint", Answering({No}), verified + "message Calibrate S Axis Reference Point\n", {}},
      {"a refused homing of S", Refuse("HOME S"), verified + onward},
      {"a refused move of S leaves its text for the time of the question", Refuse("MOVE S 500"),
       homing + moving + looking + cleared + onward},
      {"a Stop during the homing of S skips the move, and stands at the upload", StopDuring("HOME S"),
       verifying + StoppedLine("HOME S") + "status Moving S Axis\nstatus \n" + looking + cleared + begun + closing},
      {"no status panel: the save dialog comes at once", Both(NoStatusPanel, Answering({Ok})),
       "stop False\n" + asked + Span(upload, 0, 5) + "changed False\n"},
      {"the link is down: the save dialog comes, the file leads", Both(LinkDown, Answering({Ok})),
       "status Verifying calibrated position\nstatus Moving S Axis\n" + begun + closing},
      {"nothing can be split: no head is found, and no line goes out", Both(SplitsFail, Answering({Ok})),
       homing + "status Moving S Axis\n" + begun + closing, {marked}},
      {"the status panel is lost while the question shows", Both(panelLost, Answering({No, Ok})),
       homing + moving + cleared + looking + asked + Span(upload, 0, 5) + "changed False\n"},
  }, {Yes, Ok}, [](Wizard& wizard) { EXPECT_TRUE(wizard.Press(save)); });
  // clang-format on
}

TEST(Save, TheBoxesSayWhatTheOperatorHasToKnow) {
  Wizard wizard;
  ToCalibrationLocation(wizard);
  wizard.Boxes.Answers = {Yes, Cancel, No};
  wizard.Press(save);
  wizard.Press(save);
  const std::string question =
      "yes-no none Please visually check the teach tool calibration position to ensure that\r\nthe lower edge of the "
      "upper part of the teach tool \r\ncompletely covers the silver indication ring beneath it.\r\n\r\nIs the "
      "calibration position correct?";
  const std::string warning =
      "ok-cancel exclamation The current S Axis value will be saved and used as the initial \r\nposition for all 1, 8 "
      "and 12 channel pipetting heads.\r\n\r\nThis information will be stored on this computer and will\r\nalso be "
      "transferred into the Marivane's memory.\r\n\r\nClick [OK] to save these values.";
  const std::string hint =
      "ok none To determine the S Axis reference point, click the Up and Down buttons\r\nto move the upper part of the "
      "teach tool until the lower edge\r\ncompletely covers the silver indication ring beneath it.";
  EXPECT_EQ(wizard.Boxes.Shown, (Lines{question, warning, question, hint}));
}

TEST(SaveSAxisPositions, EndsThroughItsClosingStepsOnEveryRoad) {
  const Given noConcernedHead = Both(Both(Key("HeadType", "Item1", "A,CALIBRATE,,,,,,,,,,,,,,,8_CH"),
                                          Key("HeadType", "Item2", "B,MICROTITER,,125,,8,,,,,,,,,,,1_CH_SHORT")),
                                     Key("HeadType", "Item4", "C,SERIALDILUTE X,,125,,8"));
  const std::string saveAlone = begun + Line("SET_CALIBRATION SAVE") + closing;
  // clang-format off
  ExpectAll({
      {"all lines go out", Nothing, begun + Span(upload, 0, 5) + closing},
      {"a Stop that nobody has cleared: the file is written, no line goes out",
       [](Wizard& wizard) { wizard.Host.StopRequested = true; }, begun + closing},
      {"a Stop during a line", StopDuring(upload[2]), begun + Span(upload, 0, 2) + StoppedLine(upload[2]) + closing},
      {"a refused line", Refuse(upload[2]), begun + Span(upload, 0, 3) + closing},
      {"no upload wanted: no command and no second text",
       [](Wizard& wizard) { wizard.Records.DeviceType.UploadCalibrationData = false; }, asked + saving + closing},
      {"no concerned head: the mark in the file, and SAVE alone", noConcernedHead, saveAlone, {marked}},
      {"the file can't be written: the lines go out", WritesFail, begun + Span(upload, 0, 5) + closing, {}},
      {"the file can't be read: no head is found", ReadsFail, saveAlone, {marked}},
      {"no host window", NoHostWindow, begun + Span(upload, 0, 5) + cleared},
  }, {Ok}, [](Wizard& wizard) { wizard.Form->SaveChanges(); });
  // clang-format on
}

/// Saves a catalogue of that one head. Returns the writes, followed by the commands.
Lines SavedAs(const std::string& head, const Given& given) {
  Wizard wizard;
  ToCalibrationLocation(wizard);
  given(wizard);
  wizard.Ini().Set("HeadType", {{"Item1", head}, {"Item2", ""}});
  wizard.Boxes.Answers = {Ok};
  wizard.Form->SaveChanges();
  Lines saved = wizard.Ini().Writes;
  for (const std::string& line : wizard.Host.Sent()) saved.push_back(line);
  return saved;
}

TEST(SaveSAxisPositions, PositionAndStrokeGoToTheFileAndTheInstrument) {
  const auto steps = [](const char* text) {
    return [=](Wizard& wizard) { wizard.Form->Form().Get<forms::TextBox>("txtCurrentCollect").SetText(text); };
  };
  const auto offset = [](const char* mm) { return Key("HeadType", "SDTeachToolOffsetMM", mm); };
  const auto mmPerStep = [](float mm) { return [=](Wizard& wizard) { wizard.Records.AxisS.MmPerStep = mm; }; };
  const Given reversed = [](Wizard& wizard) { wizard.Records.AxisS.MoveSign = -1; };
  // Volume, stroke, places 10 to 12 as they are written, and the two commands; an empty command isn't sent.
  using Head = std::tuple<const char*, std::string, std::string, std::string, std::string, std::string, Given>;
  // clang-format off
  const std::vector<Head> heads = {
      {"the class 12.5", "12.5", "1.5", "620,0,600", "12_S -30", "12_S 600", Nothing},
      {"the class 1250", "1250", "1.5", "620,0,600", "1250_S -30", "1250_S 600", Nothing},
      {"no class: in the file only", "12", "1.5", "620,0,600", "", "", Nothing},
      {"no stroke is -0", "125", "0", "620,0,600", "125_S -0", "125_S 600", Nothing},
      {"a negative stroke gets two signs", "125", "-1.5", "620,0,600", "125_S --30", "125_S 600", Nothing},
      // 5 mm are 2.5 steps, and the eject offset of 1 mm is half a step.
      {"halves go away from zero", "125", "5", "501,0,500", "125_S -3", "125_S 500", Both(offset("0"), mmPerStep(2))},
      // 80.4999988, which is 80.5 in single precision.
      {"the stroke in double precision", "125", "4.025", "620,0,600", "125_S -80", "125_S 600", Nothing},
      {"a half of the sum too", "125", "1.5", "621,0,601", "125_S -30", "125_S 601", steps("500.5")},
      {"Up the other way round", "125", "1.5", "420,0,400", "125_S -30", "125_S 400", reversed},
      {"an empty working value is 0", "125", "1.5", "120,0,100", "125_S -30", "125_S 100", steps("")},
      {"no step length: no offsets and no stroke", "125", "1.5", "500,0,500", "", "125_S 500", mmPerStep(0)},
      {"outside 32 bits: the old position", "125", "1.5", "27,0,7", "125_S -30", "125_S 7", offset("200000000")},
      {"place 10 has no such limit", "125", "1.5", "2147483660,0,2147483640", "125_S -30", "125_S 2147483640",
       steps("2147483540")},
      {"an infinite stroke: not in the file", "125", "1e999", "", "", "125_S 600", Nothing},
  };
  // clang-format on
  for (const auto& [name, volume, stroke, positions, tipEject, origin, given] : heads) {
    SCOPED_TRACE(name);
    const std::string front = "\"H\",SERIALDILUTE,0," + volume + ",0,8,0,0,0,0,";
    const std::string back = "," + stroke + ",0,0,8_CH,0,\"\",0,0";
    Lines expected;
    if (!positions.empty()) expected.push_back("HeadType/Item1=" + front + positions + back);
    expected.push_back(marked);
    if (!tipEject.empty()) expected.push_back("SET_CALIBRATION TipEject_8Ch_" + tipEject);
    if (!origin.empty()) expected.push_back("SET_CALIBRATION AspirateOrigin_8Ch_" + origin);
    expected.push_back("SET_CALIBRATION SAVE");
    EXPECT_EQ(SavedAs(front + "5,0,7" + back, given), expected);
  }
}

TEST(SaveSAxisPositions, AHeadWithoutANameIsSavedAndANumberThatHasNoTextKeepsAHeadOutOfTheFile) {
  EXPECT_EQ(SavedAs(",SERIALDILUTE,3", Nothing),
            (Lines{"HeadType/Item1=\"\",SERIALDILUTE,3,0,0,0,0,0,0,0,620,0,600,0,0,0,,0,\"\",0,0", marked, upload[4]}));
  EXPECT_EQ(SavedAs("H,SERIALDILUTE,1e999,30,0,8", Nothing),
            (Lines{marked, "SET_CALIBRATION TipEject_8Ch_30_S -0", "SET_CALIBRATION AspirateOrigin_8Ch_30_S 600",
                   upload[4]}));
}

TEST(SaveSAxisPositions, TheHostMayAskForItBeforeAnythingHasBeenRead) {
  Wizard wizard;
  wizard.Boxes.Answers = {Cancel, Ok};
  wizard.Form->SaveChanges();
  wizard.Form->SaveChanges();
  EXPECT_EQ(wizard.Transcript(), asked + asked + saving + closing) << "nothing is known of an upload";
  EXPECT_EQ(wizard.Ini().Writes.size(), 4U);
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
