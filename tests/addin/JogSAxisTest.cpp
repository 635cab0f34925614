#include <gtest/gtest.h>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

constexpr std::int16_t up = 7;
constexpr std::int16_t down = 8;

/// A wizard on its main page with that S axis and that S value on record; an empty value means that there is none.
void Prepare(Wizard& wizard, const std::string& mmPerStep, const std::string& signs, const std::string& onRecord) {
  wizard.SetAxisS(mmPerStep, signs);
  wizard.Ini().Set("HeadType", {{"SDTeachToolOffsetMM", "0"},
                                {"Item2", onRecord.empty() ? "" : "Head,SERIALDILUTE,,,,,,,,,,," + onRecord}});
  wizard.ToMainPage();
}

TEST(JogSAxis, APressMovesByTheStepSizeAndRoundsToWholeSteps) {
  struct Row {
    const char* name;
    const char* mmPerStep;
    const char* signs;
    const char* onRecord;
    int stepSize;
    std::vector<std::int16_t> presses;
    Lines sent;
  };
  const std::vector<Row> rows = {
      {"up by 0.1 mm", "0.05", "1,-1", "500", 0, {up}, {"MOVE S 502"}},
      {"down by 0.1 mm", "0.05", "1,-1", "500", 0, {down}, {"MOVE S 498"}},
      {"up by 1 mm", "0.05", "1,-1", "500", 1, {up}, {"MOVE S 520"}},
      {"down by 1 mm", "0.05", "1,-1", "500", 1, {down}, {"MOVE S 480"}},
      {"an axis the other way round",
       "0.05",
       "-1,1",
       "500",
       0,
       {up, down, down},
       {"MOVE S 498", "MOVE S 500", "MOVE S 502"}},
      {"each press's rounding stays in the sum",  // 3.33 steps, each rounded to 3
       "0.03",
       "1,-1",
       "500",
       0,
       {up, up, up},
       {"MOVE S 503", "MOVE S 506", "MOVE S 509"}},
      {"up by half a step rounds away from zero", "2", "1,-1", "500", 1, {up}, {"MOVE S 501"}},
      {"down by half a step rounds away from zero", "2", "1,-1", "500", 1, {down}, {"MOVE S 500"}},
      {"a half below zero too", "2", "1,-1", "-500", 1, {up, down}, {"MOVE S -500", "MOVE S -501"}},
      {"the step length is a single: 1 / 0.4 stays below 2.5", "0.4", "1,-1", "500", 1, {up}, {"MOVE S 502"}},
      {"and so downward", "0.4", "1,-1", "500", 1, {down}, {"MOVE S 498"}},
      {"through zero, without a -0", "0.1", "1,-1", "1", 0, {down, down}, {"MOVE S 0", "MOVE S -1"}},
      {"an empty working value counts as 0", "0.05", "1,-1", "", 0, {up}, {"MOVE S 2"}},
      {"no limit is tested", "0.00001", "1,-1", "9000", 1, {up}, {"MOVE S 109000"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    Prepare(wizard, row.mmPerStep, row.signs, row.onRecord);
    EXPECT_EQ(wizard.CurrentSteps(), row.onRecord);
    EXPECT_EQ(wizard.Pick("cboCollectStep", row.stepSize), row.stepSize == 1);
    for (const std::int16_t button : row.presses) EXPECT_TRUE(wizard.Press(button));
    EXPECT_EQ(wizard.SentLines(), row.sent);
    EXPECT_EQ("MOVE S " + wizard.CurrentSteps(), row.sent.back());
  }
}

TEST(JogSAxis, TellsItsStoryAndLeavesTheButtonsOfTheCalibrationLocation) {
  const std::string begun = "stop False\nstatus Moving S Axis\n";
  const std::string stopped = "stop False\nactive True\nsend MOVE S 502\nstop False\nstop True\nsent MOVE S 502\n";
  struct Row {
    const char* name;
    Given given;
    std::string transcript;
    const char* steps;
  };
  const std::vector<Row> rows = {
      {"all goes well", Nothing, begun + Line("MOVE S 502") + "status \n", "502"},
      {"refused: status and value stay", Refuse("MOVE S 502"), begun + Line("MOVE S 502"), "502"},
      {"stopped during its one line", StopDuring("MOVE S 502"), begun + stopped + "status \n", "502"},
      {"stopped and refused", Both(StopDuring("MOVE S 502"), Refuse("MOVE S 502")), begun + stopped, "502"},
      {"a Stop between two presses has no effect on the next",
       [](Wizard& wizard) {
         wizard.Press(16);
         wizard.Host.Log.clear();
       },
       begun + Line("MOVE S 502") + "status \n", "502"},
      {"no step length: silence, and the status text stays", [](Wizard& wizard) { wizard.Records.AxisS.MmPerStep = 0; },
       begun, "500"},
      {"no status panel: it ends at its first step", NoStatusPanel, "stop False\n", "500"},
      {"the panel refuses texts: the same", [](Wizard& wizard) { wizard.Host.StatusFails = true; }, "stop False\n",
       "500"},
      {"the link is down: the value moves all the same", LinkDown, "status Moving S Axis\n", "502"},
      {"nothing can be split: the value moves all the same", SplitsFail, begun, "502"},
      {"the file isn't needed", ReadsFail, begun + Line("MOVE S 502") + "status \n", "502"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    wizard.ToMainPage();
    row.given(wizard);
    EXPECT_TRUE(wizard.Press(up));
    EXPECT_EQ(wizard.Transcript(), row.transcript);
    EXPECT_EQ(wizard.CurrentSteps(), row.steps);
    EXPECT_EQ(wizard.PressableButtons(), "0 5 6 7 8 14 16");
    EXPECT_FALSE(wizard.Form->Flags().Homed) << "a jog never homes";
  }
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
