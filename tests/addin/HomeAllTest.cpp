#include <gtest/gtest.h>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

const std::string begun = "stop False\nstatus Home all\nstatus Homing all axes\n";

TEST(HomeAll, TheButtonSendsTheInstrumentHomeAndCountsAsHomedHoweverItEnds) {
  struct Row {
    const char* name;
    Given given;
    std::string transcript;
  };
  const std::vector<Row> rows = {
      {"all goes well", Nothing, begun + Line("HOME ALL") + "status \n"},
      {"refused: the status text stays", Refuse("HOME ALL"), begun + Line("HOME ALL")},
      {"failed outright: the status text stays",
       [](Wizard& wizard) { wizard.Host.Outcomes["HOME ALL"] = FakeHost::Outcome::Failed; }, begun + Line("HOME ALL")},
      {"stopped: as if it had run through", StopDuring("HOME ALL"),
       begun + "stop False\nactive True\nsend HOME ALL\nstop False\nstop True\nsent HOME ALL\nstatus \n"},
      {"stopped and refused: the status text stays", Both(StopDuring("HOME ALL"), Refuse("HOME ALL")),
       begun + "stop False\nactive True\nsend HOME ALL\nstop False\nstop True\nsent HOME ALL\n"},
      {"the link is down: it ends at its look at the Stop", LinkDown, "status Home all\nstatus Homing all axes\n"},
      {"no status panel: it ends at its first step", NoStatusPanel, "stop False\n"},
      {"the file can't be read: it ends at the Z calibration", ReadsFail, "stop False\nstatus Home all\n"},
      {"nothing can be split: it ends at the command text", SplitsFail, begun},
      {"an empty file changes nothing", EmptyFile, begun + Line("HOME ALL") + "status \n"},
      {"no host window is needed", NoHostWindow, begun + Line("HOME ALL") + "status \n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    wizard.ToMainPage();
    EXPECT_FALSE(wizard.Form->Flags().Homed);
    row.given(wizard);
    EXPECT_TRUE(wizard.Press(5));
    EXPECT_EQ(wizard.Transcript(), row.transcript);
    EXPECT_TRUE(wizard.Form->Flags().Homed);
    EXPECT_EQ(wizard.PressableButtons(), "0 5 6 14 16");
    EXPECT_EQ(wizard.Ini().Writes, Lines{});
  }
}

TEST(HomeAll, LoadsTheRecordsOfWhatIsInstalledBeforeItSends) {
  Wizard wizard;
  wizard.ToMainPage();
  wizard.Records = {};
  std::string head;
  wizard.Host.Meanwhile["HOME ALL"] = [&] { head = wizard.Records.Head.Name; };
  wizard.Pick("cboHeadType", 1);
  wizard.Press(5);
  EXPECT_EQ(head, "Teach Tool") << "the installed head, whatever is selected";
  EXPECT_EQ(wizard.Records.DeviceType.Name, "2");
  EXPECT_EQ(wizard.Records.AxisX.SafePosition, 150);
  EXPECT_EQ(wizard.Records.AxisSDX.HighLimit, 401);
  EXPECT_EQ(wizard.Records.Head.SDTeachToolOffset, 100) << "the axes are loaded before the head";
  EXPECT_EQ(wizard.Records.Tip.Item, "0");
  EXPECT_EQ(wizard.Records.Nest.Name, "Nest B");
}

TEST(HomeAll, ALoadReplacesTheRecordsAlsoByEmptyOnes) {
  Wizard wizard;
  wizard.ToMainPage();
  wizard.Ini().Marivane.clear();
  wizard.Press(5);
  EXPECT_EQ(wizard.Records.DeviceType.Name, "");
  EXPECT_FALSE(wizard.Records.DeviceType.HasXAxis);
  EXPECT_TRUE(wizard.Records.DeviceType.UploadCalibrationData);
  EXPECT_EQ(wizard.Records.AxisS.MmPerStep, 0.0F);
  EXPECT_EQ(wizard.Records.Head.Name, "");
  EXPECT_EQ(wizard.Records.Nest.Name, "");
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
