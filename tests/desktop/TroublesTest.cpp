#include <QLineEdit>
#include <QRegularExpression>
#include <QTest>

#include "tests/desktop/WindowFixture.h"

namespace Helmsway {
namespace {

/// What the add-in passes over in silence, as the operator sees it.
class SilentTroubles : public WindowFixture {
 protected:
  SilentTroubles() {
    GoToMainPage();
    Start();
    EXPECT_FALSE(IsShown("troublesNotice"));
  }

  bool Says(const char* pattern) {
    const bool says =
        QRegularExpression(QString::fromUtf8(pattern)).match(QString::fromStdString(Text("troublesNotice"))).hasMatch();
    return says && IsShown("troublesNotice");
  }

  bool IsNumberMarked() { return !Widget("txtCurrentCollect").toolTip().isEmpty(); }

  void ExpectAllWell() {
    EXPECT_FALSE(IsShown("troublesNotice")) << Text("troublesNotice");
    EXPECT_FALSE(IsShown("statusLeft"));
    EXPECT_FALSE(IsNumberMarked());
  }
};

TEST_F(SilentTroubles, ARefusedMoveLeavesANumberThatIsNotConfirmed) {
  ASSERT_TRUE(Session().Perform("instrument refuse \"MOVE S\""));
  const QPoint place = Place("cmdButton_7");
  Click("cmdButton_7");
  EXPECT_TRUE(Says("The number on the form, -3093, was not reached\nNot done: MOVE S -3093 refused: "));
  QTest::qWait(50);
  EXPECT_EQ(Place("cmdButton_7"), place);  // the next click in the row hits it, too
  EXPECT_TRUE(IsNumberMarked());
  EXPECT_EQ(Text("STATUS"), "Moving S Axis");
  EXPECT_TRUE(QTest::qWaitFor([&] { return IsShown("statusLeft"); }, 100));
  EXPECT_NE(Text("statusLeft").find("left over since"), std::string::npos);
  // What uses neither link nor files leaves all that as it is.
  Pick("cboCollectStep", 1);
  EXPECT_TRUE(Says("-3093, was not reached\nNot done"));
  Click("cmdButton_7");
  ExpectAllWell();
}

TEST_F(SilentTroubles, ALostLinkIsToldUntilALineGoesOutAgain) {
  ASSERT_TRUE(Session().Perform("instrument fault link \"MOVE S\" 8"));
  Click("cmdButton_7");
  EXPECT_TRUE(
      Says("^⚠ Link lost since \\d\\d:\\d\\d:\\d\\d\nThe number on the form, -3093, may not have been reached\n"));
  Click("cmdButton_7");
  EXPECT_TRUE(Says("Link lost since .*\nThe number on the form, -3089, was not reached"));
  for (int press = 0; press < 8; ++press) Click("cmdButton_7");
  ExpectAllWell();
}

TEST_F(SilentTroubles, AStopAndAPowerCycleAreTold) {
  ASSERT_TRUE(Session().Perform("during \"MOVE SD_Y\" click 16"));
  Start();
  EXPECT_TRUE(Says("The number on the form, -3097, was not reached\nLines not sent, since a stop was requested: 3"));
  Start();
  ExpectAllWell();
  Trigger("powerCycle");
  EXPECT_TRUE(Says("-3097, was reached, but the axes have lost their positions since"));
  EXPECT_TRUE(IsNumberMarked());
}

TEST_F(SilentTroubles, FailingReadsAndWritesAreCountedInTheConsole) {
  ASSERT_TRUE(Session().Perform("file reads fail"));
  ASSERT_TRUE(Session().Perform("file writes fail"));
  Expect(SaveBox, Press(QMessageBox::Ok));
  Trigger("saveChanges");
  EXPECT_TRUE(Says("Not written: 1 key of Marivane.ini: .*\nNot read: \\d+ keys of the configuration: "));
  int failed = 0;
  for (int row = 0; row < Window().Console().rowCount(); ++row) {
    const ConsoleEntry& entry = Window().Console().Entry(row);
    if (entry.result == QStringLiteral("failed")) ++failed;
  }
  // One row for all the reads.
  EXPECT_EQ(failed, 2);
}

}  // namespace
}  // namespace Helmsway
