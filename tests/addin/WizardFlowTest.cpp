#include <gtest/gtest.h>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

const std::vector<std::int16_t> drivenButtons = {0, 6, 5, 13, 3, 2, 12, 7, 8};

/// Writes the form's changes into the host's log: "show fraMove", "hide fraEject", "colour 7", "on 7", "caption
/// lblEjecting", "uncheck chkStageEmpty".
struct ChangeLog final : forms::IObserver {
  explicit ChangeLog(Wizard& wizard) : Played(wizard) { wizard.Screen().SetObserver(this); }
  void Changed(forms::ControlId control, forms::Aspect aspect) noexcept override {
    const forms::ControlState state = Played.Screen().State(control);
    const std::string name(state.name);
    const std::string index = std::to_string(state.index);
    Lines& log = Played.Host.Log;
    if (aspect == forms::Aspect::Caption) log.push_back("caption " + name);
    if (aspect == forms::Aspect::Checked) log.push_back((state.checked ? "check " : "uncheck ") + name);
    if (aspect == forms::Aspect::Visible) log.push_back((state.visible ? "show " : "hide ") + name);
    if (name == "cmdButton" && aspect == forms::Aspect::BackColor) log.push_back("colour " + index);
    if (name == "cmdButton" && aspect == forms::Aspect::Enabled)
      log.push_back((state.enabled ? "on " : "off ") + index);
  }
  void Closed() noexcept override {}
  Wizard& Played;
};

/// Performs an action of the operator, given in words: "press 10", "check chkToolInstalled", "uncheck chkStageEmpty".
bool Do(Wizard& wizard, const std::string& words) {
  const std::string target = words.substr(words.find(' ') + 1);
  if (words.starts_with("press")) return wizard.Press(static_cast<std::int16_t>(std::stoi(target)));
  return wizard.Check(target, words.starts_with("check"));
}

/// Checks that nothing else can be pressed, and that the buttons of the enable sets have the colour of their state,
/// once a set has been applied.
void ExpectButtons(Wizard& wizard, const std::string& pressable, bool driven) {
  EXPECT_EQ(wizard.PressableButtons(), pressable);
  wizard.Host.Log.clear();
  for (std::int16_t index = 0; index <= 16; ++index) {
    const bool other = (" " + pressable + " ").find(" " + std::to_string(index) + " ") == std::string::npos;
    EXPECT_FALSE(other && wizard.Press(index)) << index;
  }
  EXPECT_EQ(wizard.Transcript(), "");
  for (const std::int16_t index : drivenButtons) {
    const forms::ControlState state = wizard.State("cmdButton", index);
    using enum forms::SystemColor;
    EXPECT_EQ(state.backColor, forms::Color(driven && state.enabled ? WindowBackground : ButtonFace)) << index;
  }
}

