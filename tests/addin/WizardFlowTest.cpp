#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

const std::vector<std::int16_t> drivenButtons = {0, 6, 5, 13, 3, 2, 12, 7, 8};

/// Writes what changes of panels and buttons into the host's log: "show fraMove", "hide fraEject", "colour 7", "on 7".
class ChangeLog final : public forms::IObserver {
 public:
  explicit ChangeLog(Wizard& wizard) : wizard_(wizard) { wizard.Screen().SetObserver(this); }
  void Changed(forms::ControlId control, forms::Aspect aspect) noexcept override {
    const forms::ControlState state = wizard_.Screen().State(control);
    const std::string name(state.name);
    if (aspect == forms::Aspect::Visible) wizard_.Host.Log.push_back((state.visible ? "show " : "hide ") + name);
    if (name != "cmdButton") return;
    const std::string index = std::to_string(state.index);
    if (aspect == forms::Aspect::BackColor) wizard_.Host.Log.push_back("colour " + index);
    if (aspect == forms::Aspect::Enabled) wizard_.Host.Log.push_back((state.enabled ? "on " : "off ") + index);
  }
  void Closed() noexcept override { wizard_.Host.Log.emplace_back("closed"); }

 private:
  Wizard& wizard_;
};

/// What the operator does, in words: "press 10", "check chkToolInstalled", "uncheck chkStageEmpty".
bool Do(Wizard& wizard, const std::string& words) {
  std::istringstream input(words);
  std::string verb;
  std::string target;
  input >> verb >> target;
  if (verb == "press") return wizard.Press(static_cast<std::int16_t>(std::stoi(target)));
  return wizard.Check(target, verb == "check");
}

void NothingElseCanBePressed(Wizard& wizard, const std::string& pressable) {
  const std::string list = " " + pressable + " ";
  wizard.Host.Log.clear();
  for (std::int16_t index = 0; index <= 16; ++index) {
    if (list.find(" " + std::to_string(index) + " ") != std::string::npos) continue;
    EXPECT_FALSE(wizard.Press(index)) << index;
  }
  EXPECT_EQ(wizard.Transcript(), "");
}

/// A button that the enable sets drive wears the colour of its state, once a set has been applied.
void ColoursFit(Wizard& wizard, bool driven) {
  for (const std::int16_t index : drivenButtons) {
    const forms::ControlState state = wizard.State("cmdButton", index);
    const bool bright = driven && state.enabled;
    EXPECT_EQ(state.backColor,
              forms::Color(bright ? forms::SystemColor::WindowBackground : forms::SystemColor::ButtonFace))
        << index;
  }
  for (const std::int16_t index : {std::int16_t{1}, std::int16_t{16}}) {
    EXPECT_EQ(wizard.State("cmdButton", index).backColor, forms::Color(forms::Rgb{255, 128, 128}));
  }
}

