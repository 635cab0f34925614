#include <QApplication>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include "bench/desktop/Appearance.h"
#include "tests/desktop/WindowFixture.h"

namespace Helmsway {
namespace {

using Room = WindowFixture;

TEST_F(Room, WhoIsAskedToLookAtTheToolSeesItWhereItIs) {
  GoToMainPage();
  Start();
  const QWidget& tool = Widget("loupeView");
  const QWidget& axes = Widget("sideView");
  QString toolThen;
  QString axesThen;
  Expect(Verify, [&](QDialog& box) {
    toolThen = tool.accessibleDescription();
    axesThen = axes.accessibleDescription();
    const QRect picture(tool.mapToGlobal(QPoint()), tool.size());
    EXPECT_FALSE(box.frameGeometry().intersects(picture));
    Press(QMessageBox::No)(box);
  });
  Expect(Hint, Press(QMessageBox::Ok));
  Click("cmdButton_6");
  EXPECT_FALSE(toolThen.isEmpty());
  EXPECT_EQ(toolThen, tool.accessibleDescription());
  EXPECT_EQ(axesThen, axes.accessibleDescription());
}

TEST_F(Room, ThePreviewOfASaveCanBeReadAndGivesItsRoomBack) {
  GoToMainPage();
  Start();
  const QWidget& below = Widget("lowerDock");
  QTest::qWait(10);
  const int height = below.height();
  for (const QMessageBox::StandardButton answer : {QMessageBox::Cancel, QMessageBox::Ok}) {
    SCOPED_TRACE(answer == QMessageBox::Ok ? "Ok" : "Cancel");
    Expect(Verify, Press(QMessageBox::Yes));
    Expect(SaveBox, [&](QDialog& box) {
      QTest::qWait(10);
      for (const char* name : {"valuesUpperLines", "valuesLowerLines"}) {
        const auto& view = static_cast<const QPlainTextEdit&>(Widget(name));
        EXPECT_GE(view.viewport()->height(), 3 * view.fontMetrics().lineSpacing()) << name;
        // The box keeps the window out of reach, but the last line can be brought into view.
        const QScrollBar& bar = *view.verticalScrollBar();
        EXPECT_EQ(bar.value(), 0);
        for (int page = 0; page < 40; ++page) QTest::keyClick(box.windowHandle(), Qt::Key_PageDown);
        EXPECT_GT(bar.value(), 0) << name;
        EXPECT_EQ(bar.value(), bar.maximum()) << name;
        for (int page = 0; page < 40; ++page) QTest::keyClick(box.windowHandle(), Qt::Key_PageUp);
      }
      Press(answer)(box);
    });
    Click("cmdButton_6");
    QTest::qWait(10);
    EXPECT_EQ(below.height(), height);
  }
}

TEST_F(Room, ThePageThatComesIsSeenWhereItsFocusIs) {
  Click("cmdButton_10");
  Click("chkToolInstalled");
  auto& frame = static_cast<QScrollArea&>(Widget("frame"));
  Window().resize(Window().width(), Window().minimumHeight());
  Widget("lowerDock").setMinimumHeight(Window().height() / 2);
  Window().resize(Window().size());
  QTest::qWait(10);
  ASSERT_GT(frame.verticalScrollBar()->maximum(), 0);
  // At the bottom of one page, where the next has nothing that could have the focus.
  frame.verticalScrollBar()->setValue(frame.verticalScrollBar()->maximum());
  Type(Qt::Key_Tab, 2);
  Type(Qt::Key_Return);
  const QWidget* const focus = QApplication::focusWidget();
  ASSERT_EQ(focus, &Widget("fraMove"));
  EXPECT_FALSE(focus->visibleRegion().isEmpty());
}

TEST_F(Room, LargeTextLeavesTheWindowOnTheScreen) {
  Appearance::SetTextSize(200);
  ASSERT_TRUE(Window().BeginSession());
  QTest::qWait(10);
  EXPECT_LE(Window().minimumSizeHint().height(), Window().screen()->availableSize().height());
  EXPECT_LE(Widget("frame").minimumWidth(), Window().screen()->availableSize().width() * 2 / 3);
  Appearance::SetTextSize(100);
}

}  // namespace
}  // namespace Helmsway