TEST(WizardFlow, EveryStateAllowsItsButtonsAndLeadsWhereItShallWhateverHappensOnTheWay) {
  using Row = std::tuple<const char*, const char*, const char*>;
  const char* const mainPage = "fraMove fraTest";
  const std::vector<Row> rows = {
      {"press 10", "fraWarning", ""},
      {"check chkToolUninstalled", "fraWarning", "9"},
      {"check chkToolInstalled", "fraWarning", "9"},
      {"uncheck chkToolInstalled", "fraWarning", ""},  // the other box was cleared
      {"check chkToolUninstalled", "fraWarning", "9"},
      {"press 9", "fraEject", ""},
      {"check chkStageEmpty", "fraEject", "4"},
      {"press 4", "fraEjectDone", "11"},
      {"press 11", "fraWarning", ""},
      {"check chkToolInstalled", "fraWarning", "9"},
      {"press 9", mainPage, "0 5 7 8 14 16"},  // as designed
      {"press 16", mainPage, "0 5 7 8 14 16"},
      {"press 7", mainPage, "0 5 6 7 8 14 16"},  // at the calibration location
      {"press 5", mainPage, "0 5 6 14 16"},      // after Home All
      {"press 0", mainPage, "0 5 6 7 8 14 16"},
      {"press 8", mainPage, "0 5 6 7 8 14 16"},
      {"press 14", "fraWarning", "9"},           // the box is still checked
      {"press 9", mainPage, "5 6 13 14 16"},     // no head
      {"press 13", mainPage, "3 5 6 12 14 16"},  // head ready
      {"press 3", mainPage, "2 5 6 14 16"},      // tip on
      {"press 2", mainPage, "3 5 6 12 14 16"},
      {"press 12", mainPage, "5 6 13 14 16"},
      {"press 6", mainPage, "0 5 6 7 8 14 16"},
      {"press 5", mainPage, "0 5 6 14 16"},
      {"press 14", "fraWarning", "9"},
      {"check chkToolUninstalled", "fraWarning", "9"},  // clears the other box
      {"press 9", "fraEject", ""},                      // the stage's box has been cleared
  };
  const Given unconnected = [](Wizard& wizard) { wizard.Form->Host().ParentConnection = {}; };
  const std::vector<std::pair<const char*, Given>> conditions = {
      {"all is well", Nothing},
      {"the instrument refuses to home", Both(WithoutXAxis, Refuse("HOME ALL"))},
      {"the host has handed over nothing", Both(unconnected, Both(NoHostWindow, NoStatusPanel))},
      {"the configuration service fails", Both(ReadsFail, Both(WritesFail, SplitsFail))},
  };
  for (const auto& [name, given] : conditions) {
    SCOPED_TRACE(name);
    Wizard wizard;
    given(wizard);
    EXPECT_EQ(wizard.VisiblePanels(), "fraInitial");
    ExpectButtons(wizard, "10", false);
    bool driven = false;
    int number = 0;
    for (const auto& [action, panels, pressable] : rows) {
      SCOPED_TRACE(std::to_string(++number) + ": " + action);
      EXPECT_TRUE(Do(wizard, action));
      EXPECT_EQ(wizard.VisiblePanels(), panels);
      driven = driven || std::string(action) == "press 7";
      ExpectButtons(wizard, pressable, driven);
    }
  }
}

/// The log of a change of those buttons.
std::string Turn(const char* to, std::initializer_list<int> buttons) {
  std::string text;
  for (const int i : buttons) text += "colour " + std::to_string(i) + "\n" + to + " " + std::to_string(i) + "\n";
  return text;
}

/// The transcript with "lines" in place of the log of each run of sends.
std::string Outline(const Wizard& wizard) {
  const std::string lines = "lines\n";
  std::string text;
  const Lines& log = wizard.Host.Log;
  for (std::size_t i = 0; i < log.size(); ++i) {
    const bool stopOfASend = log[i] == "stop False" && i + 1 < log.size() && log[i + 1] == "active True";
    if (stopOfASend || log[i] == "active True" || log[i].starts_with("sent ")) continue;
    if (!log[i].starts_with("send ")) text += log[i] + "\n";
    if (log[i].starts_with("send ") && !text.ends_with(lines)) text += lines;
  }
  return text;
}