TEST(WizardFlow, EveryStateAllowsItsButtonsAndLeadsWhereItShallWhateverHappensOnTheWay) {
  struct Row {
    const char* action;
    const char* panels;
    const char* pressable;
  };
  const char* const mainPage = "fraMove fraTest";
  const std::vector<Row> rows = {
      {"press 10", "fraWarning", ""},
      {"check chkToolUninstalled", "fraWarning", "9"},
      {"press 9", "fraEject", ""},
      {"check chkStageEmpty", "fraEject", "4"},
      {"uncheck chkStageEmpty", "fraEject", ""},
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
      {"press 6", mainPage, "0 5 6 7 8 14 16"},
      {"press 14", "fraWarning", "9"},           // the box is still checked
      {"press 9", mainPage, "5 6 13 14 16"},     // no head
      {"press 13", mainPage, "3 5 6 12 14 16"},  // head ready
      {"press 3", mainPage, "2 5 6 14 16"},      // tip on
      {"press 2", mainPage, "3 5 6 12 14 16"},
      {"press 12", mainPage, "5 6 13 14 16"},
      {"press 6", mainPage, "0 5 6 7 8 14 16"},
      {"press 5", mainPage, "0 5 6 14 16"},
      {"press 14", "fraWarning", "9"},
      {"check chkToolUninstalled", "fraWarning", "9"},
      {"press 9", "fraEject", ""},
      {"check chkStageEmpty", "fraEject", "4"},
      {"press 4", "fraEjectDone", "11"},
      {"press 11", "fraWarning", ""},
      {"check chkToolInstalled", "fraWarning", "9"},
      {"press 9", mainPage, "5 6 13 14 16"},  // the last set was that of Eject Teach Tool
  };
  struct Condition {
    const char* name;
    Given given;
  };
  const std::vector<Condition> conditions = {
      {"all is well", Nothing},
      {"a model without an X axis", WithoutXAxis},
      {"the link is down", LinkDown},
      {"the instrument refuses to home", Refuse("HOME ALL")},
      {"the host has handed over nothing",
       [](Wizard& wizard) {
         wizard.Form->Host().ParentConnection = {};
         Both(NoHostWindow, NoStatusPanel)(wizard);
       }},
      {"the status panel refuses texts", [](Wizard& wizard) { wizard.Host.StatusFails = true; }},
      {"the file is empty", EmptyFile},
      {"the configuration service fails", Both(ReadsFail, Both(WritesFail, SplitsFail))},
  };
  for (const Condition& condition : conditions) {
    SCOPED_TRACE(condition.name);
    Wizard wizard;
    condition.given(wizard);
    EXPECT_EQ(wizard.VisiblePanels(), "fraInitial");
    EXPECT_EQ(wizard.PressableButtons(), "10");
    NothingElseCanBePressed(wizard, "10");
    ColoursFit(wizard, false);
    bool driven = false;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      SCOPED_TRACE(std::to_string(i) + ": " + rows[i].action);
      EXPECT_TRUE(Do(wizard, rows[i].action));
      EXPECT_EQ(wizard.VisiblePanels(), rows[i].panels);
      EXPECT_EQ(wizard.PressableButtons(), rows[i].pressable);
      NothingElseCanBePressed(wizard, rows[i].pressable);
      driven = driven || std::string(rows[i].action) == "press 7";
      ColoursFit(wizard, driven);
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
  const std::string atLocationOff = turn("off", {0, 6, 5, 7, 8});
  const std::string atLocationOn = turn("on", {0, 6, 5, 7, 8});
  struct Row {
    const char* action;
    std::string transcript;
  };
  const std::vector<Row> rows = {
      {"press 10", "stop False\nstatus Retrieving configuration settings from Marivane\n" + Line("REV") +
                       "changed False\nstatus \nshow fraWarning\nhide fraInitial\n"},
      {"check chkToolInstalled", "on 9\n"},
      {"press 9", "stop False\nhide fraWarning\nshow fraMove\nshow fraTest\nchanged False\n"},
      {"press 7", "stop False\noff 0\noff 5\noff 7\noff 8\nstatus Moving S Axis\n" + Line("MOVE S 502") + "status \n" +
                      atLocationOn},
      {"press 6", "stop False\n" + atLocationOff + "status Verifying calibrated position\n" + Line("HOME S") +
                      "status Moving S Axis\n" + Line("MOVE S 502") +
                      "status \nmessage Calibrate Syringe Axis\nstatus \n" + hint + atLocationOn},
      {"press 5", "stop False\n" + atLocationOff + "status Home all\nstatus Homing all axes\n" + Line("HOME ALL") +
                      "status \n" + turn("on", {0, 6, 5})},
      {"press 0", "stop False\n" + hint + turn("off", {0, 6, 5}) + "status Moving to calibration location\n" +
                      Line("MOVE SD_Y -37") + Line("MOVE SD_X 201") + Line("MOVE Z -16000") + Line("MOVE S 500") +
                      "status \n" + atLocationOn},
  };
  Wizard wizard;
  WithoutXAxis(wizard);
  ChangeLog changes(wizard);
  for (const Row& row : rows) {
    SCOPED_TRACE(row.action);
    wizard.Host.Log.clear();
    EXPECT_TRUE(Do(wizard, row.action));
    EXPECT_EQ(wizard.Transcript(), row.transcript);
  }
}

TEST(WizardFlow, TheStageTextsNameThePositionOfTheModel) {
  for (const bool hasXAxis : {true, false}) {
    SCOPED_TRACE(hasXAxis ? "with an X axis: 6" : "without an X axis: 2");
    const std::string stage = hasXAxis ? "STAGE POSITION 6" : "STAGE POSITION 2";
    Wizard wizard;
    if (!hasXAxis) WithoutXAxis(wizard);
    for (const char* action : {"press 10", "check chkToolUninstalled", "press 9"}) EXPECT_TRUE(Do(wizard, action));
    EXPECT_EQ(wizard.State("lblContinue", 0).caption,
              "The pipette head that is currently installed in the pipette module will be ejected to " + stage + ".");
    EXPECT_EQ(wizard.State("lblContinue", 1).caption,
              "Please confirm that " + stage + " is empty and click 'Continue' to eject the pipette head.");
    EXPECT_EQ(wizard.State("chkStageEmpty").caption, stage + " is empty");
    EXPECT_EQ(wizard.State("lblEjecting").caption, "Ejecting the pipette head to Stage 2...");
    EXPECT_EQ(wizard.Ini().Writes, Lines{}) << "no teach tool is registered on this road";

    std::string duringEject;
    wizard.Host.Meanwhile["HOME ALL"] = [&] {
      duringEject = wizard.VisiblePanels() + ": " + wizard.PressableButtons();
      EXPECT_EQ(wizard.State("lblEjecting").caption, "Ejecting the pipette head to " + stage + "...");
    };
    EXPECT_TRUE(Do(wizard, "check chkStageEmpty"));
    EXPECT_TRUE(Do(wizard, "press 4"));
    EXPECT_EQ(duringEject, "fraDoEject: 1") << "the panel covers the other Stop";
  }
}

TEST(WizardFlow, TheToolBoxesExcludeEachOtherAndOneOfThemAllowsToContinue) {
  struct Row {
    const char* action;
    const char* checked;
    bool continueEnabled;
  };
  Wizard wizard;
  wizard.Press(10);
  for (const Row& row : {Row{"check chkToolInstalled", "installed", true}, Row{"check chkToolUninstalled", "not", true},
                         Row{"check chkToolInstalled", "installed", true}, Row{"uncheck chkToolInstalled", "", false},
                         Row{"check chkToolUninstalled", "not", true}, Row{"uncheck chkToolUninstalled", "", false}}) {
    SCOPED_TRACE(row.action);
    EXPECT_TRUE(Do(wizard, row.action));
    const std::string installed = wizard.State("chkToolInstalled").checked ? "installed" : "";
    const std::string uninstalled = wizard.State("chkToolUninstalled").checked ? "not" : "";
    EXPECT_EQ(installed + uninstalled, row.checked);
    EXPECT_EQ(wizard.State("cmdButton", 9).enabled, row.continueEnabled);
  }
}

TEST(WizardFlow, AHandlerThatRunsAgainstItsGuardTakesTheStopBackAndNoMore) {
  Wizard wizard;
  wizard.Press(10);
  for (const std::int16_t index : std::vector<std::int16_t>{4, 9, 15, 17}) {
    SCOPED_TRACE(index);
    wizard.Host.Log.clear();
    wizard.Form->cmdButton_Click(index);
    EXPECT_EQ(wizard.Transcript(), "stop False\n");
    EXPECT_EQ(wizard.VisiblePanels(), "fraWarning");
  }
}

TEST(WizardFlow, TheTeachToolIsRegisteredWhenTheCatalogueHasIt) {
  const Lines first = {"HeadType/Installed=1", "TipType/Installed=0"};
  const std::string tool = Wizard::TeachTool;
  struct Row {
    const char* name;
    std::vector<std::string> heads;
    Lines writes;
  };
  const std::vector<Row> rows = {
      {"the first head", {tool}, first},
      {"a later head", {"A,SERIALDILUTE", "B,CALIBRATE", tool}, {"HeadType/Installed=3", "TipType/Installed=0"}},
      {"the first of two", {tool, tool}, first},
      {"one without a name", {tool.substr(tool.find(','))}, first},
      {"another code", {"A,CALIBRATE,,,,,,,,,,,,,,,1_CH_LONG"}, {}},
      {"another kind", {"A,SERIALDILUTE,,,,,,,,,,,,,,,1_CH_SHORT"}, {}},
      {"behind a head without a name", {",CALIBRATE", tool}, {}},
      {"no heads at all", {}, {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    wizard.Ini().Set("HeadType", {{"Item1", ""}, {"Item2", ""}, {"Item3", ""}, {"Item4", ""}});
    for (std::size_t i = 0; i < row.heads.size(); ++i) {
      wizard.Ini().Set("HeadType", {{"Item" + std::to_string(i + 1), row.heads[i]}});
    }
    for (const char* action : {"press 10", "check chkToolInstalled", "press 9"}) EXPECT_TRUE(Do(wizard, action));
    EXPECT_EQ(wizard.Ini().Writes, row.writes);
    EXPECT_EQ(wizard.VisiblePanels(), "fraMove fraTest");
    if (!row.writes.empty()) {
      EXPECT_EQ("HeadType/Installed=" + wizard.Records.Head.Index, row.writes[0]);
    }
  }
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
