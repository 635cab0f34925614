#include <gtest/gtest.h>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

/// A connection that hands out its link only so many more times.
struct LastingStop final : FakeHost::Object<HelmswayCmds::IParentConnection> {
  using Object::Object;
  Result GetDeviceLink(HelmswayCmds::IDeviceLink** link) noexcept override {
    if (ReadsLeft == 0) return Result::Failed;
    if (ReadsLeft > 0) --ReadsLeft;
    *link = new FakeHost::DeviceLink(Host);
    return Result::Ok;
  }
  int ReadsLeft = -1;  ///< negative for no end
};

TEST(WizardInterruption, AStopWithNothingRunningIsTakenBackByTheNextPress) {
  Wizard wizard;
  wizard.ToMainPage();
  wizard.Press(16);
  EXPECT_TRUE(wizard.Host.StopRequested);
  wizard.Press(5);
  EXPECT_EQ(wizard.Host.Sent(), Lines{"HOME ALL"});
}

TEST(WizardInterruption, WhileALineIsUnderWayOnlyAStopActs) {
  // The last member lists the buttons that can be pressed on the screen while the line is under way.
  using Row = std::tuple<std::int16_t, const char*, const char*>;
  for (const auto& [button, line, pressable] :
       {Row{10, "REV", "10"}, Row{0, "STATUS SLIDER", "14 16"}, Row{7, "MOVE S 502", "14 16"}}) {
    SCOPED_TRACE(line);
    Wizard wizard;
    if (button != 10) wizard.ToMainPage();
    std::string nested;
    wizard.Host.Meanwhile[line] = [&, allowed = pressable] {
      EXPECT_EQ(wizard.PressableButtons(), allowed);
      const std::string panelsBefore = wizard.VisiblePanels();
      wizard.Host.Log.clear();
      wizard.Form->cmdButton_Click(16);
      for (std::int16_t index = 0; index <= 15; ++index) {
        if (index != 1) wizard.Form->cmdButton_Click(index);
      }
      wizard.Form->cmdButton_Click(1);
      nested = wizard.Transcript();
      EXPECT_EQ(wizard.VisiblePanels(), panelsBefore);
    };
    EXPECT_TRUE(wizard.Press(button));
    EXPECT_EQ(nested, "stop False\nstop True\nstop False\nstop True\n") << "no other takes the Stop back";
  }
}

TEST(WizardInterruption, AChangeOfSelectionOrTheHostsDefaultsResetTheProgress) {
  for (const std::string action : {"cboNestType", "cboHeadType", "cboPosition", "cboTipRack", "cboTipType",
                                   "cboCollectStep", "the host's defaults"}) {
    SCOPED_TRACE(action);
    Wizard wizard;
    wizard.ToMainPage();
    Homed(wizard);
    if (action.starts_with("cbo")) {
      const std::int32_t selected = wizard.State(action).listIndex;
      EXPECT_FALSE(wizard.Pick(action, selected));
      EXPECT_TRUE(wizard.Form->Flags().Homed) << "the entry that is selected counts for nothing";
      EXPECT_TRUE(wizard.Pick(action, selected == 0 ? 1 : 0));
    } else {
      wizard.Form->ResetProgressFlags();
    }
    const bool kept = action == "cboCollectStep";  // a step size has no effect
    EXPECT_EQ(wizard.Form->Flags().Homed, kept);
    EXPECT_EQ(wizard.Transcript(), "") << "and nothing else";
    wizard.Press(0);
    EXPECT_EQ(wizard.Host.Sent().front(), kept ? "STATUS SLIDER" : "HOME ALL");
  }
}

TEST(WizardInterruption, APickDuringHomeAllIsOvertakenByItsEnd) {
  Wizard wizard;
  wizard.ToMainPage();
  wizard.Host.Meanwhile["HOME ALL"] = [&] {
    EXPECT_TRUE(wizard.Pick("cboNestType", wizard.State("cboNestType").listIndex == 0 ? 1 : 0));
  };
  wizard.Press(5);
  EXPECT_TRUE(wizard.Form->Flags().Homed);
}

TEST(WizardInterruption, TheBackgroundHandsTheFocusBack) {
  Wizard wizard;
  wizard.Screen().Click(0);
  NoHostWindow(wizard);
  wizard.Screen().Click(0);
  EXPECT_EQ(wizard.Transcript(), "focus\n");
}