TEST(WizardFlow, APressDoesItsStepsInOrder) {
  const std::string hint = "message Calibrate S Axis Reference Point\n";
  const std::string atLocationOn = Turn("on", {0, 6, 5, 7, 8});
  using Row = std::tuple<const char*, std::string>;
  const std::vector<Row> rows = {
      {"press 10", "stop False\nstatus Retrieving configuration settings from Marivane\n" + Line("REV") +
                       "changed False\nstatus \nshow fraWarning\nhide fraInitial\n"},
      {"check chkToolInstalled", "check chkToolInstalled\non 9\n"},
      {"press 9", "stop False\nhide fraWarning\nshow fraMove\nshow fraTest\nchanged False\n"},
      {"press 7", "stop False\noff 0\noff 5\noff 7\noff 8\nstatus Moving S Axis\n" + Line("MOVE S 502") + "status \n" +
                      atLocationOn},
      {"press 0", "stop False\n" + hint + Turn("off", {0, 6, 5, 7, 8}) + "status Home all\nstatus Homing all axes\n" +
                      Line("HOME ALL") + "status \nstatus Moving to calibration location\n" + Line("MOVE SD_Y -37") +
                      Line("MOVE SD_X 201") + Line("MOVE Z -16000") + Line("MOVE S 500") + "status \n" + atLocationOn},
  };
  Wizard wizard;
  WithoutXAxis(wizard);
  ChangeLog changes(wizard);
  for (const auto& [action, transcript] : rows) {
    SCOPED_TRACE(action);
    wizard.Host.Log.clear();
    EXPECT_TRUE(Do(wizard, action));
    EXPECT_EQ(wizard.Transcript(), transcript);
  }
}

TEST(WizardFlow, TheRoadOverTheStageAndThatOfTheHeadsGoInOrder) {
  const std::string toMain = "stop False\nhide fraWarning\nshow fraMove\nshow fraTest\nchanged False\n";
  const std::string homing = "status Home all\nstatus Homing all axes\nlines\nstatus \n";
  const auto running = [](const std::string& status) { return "status " + status + "\nlines\nstatus \n"; };
  using Row = std::tuple<const char*, std::string>;
  const std::vector<Row> rows = {
      {"check chkToolUninstalled", "check chkToolUninstalled\non 9\n"},
      {"press 9",
       "stop False\nhide fraWarning\nshow fraEject\n"
       "caption lblContinue\ncaption lblContinue\ncaption chkStageEmpty\n"},
      {"check chkStageEmpty", "check chkStageEmpty\non 4\n"},
      {"press 4", "stop False\ncaption lblEjecting\nshow fraDoEject\nhide fraEject\n" +
                      running("Ejecting Pipette Head") + "show fraEjectDone\nhide fraDoEject\n"},
      {"press 11",
       "stop False\nuncheck chkStageEmpty\noff 4\nuncheck chkToolUninstalled\noff 9\n"
       "show fraWarning\nhide fraEjectDone\n"},
      {"check chkToolInstalled", "check chkToolInstalled\non 9\n"},
      {"check chkToolUninstalled", "check chkToolUninstalled\nuncheck chkToolInstalled\n"},
      {"check chkToolInstalled", "check chkToolInstalled\nuncheck chkToolUninstalled\n"},
      {"press 9", toMain},
      {"press 14", "stop False\noff 0\noff 5\noff 7\noff 8\nmessage Eject Teach Tool\n" + homing + "lines\n" +
                       Turn("on", {6, 5, 13}) + "show fraWarning\nhide fraMove\nhide fraTest\n"},
      {"press 9", toMain},
      {"press 13", "stop False\n" + Turn("off", {6, 5, 13}) + "message \n" + homing +
                       running("Collecting Pipette head") + Turn("on", {6, 5, 3, 12})},
      {"press 3", "stop False\n" + Turn("off", {6, 5, 3, 12}) + running("Moving to rack") + running("Collecting tip") +
                      Turn("on", {6, 5, 2})},
      {"press 2", "stop False\n" + Turn("off", {6, 5, 2}) + running("Ejecting tip") + Turn("on", {6, 5, 3, 12})},
      {"press 12",
       "stop False\n" + Turn("off", {6, 5, 3, 12}) + running("Ejecting Pipette head") + Turn("on", {6, 5, 13})},
  };
  Wizard wizard;
  wizard.Boxes.Answers = {forms::MessageAnswer::Ok};
  wizard.Press(10);
  ChangeLog changes(wizard);
  for (const auto& [action, outline] : rows) {
    SCOPED_TRACE(action);
    wizard.Host.Log.clear();
    EXPECT_TRUE(Do(wizard, action));
    EXPECT_EQ(Outline(wizard), outline);
  }
}

