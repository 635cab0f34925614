#include <gtest/gtest.h>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

TEST(EjectHeadToStage, TheFirstFailingStepEndsItBeforeAnyLine) {
  const Lines registered = {"HeadType/Installed=1", "TipType/Installed=0"};
  using Row = std::tuple<const char*, Given, Lines, Lines>;
  // clang-format off
  const std::vector<Row> rows = {
      {"the tool can't be registered", WritesFail, {"stop False"}, {}},
      {"the file can't be read", ReadsFail, {"stop False"}, {}},
      {"a head list without an end overruns the counter", EndlessHeads, {"stop False"}, {}},
      {"its text can't be taken apart: the status text stays", CommandTextsFail,
       {"stop False", "status Ejecting Pipette Head"}, registered},
  };
  // clang-format on
  for (const auto& [name, given, log, writes] : rows) {
    SCOPED_TRACE(name);
    Wizard wizard;
    wizard.Press(10);
    wizard.Check("chkToolUninstalled", true);
    wizard.Press(9);
    wizard.Check("chkStageEmpty", true);
    wizard.Ini().Set("HeadType", {{"Installed", "0"}});
    given(wizard);
    wizard.Forget();
    EXPECT_TRUE(wizard.Press(4));
    EXPECT_EQ(wizard.Host.Log, log);
    EXPECT_EQ(wizard.Ini().Writes, writes);
    EXPECT_EQ(wizard.Records.DeviceType.Name, "2");
    EXPECT_EQ(wizard.Records.Head.Index, wizard.Ini().ReadsFail ? "2" : "0") << "a load that fails leaves the records";
  }
}

TEST(EjectTeachTool, AWalkEndsAfterTheLargestNumberWithThatHead) {
  Wizard wizard;
  wizard.ToMainPage();
  EndlessHeads(wizard);
  wizard.Ini().Set("HeadType", {{"Item32767", "Last,,,,,,,,,,77,,,,,,"}});
  wizard.Boxes.Answers = {forms::MessageAnswer::Ok};
  wizard.Press(14);
  EXPECT_EQ(wizard.Host.Sent(), (Lines{"HOME ALL", "MOVE Z -500", "MOVE X 150", "MOVE SLIDER_CLOSED", "MOVE X 0",
                                       "MOVE Y 0", "MOVE Z -500", "MOVE SD_X 0", "MOVE SD_Y 0", "SET_SPEED Z 1000",
                                       "MOVE Z 0", "MOVE S 77", "MOVE Z -500", "MOVE S 0"}));
  EXPECT_EQ(wizard.Ini().Writes, Lines{"HeadType/Installed=0"});
  EXPECT_TRUE(wizard.Form->Flags().Homed);
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
