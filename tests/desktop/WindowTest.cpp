#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <sstream>

#include "bench/desktop/Appearance.h"
#include "bench/replay/Replay.h"
#include "tests/desktop/WindowFixture.h"

namespace Helmsway {
namespace {

class TheWindow : public WindowFixture {
 protected:
  QComboBox& List(const char* name) { return static_cast<QComboBox&>(Widget(name)); }
  static constexpr const char* ScoreBox = "Score (Simulation)";

  /// What the add-in has, which need not be what the widget shows.
  int PickedIn(const char* name) {
    const forms::ISurface& form = *Session().Surface();
    return form.State(form.Find(name, forms::NoIndex)).listIndex;
  }
};

TEST_F(TheWindow, ListsTakeWhatIsPickedAndNoTextOfTheOperators) {
  GoToMainPage();
  const int interval = QApplication::doubleClickInterval();
  QApplication::setDoubleClickInterval(1);
  for (const char* name : {"cboCollectStep", "cboNestType", "cboHeadType", "cboPosition", "cboTipRack", "cboTipType"}) {
    SCOPED_TRACE(name);
    QComboBox& list = List(name);
    ASSERT_GE(list.count(), 2);
    const int other = list.currentIndex() == 1 ? 0 : 1;
    Click(name);
    QAbstractItemView& entries = *list.view();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(entries.window()));
    QTest::qWait(5);
    const QRect entry = entries.visualRect(entries.model()->index(other, 0));
    QTest::mouseMove(entries.viewport(), entry.center());
    QTest::mouseClick(entries.viewport(), Qt::LeftButton, {}, entry.center());
    EXPECT_FALSE(entries.isVisible());
    EXPECT_EQ(list.currentIndex(), other);
    EXPECT_EQ(PickedIn(name), other);

    Pick(name, 0);
    const int count = list.count();
    QTest::keyClicks(&list, QStringLiteral("?~7x"));
    Type(Qt::Key_Backspace);
    Type(Qt::Key_Delete);
    EXPECT_EQ(list.currentIndex(), 0);
    EXPECT_EQ(PickedIn(name), 0);
    EXPECT_EQ(list.count(), count);
  }
  QApplication::setDoubleClickInterval(interval);
  // The beginning of an entry picks it, once what was typed before is forgotten.
  QTest::qWait(QApplication::keyboardInputInterval() + 50);
  QTest::keyClicks(&Widget("cboHeadType"), QStringLiteral("8"));
  EXPECT_EQ(List("cboHeadType").currentText(), QStringLiteral("8 Channel 12.5"));
  EXPECT_EQ(PickedIn("cboHeadType"), List("cboHeadType").currentIndex());
}

TEST_F(TheWindow, TheAddInEndsAndStartsAgainAndANewSessionBeginsAnew) {
  GoToMainPage();
  Start();
  Click("cmdButton_7");
  EXPECT_TRUE(Window().isWindowModified());
  Expect(Bench, Press(QMessageBox::No));
  Trigger("endAddIn");
  EXPECT_EQ(EnabledButtons(), "0 5 6 7 8 14 16");
  Expect(Bench, Press(QMessageBox::Yes));
  Expect(ScoreBox, Press(QMessageBox::Ok));
  Trigger("endAddIn");
  EXPECT_EQ(Session().Surface(), nullptr);
  EXPECT_EQ(EnabledButtons(), "");
  lines.clear();
  Click("cmdButton_7");
  EXPECT_EQ(lines, Lines());
  Trigger("startAddIn");
  EXPECT_EQ(Panels(), "fraInitial");
  GoToMainPage();
  // The instrument is the same one, and S is where it was.
  EXPECT_TRUE(Session().Picture().edge.has_value());

  lines.clear();
  Expect("New Session (Simulation)", Key(Qt::Key_Return));
  Trigger("newSession");
  EXPECT_EQ(Panels(), "fraInitial");
  EXPECT_EQ(lines, Lines());
  EXPECT_FALSE(Session().Picture().edge.has_value());
  FollowLines();
  GoToMainPage();
  EXPECT_EQ(lines, Lines{"REV"});
}

TEST_F(TheWindow, ASessionReplaysToTheSameTrace) {
  GoToMainPage();
  During("HOME ALL", [&] {
    Click("cmdButton_14");
    Click("cmdButton_16");
  });
  Start();
  Expect(EjectBox, Press(QMessageBox::Cancel));
  Click("cmdButton_14");
  Expect(ScoreBox, Press(QMessageBox::Ok));
  Trigger("endAddIn");
  Trigger("startAddIn");
  GoToMainPage();
  Start();
  Pick("cboCollectStep", 1);
  ASSERT_TRUE(Session().Perform("instrument fault refuse \"MOVE S \""));
  Click("cmdButton_7");
  Expect(Verify, Press(QMessageBox::Yes));
  Expect(SaveBox, Press(QMessageBox::Ok));
  Click("cmdButton_6");

  const TemporaryFolder folder;
  const std::string script = folder.PathOf("my session.replay");
  Session().SaveScript(script);
  Session().SaveTrace(folder.PathOf("trace"));
  ReplayOptions options;
  options.configuration = folder.PathOf("my session.installation");
  options.addIn = Session().Options().addIn;
  options.script = script;
  EndWindow();

  std::istringstream in;
  std::ostringstream out;
  std::ostringstream complaints;
  EXPECT_EQ(Replay(options, in, out, complaints), ExitStatus::Performed);
  EXPECT_EQ(complaints.str(), "");
  const std::string trace = folder.Read("trace");
  EXPECT_EQ(out.str(), trace);
  EXPECT_NE(trace.find("SET_CALIBRATION SAVE"), std::string::npos);
  EXPECT_NE(trace.find("during #2 click 16"), std::string::npos);
}

TEST_F(TheWindow, WorksAtTwiceTheTextOnDark) {
  const int width = Widget("formView").width();
  Appearance::SetTextSize(200);
  Appearance::SetColors(Appearance::Colors::Dark);
  QApplication::processEvents();
  EXPECT_GT(Widget("picFrame").width(), width * 3 / 2);
  const auto expectWhole = [&] {
    SCOPED_TRACE(Panels());
    for (const QWidget* const widget : Widget("formView").findChildren<QWidget*>()) {
      if (!widget->isVisible()) continue;
      const QSize size = widget->size();
      QSize needed;
      if (const auto* const label = qobject_cast<const QLabel*>(widget)) {
        needed = {label->minimumSizeHint().width(), label->heightForWidth(label->width())};
      }
      const bool button = qobject_cast<const QPushButton*>(widget) != nullptr && !widget->property("text").isNull();
      if (button || qobject_cast<const QCheckBox*>(widget) != nullptr) needed = widget->minimumSizeHint();
      EXPECT_TRUE(size.width() >= needed.width() && size.height() >= needed.height())
          << widget->objectName().toStdString();
    }
    EXPECT_GT(qGray(Widget("lblTitle").palette().color(QPalette::WindowText).rgb()), 200);
    EXPECT_LT(qGray(Widget("picFrame").palette().color(QPalette::Window).rgb()), 80);
  };
  for (const QWidget* const widget : Window().findChildren<QWidget*>()) {
    EXPECT_GE(widget->fontMetrics().height(), QFontMetrics(QApplication::font()).height())
        << widget->metaObject()->className() << ' ' << widget->objectName().toStdString();
  }
  GoOverAllPanels(expectWhole);
  expectWhole();
  Start();
  Click("cmdButton_7");
  EXPECT_EQ(lines.back(), "MOVE S -3093");
  Appearance::SetTextSize(100);
  Appearance::SetColors(Appearance::Colors::Desktop);
}

}  // namespace
}  // namespace Helmsway