TEST(WizardFlow, TheRackIsForgottenAfterAChangeOfTheHead) {
  for (const std::int16_t button : {std::int16_t{12}, std::int16_t{13}}) {
    Wizard wizard;
    wizard.ToMainPage();
    wizard.Form->cmdButton_Click(3);
    EXPECT_TRUE(wizard.Form->Flags().AtRack);
    bool atRackOnTheWay = false;
    wizard.Host.Meanwhile["SET_SPEED Z 500"] = [&] { atRackOnTheWay = wizard.Form->Flags().AtRack; };
    wizard.Form->cmdButton_Click(button);
    EXPECT_TRUE(atRackOnTheWay) << button;
    EXPECT_FALSE(wizard.Form->Flags().AtRack) << button;
  }
}

TEST(WizardFlow, TheStageTextsNameThePositionOfTheModel) {
  for (const bool hasXAxis : {true, false}) {
    const std::string stage = hasXAxis ? "STAGE POSITION 6" : "STAGE POSITION 2";
    SCOPED_TRACE(stage);
    Wizard wizard;
    if (!hasXAxis) WithoutXAxis(wizard);
    for (const char* action : {"press 10", "check chkToolUninstalled", "press 9"}) EXPECT_TRUE(Do(wizard, action));
    EXPECT_EQ(wizard.State("lblContinue", 0).caption,
              "The pipette head that is currently installed in the pipette module will be ejected to " + stage + ".");
    EXPECT_EQ(wizard.State("lblContinue", 1).caption,
              "Please confirm that " + stage + " is empty and click 'Continue' to eject the pipette head.");
    EXPECT_EQ(wizard.State("chkStageEmpty").caption, stage + " is empty");
    EXPECT_EQ(wizard.Ini().Writes, Lines{}) << "no teach tool is registered on this road";
    wizard.Host.Meanwhile["HOME ALL"] = [&] { EXPECT_EQ(wizard.PressableButtons(), "1") << "the other is covered"; };
    EXPECT_TRUE(Do(wizard, "check chkStageEmpty") && Do(wizard, "press 4"));
    EXPECT_EQ(wizard.State("lblEjecting").caption, "Ejecting the pipette head to " + stage + "...");
  }
}

TEST(WizardFlow, TheTeachToolIsRegisteredWhenTheCatalogueHasIt) {
  const Lines first = {"HeadType/Installed=1", "TipType/Installed=0"};
  const std::string tool = Wizard::TeachTool;
  using Row = std::tuple<const char*, std::vector<std::string>, Lines>;
  const std::vector<Row> rows = {
      {"the first of two", {tool, tool}, first},
      {"a later head", {"A,SERIALDILUTE", "B,CALIBRATE", tool}, {"HeadType/Installed=3", "TipType/Installed=0"}},
      {"one without a name", {tool.substr(tool.find(','))}, first},
      {"another code or kind", {"A,CALIBRATE,,,,,,,,,,,,,,,1_CH_LONG", "A,SERIALDILUTE,,,,,,,,,,,,,,,1_CH_SHORT"}, {}},
      {"behind a head without a name", {",CALIBRATE", tool}, {}},
  };
  for (const auto& [name, heads, writes] : rows) {
    SCOPED_TRACE(name);
    Wizard wizard;
    wizard.Ini().Set("HeadType", {{"Item1", ""}, {"Item2", ""}, {"Item3", ""}, {"Item4", ""}});
    for (std::size_t i = 0; i < heads.size(); ++i) {
      wizard.Ini().Set("HeadType", {{"Item" + std::to_string(i + 1), heads[i]}});
    }
    for (const char* action : {"press 10", "check chkToolInstalled", "press 9"}) EXPECT_TRUE(Do(wizard, action));
    EXPECT_EQ(wizard.Ini().Writes, writes);
    EXPECT_EQ(wizard.Records.Head.Index, writes.empty() ? "2" : writes.front().substr(19)) << "and then loaded";
  }
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
