#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QTest>

#include "tests/desktop/WindowFixture.h"

namespace Helmsway {
namespace {

using Kind = ConsoleEntry::Kind;

constexpr const char* AtCalibration = "0 5 6 7 8 14 16";

using Interruption = WindowFixture;

TEST_F(Interruption, AfterStopTheMoveEndsInItsTimeAndNothingFollows) {
  GoToMainPage();
  lines.clear();
  // In real time for a while, of the second that the move takes.
  During("MOVE X", [&] {
    Trigger("clock_1");
    EXPECT_EQ(EnabledButtons(), "14 16");
    Click("cmdButton_16");
    QTest::qWait(200);
    EXPECT_TRUE(Session().LineIsUnderWay());
    EXPECT_TRUE(Widget("busy").isVisible());
    Trigger("clock_100");
  });
  Start();
  EXPECT_EQ(lines, (Lines{"HOME ALL", "STATUS SLIDER", "MOVE X 1180"}));
  EXPECT_EQ(EnabledButtons(), AtCalibration);
  EXPECT_FALSE(Widget("busy").isVisible());
  // The flag is gone with the next click.
  Click("cmdButton_7");
  EXPECT_EQ(lines.back(), "MOVE S -3093");
  // The host's own Stop.
  During("MOVE SD_Y", [&] { Type(Qt::Key_Escape); });
  Start();
  EXPECT_EQ(lines.back(), "MOVE SD_Y -562");
}

TEST_F(Interruption, DuringALineAllButStopIsIgnored) {
  GoToMainPage();
  lines.clear();
  During("HOME ALL", [&] {
    for (const char* button : {"cmdButton_0", "cmdButton_14", "cmdButton_5", "cmdButton_7"}) Click(button);
    Widget("fraMove").setFocus();
    Type(Qt::Key_Up);
  });
  Click("cmdButton_5");
  EXPECT_EQ(lines, Lines{"HOME ALL"});
  EXPECT_EQ(Count(Kind::Action, "click 5 [Home All]"), 1);
  EXPECT_EQ(Count(Kind::Note, "ignored: click 14"), 1);
  EXPECT_EQ(Count(Kind::Note, "ignored: click 5"), 0);
  EXPECT_EQ(Panels(), "fraMove fraTest");
  EXPECT_EQ(EnabledButtons(), "0 5 6 14 16");
}

TEST_F(Interruption, ALineDoesNotWaitForTheDialogThatPlansAFault) {
  GoToMainPage();
  bool lineGoesOn = false;
  Expect("Plan a Fault (Simulation)", [&](QDialog& dialog) {
    EXPECT_TRUE(lineGoesOn);
    auto& line = *dialog.findChild<QComboBox*>(QStringLiteral("faultLine"));
    QTest::keyClicks(&line, QStringLiteral("MOVE"));
    QTest::keyClick(&line, Qt::Key_Return);
  });
  During("HOME ALL", [&] {
    EXPECT_FALSE(Widget("consoleSaveScript").isEnabled());
    Trigger("planFault");
    lineGoesOn = true;
  });
  Click("cmdButton_5");
  EXPECT_TRUE(QTest::qWaitFor([&] { return Count(Kind::Action, "instrument fault refuse MOVE") == 1; }, 5000));
  EXPECT_TRUE(Widget("consoleSaveScript").isEnabled());
}

TEST_F(Interruption, AHeadGoesToTheStageUnderItsOwnStop) {
  Click("cmdButton_10");
  const auto eject = [&] {
    Click("chkToolUninstalled");
    Click("cmdButton_9");
    Click("chkStageEmpty");
    lines.clear();
    Click("cmdButton_4");
    EXPECT_EQ(Panels(), "fraEjectDone");
    Click("cmdButton_11");
    EXPECT_EQ(Panels(), "fraWarning");
    for (const char* box : {"chkStageEmpty", "chkToolInstalled", "chkToolUninstalled"}) {
      EXPECT_FALSE(static_cast<QCheckBox&>(Widget(box)).isChecked()) << box;
    }
    EXPECT_EQ(EnabledButtons(), "5 16");
  };
  During("HOME ALL", [&] {
    EXPECT_EQ(Panels(), "fraDoEject");
    EXPECT_TRUE(Text("lblEjecting").ends_with("STAGE POSITION 6...")) << Text("lblEjecting");
    Click("cmdButton_1");
  });
  eject();
  EXPECT_EQ(lines, Lines{"HOME ALL"});
  EXPECT_EQ(Session().Picture().head, "1 Channel Long 300");
  eject();
  EXPECT_EQ(lines.back(), "MOVE S 0");
  EXPECT_EQ(Session().Picture().head, "");
}

TEST_F(Interruption, WhatAPanelCoversCannotBeReached) {
  const QPoint homeAll = Place("cmdButton_5");
  const QPoint stop = Place("cmdButton_16");
  std::vector<std::string> panels;
  GoOverAllPanels([&] {
    panels.push_back(Panels());
    SCOPED_TRACE(panels.back());
    const int before = Window().Console().rowCount();
    ClickAt(homeAll);
    ClickAt(stop);
    for (int i = 0; i < 20; ++i) {
      Type(Qt::Key_Tab);
      EXPECT_NE(QApplication::focusWidget(), &Widget("cmdButton_5"));
      EXPECT_NE(QApplication::focusWidget(), &Widget("cmdButton_16"));
    }
    EXPECT_EQ(Window().Console().rowCount(), before);
  });
  EXPECT_EQ(panels, (Lines{"fraInitial", "fraWarning", "fraEject", "fraDoEject", "fraEjectDone"}));
  lines.clear();
  ClickAt(homeAll);
  EXPECT_EQ(lines, Lines{"HOME ALL"});
  TabTo("cmdButton_16");
}

class Closing : public WindowFixture {
 protected:
  Closing() {
    GoToMainPage();
    before_ = File();
  }

