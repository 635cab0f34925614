#include <gtest/gtest.h>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

const std::vector<std::int16_t> drivenButtons = {0, 6, 5, 13, 3, 2, 12, 7, 8};

/// Writes what changes of panels and buttons into the host's log: "show fraMove", "hide fraEject", "colour 7", "on 7".
struct ChangeLog final : forms::IObserver {
  explicit ChangeLog(Wizard& wizard) : Played(wizard) { wizard.Screen().SetObserver(this); }
  void Changed(forms::ControlId control, forms::Aspect aspect) noexcept override {
    const forms::ControlState state = Played.Screen().State(control);
    const std::string name(state.name);
    const std::string index = std::to_string(state.index);
    Lines& log = Played.Host.Log;
    if (aspect == forms::Aspect::Visible) log.push_back((state.visible ? "show " : "hide ") + name);
    if (name == "cmdButton" && aspect == forms::Aspect::BackColor) log.push_back("colour " + index);
    if (name == "cmdButton" && aspect == forms::Aspect::Enabled)
      log.push_back((state.enabled ? "on " : "off ") + index);
  }
  void Closed() noexcept override {}
  Wizard& Played;
};

/// What the operator does, in words: "press 10", "check chkToolInstalled", "uncheck chkStageEmpty".
bool Do(Wizard& wizard, const std::string& words) {
  const std::string target = words.substr(words.find(' ') + 1);
  if (words.starts_with("press")) return wizard.Press(static_cast<std::int16_t>(std::stoi(target)));
  return wizard.Check(target, words.starts_with("check"));
}

/// Nothing else can be pressed, and a button that the enable sets drive wears the colour of its state, once a set has
/// been applied.
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
      {"uncheck chkToolInstalled", "fraWarning", ""},  // the other box had gone out
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
      {"check chkToolUninstalled", "fraWarning", "9"},  // the other box goes out
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

TEST(WizardFlow, APressDoesItsStepsInOrder) {
  const auto turn = [](const char* to, std::initializer_list<int> buttons) {
    std::string text;
    for (const int i : buttons) text += "colour " + std::to_string(i) + "\n" + to + " " + std::to_string(i) + "\n";
    return text;
  };
  const std::string hint = "message Calibrate S Axis Reference Point\n";
  const std::string atLocationOn = turn("on", {0, 6, 5, 7, 8});
  using Row = std::tuple<const char*, std::string>;
  const std::vector<Row> rows = {
      {"press 10", "stop False\nstatus Retrieving configuration settings from Marivane\n" + Line("REV") +
                       "changed False\nstatus \nshow fraWarning\nhide fraInitial\n"},
      {"check chkToolInstalled", "on 9\n"},
      {"press 9", "stop False\nhide fraWarning\nshow fraMove\nshow fraTest\nchanged False\n"},
      {"press 7", "stop False\noff 0\noff 5\noff 7\noff 8\nstatus Moving S Axis\n" + Line("MOVE S 502") + "status \n" +
                      atLocationOn},
      {"press 0", "stop False\n" + hint + turn("off", {0, 6, 5, 7, 8}) + "status Home all\nstatus Homing all axes\n" +
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
  }
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
