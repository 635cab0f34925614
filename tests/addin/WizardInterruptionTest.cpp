#include <gtest/gtest.h>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

TEST(WizardInterruption, AStopWithNothingRunningIsTakenBackByTheNextPress) {
  Wizard wizard;
  wizard.ToMainPage();
  wizard.Press(16);
  EXPECT_TRUE(wizard.Host.StopRequested);
  wizard.Press(5);
  EXPECT_EQ(wizard.SentLines(), Lines{"HOME ALL"});

  wizard.Forget();
  wizard.Form->cmdButton_Click(1);
  EXPECT_EQ(wizard.Transcript(), "stop False\nstop True\n") << "the covered page's Stop does the same";
}

TEST(WizardInterruption, WhileALineIsUnderWayOnlyAStopActs) {
  struct Row {
    std::int16_t button;
    const char* line;
    const char* pressable;  ///< on the screen, while the line is under way
  };
  for (const Row& row : {Row{10, "REV", "10"}, Row{5, "HOME ALL", "14 16"}, Row{0, "STATUS SLIDER", "14 16"},
                         Row{7, "MOVE S 502", "14 16"}, Row{6, "HOME S", "14 16"}}) {
    SCOPED_TRACE(row.line);
    Wizard wizard;
    if (row.button != 10) wizard.ToMainPage();
    if (row.button == 6) {
      EXPECT_TRUE(wizard.Press(7) && wizard.Press(8));
    }
    wizard.Forget();
    std::string nested;
    wizard.Host.Meanwhile[row.line] = [&] {
      EXPECT_EQ(wizard.PressableButtons(), row.pressable);
      const std::string panelsBefore = wizard.VisiblePanels();
      const std::size_t before = wizard.Host.Log.size();
      wizard.Form->cmdButton_Click(16);
      for (std::int16_t index = 0; index <= 15; ++index) {
        if (index != 1) wizard.Form->cmdButton_Click(index);
      }
      EXPECT_TRUE(wizard.Host.StopRequested) << "no other press takes the Stop back";
      wizard.Form->cmdButton_Click(1);
      for (std::size_t i = before; i < wizard.Host.Log.size(); ++i) nested += wizard.Host.Log[i] + "; ";
      EXPECT_EQ(wizard.VisiblePanels(), panelsBefore);
    };
    EXPECT_TRUE(wizard.Press(row.button));
    EXPECT_EQ(nested, "stop False; stop True; stop False; stop True; ");
  }
}

TEST(WizardInterruption, AChangeOfSelectionOrTheHostsDefaultsResetTheProgress) {
  struct Row {
    const char* name;
    Given action;
    bool homedBehind;
  };
  const auto pick = [](const char* list) {
    return [list](Wizard& wizard) {
      const forms::ControlState state = wizard.State(list);
      ASSERT_GE(state.listCount, 2);
      EXPECT_TRUE(wizard.Pick(list, state.listIndex == 0 ? 1 : 0));
    };
  };
  const std::vector<Row> rows = {
      {"nothing happens", Nothing, true},
      {"a nest", pick("cboNestType"), false},
      {"a head", pick("cboHeadType"), false},
      {"a position", pick("cboPosition"), false},
      {"a rack", pick("cboTipRack"), false},
      {"a tip", pick("cboTipType"), false},
      {"a step size counts for nothing", pick("cboCollectStep"), true},
      {"the entry that is selected counts for nothing",
       [](Wizard& wizard) { EXPECT_FALSE(wizard.Pick("cboHeadType", wizard.State("cboHeadType").listIndex)); }, true},
      {"the host's defaults", [](Wizard& wizard) { wizard.Form->ResetProgressFlags(); }, false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    wizard.ToMainPage();
    wizard.Press(5);
    wizard.Forget();
    row.action(wizard);
    EXPECT_EQ(wizard.Form->Flags().Homed, row.homedBehind);
    EXPECT_EQ(wizard.Transcript(), "") << "and nothing else";
    wizard.Press(0);
    EXPECT_EQ(wizard.SentLines().front(), row.homedBehind ? "STATUS SLIDER" : "HOME ALL");
  }
}

TEST(WizardInterruption, TheBackgroundHandsTheFocusBack) {
  Wizard wizard;
  wizard.Screen().Click(0);
  EXPECT_EQ(wizard.Transcript(), "focus\n");
  wizard.Form->Host().FormParent = {};
  wizard.Screen().Click(0);
  EXPECT_EQ(wizard.Transcript(), "focus\n");
}

TEST(WizardInterruption, AnUnloadedFormIsDeafAndTheNextLoadStartsAfresh) {
  Wizard wizard;
  wizard.ToMainPage();
  wizard.Press(5);
  wizard.Forget();
  const std::shared_ptr<frmAddIn> old = wizard.Form;
  old->Unload();
  old->Unload();
  EXPECT_EQ(wizard.Transcript(), "active False\n");
  EXPECT_FALSE(wizard.Press(5));
  EXPECT_FALSE(wizard.Pick("cboHeadType", 1));
  EXPECT_EQ(wizard.Transcript(), "active False\n");

  wizard.Load();
  EXPECT_EQ(wizard.VisiblePanels(), "fraInitial");
  EXPECT_EQ(wizard.PressableButtons(), "10");
  EXPECT_EQ(wizard.CurrentSteps(), "");
  EXPECT_FALSE(wizard.State("chkToolInstalled").checked);
  EXPECT_FALSE(wizard.Form->Flags().Homed);
  EXPECT_EQ(wizard.Records.DeviceType.Name, "2") << "the shared records live on";
}

TEST(WizardInterruption, TheHostMayEndTheFormInTheMiddleOfACommand) {
  struct Row {
    std::int16_t button;
    const char* line;
  };
  const std::vector<Row> rows = {
      {10, "REV"},
      {5, "HOME ALL"},
      {0, "HOME ALL"},
      {0, "STATUS SLIDER"},
      {0, "MOVE SD_Y -37"},
      {0, "MOVE S 500"},
      {7, "MOVE S 502"},
      {6, "HOME S"},
      {6, "MOVE S 500"},
      {6, "SET_CALIBRATION AspirateOrigin_8Ch_125_S 600"},
      {6, "SET_CALIBRATION SAVE"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::to_string(row.button) + " at " + row.line);
    Wizard wizard;
    if (row.button != 10) wizard.ToMainPage();
    if (row.button == 6) {
      EXPECT_TRUE(wizard.Press(7) && wizard.Press(8));
    }
    wizard.Boxes.Answers = {forms::MessageAnswer::Yes, forms::MessageAnswer::Ok};
    wizard.Host.Meanwhile[row.line] = [&] {
      wizard.Forget();
      wizard.Form->Unload();
      wizard.Form = nullptr;  // the host lets go of everything it has
    };
    EXPECT_TRUE(wizard.Press(row.button));
    EXPECT_EQ(wizard.Transcript(), "active False\nsent " + std::string(row.line) + "\n");
    EXPECT_EQ(wizard.Ini().Writes, Lines{});
  }
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