TEST(WizardInterruption, AnUnloadedFormIsDeafAndTheNextLoadStartsAfresh) {
  Wizard wizard;
  wizard.ToMainPage();
  Homed(wizard);
  wizard.Form->Unload();
  wizard.Form->Unload();
  EXPECT_FALSE(wizard.Press(5));
  EXPECT_FALSE(wizard.Pick("cboHeadType", 1));
  EXPECT_EQ(wizard.Transcript(), "active False\n");

  wizard.Load();
  EXPECT_EQ(wizard.VisiblePanels() + wizard.PressableButtons() + wizard.CurrentSteps(), "fraInitial10");
  EXPECT_FALSE(wizard.State("chkToolInstalled").checked);
  EXPECT_FALSE(wizard.Form->Flags().Homed);
  EXPECT_EQ(wizard.Records.DeviceType.Name, "2") << "the shared records live on";
}

TEST(WizardInterruption, AnUnloadedFormLetsGoOfPanelWindowAndConnectionInThisOrder) {
  Wizard wizard;
  HostChannel& host = wizard.Form->Host();
  const auto hold = [&](auto& reference, auto* object, const char* name) {
    object->OnGone = [&wizard, name] { wizard.Host.Log.push_back(std::string("gone ") + name); };
    reference = Adopt(object);
  };
  hold(host.ParentConnection, new FakeHost::Connection(wizard.Host), "connection");
  hold(host.FormParent, new FakeHost::Window(wizard.Host), "window");
  hold(host.StatusPanel, new FakeHost::StatusPanel(wizard.Host), "panel");
  wizard.Form->Unload();
  EXPECT_EQ(wizard.Transcript(), "active False\ngone panel\ngone window\ngone connection\n");
}

TEST(WizardInterruption, TheHostMayEndTheFormInTheMiddleOfACommand) {
  using Row = std::tuple<std::int16_t, const char*>;
  const Row rows[] = {{10, "REV"},          {5, "HOME ALL"},      {0, "HOME ALL"},
                      {0, "STATUS SLIDER"}, {0, "MOVE SD_Y -37"}, {6, "HOME S"},
                      {7, "MOVE S 502"},    {6, "MOVE S 500"},    {6, "SET_CALIBRATION SAVE"}};
  for (const auto& [button, line] : rows) {
    SCOPED_TRACE(std::to_string(button) + " at " + line);
    Wizard wizard;
    if (button != 10) wizard.ToMainPage();
    if (button == 6) {
      EXPECT_TRUE(wizard.Press(7) && wizard.Press(8));
    }
    wizard.Boxes.Answers = {forms::MessageAnswer::Yes, forms::MessageAnswer::Ok};
    wizard.Host.Meanwhile[line] = [&] {
      wizard.Forget();
      wizard.Form->Unload();
      wizard.Form = nullptr;  // the host releases everything that it holds
    };
    EXPECT_TRUE(wizard.Press(button));
    EXPECT_EQ(wizard.Transcript(), "active False\nsent " + std::string(line) + "\n");
    EXPECT_EQ(wizard.Ini().Writes, Lines{});
  }
}

TEST(WizardInterruption, AnAnswerToABoxOfAFormThatHasGoneMeanwhileChangesNothing) {
  Wizard wizard;
  wizard.ToMainPage();
  wizard.Boxes.Answers = {forms::MessageAnswer::Ok};
  wizard.Boxes.Meanwhile = [&] { wizard.Form->Unload(); };
  wizard.Form->SaveChanges();
  EXPECT_EQ(wizard.Transcript(), "message Save S Axis Positions\nactive False\n");
  EXPECT_EQ(wizard.Ini().Writes, Lines{});
}

TEST(WizardInterruption, AStopThatEndedTheEjectionKeepsTheToolRegisteredEvenIfTheFlagCannotBeReadAgain) {
  Wizard wizard;
  wizard.ToMainPage();
  wizard.Boxes.Answers = {forms::MessageAnswer::Ok};
  // The link is lost when the run has read the Stop for its last line, before the sequence reads it again.
  auto* const connection = new LastingStop(wizard.Host);
  wizard.Form->Host().ParentConnection = Adopt<HelmswayCmds::IParentConnection>(connection);
  wizard.Host.Meanwhile["SET_SPEED Z 1000"] = [&] {
    wizard.Host.StopRequested = true;
    connection->ReadsLeft = 4;  // one for each of the lines that are skipped
  };
  wizard.Press(14);
  EXPECT_EQ(wizard.Host.Sent().back(), "SET_SPEED Z 1000");
  EXPECT_EQ(wizard.Ini().Writes, Lines{});
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
