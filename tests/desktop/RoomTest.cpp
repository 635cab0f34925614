#include <QPlainTextEdit>
#include <QScreen>
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
      }
      Press(answer)(box);
    });
    Click("cmdButton_6");
    QTest::qWait(10);
    EXPECT_EQ(below.height(), height);
  }
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