  void CloseNow() {
    EXPECT_FALSE(Window().close());
    EXPECT_FALSE(Window().close());
    EXPECT_TRUE(Window().isVisible());
    lines.clear();
  }

  void ExpectClosed() {
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Window().isVisible(); }, 1000));
    EXPECT_EQ(lines, Lines());
    EXPECT_EQ(Window().Session(), nullptr);
    EXPECT_EQ(File(), before_);
  }

 private:
  std::string before_;
};

TEST_F(Closing, WaitsForTheMoveAndBeginsNoOther) {
  // Stop would be lost here: the line behind this one goes out without a look at it.
  During("HOME ALL", [&] {
    CloseNow();
    EXPECT_TRUE(Session().LineIsUnderWay());
  });
  Start();
  ExpectClosed();
}

TEST_F(Closing, AnswersTheBoxBehindTheMoveCarefully) {
  Start();
  During("HOME S", [&] { CloseNow(); });
  Click("cmdButton_6");
  ExpectClosed();
}

TEST_F(Closing, AnswersTheOpenBoxCarefully) {
  Expect(Hint, [&](QDialog&) { CloseNow(); });
  Click("cmdButton_0");
  ExpectClosed();
}

TEST_F(Closing, DoesNotWaitForASilentInstrument) {
  Start();
  Trigger("clock_1");
  ASSERT_TRUE(Session().Perform("instrument fault silent \"MOVE S \" 600"));
  During("MOVE S", [&] { CloseNow(); });
  Click("cmdButton_7");
  ExpectClosed();
}

TEST_F(Interruption, ARefusalIsShownWithItsReasonUntilTheNextAction) {
  GoToMainPage();
  Start();
  ASSERT_TRUE(Session().Perform("instrument fault refuse \"MOVE S \""));
  Click("cmdButton_7");
  EXPECT_EQ(EnabledButtons(), AtCalibration);
  EXPECT_EQ(Text("STATUS"), "Moving S Axis");
  ConsoleEntry refused;
  for (int row = 0; row < Window().Console().rowCount(); ++row) {
    if (Window().Console().Entry(row).kind == Kind::Line) refused = Window().Console().Entry(row);
  }
  EXPECT_EQ(refused.text, QStringLiteral("MOVE S -3093"));
  EXPECT_EQ(refused.result, QStringLiteral("refused"));
  EXPECT_FALSE(refused.reply.isEmpty());
  EXPECT_TRUE(Widget("refusal").isVisible());
  EXPECT_EQ(Text("refusal"), "✖ Refused: MOVE S -3093: " + refused.reply.toStdString());
  Click("cmdButton_7");
  EXPECT_FALSE(Widget("refusal").isVisible());
}

TEST_F(Interruption, StopEndsTheWaitForASilentInstrument) {
  GoToMainPage();
  Start();
  Trigger("clock_1");
  ASSERT_TRUE(Session().Perform("instrument fault silent \"MOVE S \" 600"));
  QElapsedTimer watch;
  watch.start();
  During("MOVE S", [&] { Click("cmdButton_16"); });
  Click("cmdButton_7");
  EXPECT_LT(watch.elapsed(), 1000);
  EXPECT_EQ(EnabledButtons(), AtCalibration);
}

}  // namespace
}  // namespace Helmsway
