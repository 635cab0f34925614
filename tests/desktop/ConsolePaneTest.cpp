#include <gtest/gtest.h>

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include "bench/desktop/panes/ConsolePane.h"

namespace Helmsway {
namespace {

using Kind = ConsoleEntry::Kind;

class ConsolePaneTest : public testing::Test {
 protected:
  ConsolePaneTest() {
    pane_.resize(800, 300);
    pane_.show();
  }

  /// A click; a line that was refused, its reason in two lines; one that is under way; a status text.
  void AddSession() {
    entries_.Add({Kind::Action, Seconds(0), QStringLiteral("click Up"), std::nullopt, {}, {}});
    entries_.Add({Kind::Line, Seconds(1.25), QStringLiteral("MOVE S 40"), Seconds(0), QStringLiteral("refused"),
                  QStringLiteral("not\r\nhomed")});
    underWay_ = entries_.Add(
        {Kind::Line, Seconds(2), QStringLiteral("HOME ALL"), std::nullopt, QStringLiteral("under way"), {}});
    entries_.Add({Kind::Status, Seconds(2), QStringLiteral("Homing..."), std::nullopt, {}, {}});
  }

  template <class Widget>
  Widget* Find(const char* name) {
    return pane_.findChild<Widget*>(QString::fromLatin1(name));
  }

  /// What the Copy button puts on the clipboard.
  std::string Copied() {
    QGuiApplication::clipboard()->clear();
    QTest::mouseClick(Find<QPushButton>("consoleCopy"), Qt::LeftButton);
    return QGuiApplication::clipboard()->text().toStdString();
  }

  /// The texts that the filter lets through.
  std::string Listed() {
    std::string listed;
    const QAbstractItemModel& shown = *Find<QTableView>("consoleTable")->model();
    for (int row = 0; row < shown.rowCount(); ++row) {
      listed += shown.index(row, ConsoleModel::Text).data().toString().toStdString() + ";";
    }
    return listed;
  }

  ConsoleModel entries_;
  ConsolePane pane_{entries_};
  int underWay_ = -1;
};

TEST_F(ConsolePaneTest, CopiesAllThatIsShownOrTheSelectedRows) {
  AddSession();
  EXPECT_EQ(Copied(),
            "0.000\t\tAction\tclick Up\t\t\n"
            "1.250\t0.000\tLine\tMOVE S 40\t✗ refused\tnot⏎homed\n"
            "2.000\t\tLine\tHOME ALL\t… under way\t\n"
            "2.000\t\tStatus\tHoming...\t\t\n");
  auto* table = Find<QTableView>("consoleTable");
  // The order of selecting doesn't count.
  for (const int row : {3, 0}) {
    table->selectionModel()->select(table->model()->index(row, 0),
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
  }
  const std::string twoRows = "0.000\t\tAction\tclick Up\t\t\n2.000\t\tStatus\tHoming...\t\t\n";
  EXPECT_EQ(Copied(), twoRows);
  QGuiApplication::clipboard()->clear();
  pane_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&pane_));
  table->setFocus();
  QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), twoRows);
}

TEST_F(ConsolePaneTest, FiltersByAnyColumnWhileItIsTyped) {
  AddSession();
  struct Row {
    const char* filter;
    bool linesOnly;
    const char* listed;
  };
  for (const Row& row : {Row{"home", false, "MOVE S 40;HOME ALL;"}, Row{"1.25", false, "MOVE S 40;"},
                         Row{"UNDER WAY", false, "HOME ALL;"}, Row{"status", false, "Homing...;"},
                         Row{"", true, "MOVE S 40;HOME ALL;"}, Row{"hom", true, "MOVE S 40;HOME ALL;"},
                         Row{"status", true, ""}, Row{"", false, "click Up;MOVE S 40;HOME ALL;Homing...;"}}) {
    SCOPED_TRACE(std::string(row.filter) + (row.linesOnly ? ", lines only" : ""));
    Find<QCheckBox>("consoleLinesOnly")->setChecked(row.linesOnly);
    Find<QLineEdit>("consoleFilter")->clear();
    QTest::keyClicks(Find<QLineEdit>("consoleFilter"), QString::fromLatin1(row.filter));
    EXPECT_EQ(Listed(), row.listed);
  }
}

TEST_F(ConsolePaneTest, ALineThatHasEndedIsFilteredAnew) {
  AddSession();
  Find<QLineEdit>("consoleFilter")->setText(QStringLiteral("✓"));
  EXPECT_EQ(Listed(), "");
  entries_.Update(underWay_, {Kind::Line, Seconds(2), QStringLiteral("HOME ALL"), Seconds(12), QStringLiteral("ok"),
                              QStringLiteral("HOMED")});
  EXPECT_EQ(Copied(), "2.000\t12.000\tLine\tHOME ALL\t✓ ok\tHOMED\n");
  entries_.Clear();
  entries_.Update(underWay_, {});
  EXPECT_EQ(Listed(), "");
}

TEST_F(ConsolePaneTest, FollowsTheEndUnlessTheUserScrolledUp) {
  const auto addMany = [this] {
    for (int i = 0; i < 200; ++i) entries_.Add({Kind::Note, Seconds(i), QString::number(i), std::nullopt, {}, {}});
    QCoreApplication::processEvents();
  };
  QScrollBar* bar = Find<QTableView>("consoleTable")->verticalScrollBar();
  addMany();
  ASSERT_GT(bar->maximum(), 0);
  EXPECT_EQ(bar->value(), bar->maximum());
  bar->setValue(7);
  addMany();
  EXPECT_EQ(bar->value(), 7);
  bar->setValue(bar->maximum());
  addMany();
  EXPECT_EQ(bar->value(), bar->maximum());
}

TEST_F(ConsolePaneTest, AsksForTheFiles) {
  QSignalSpy trace(&pane_, &ConsolePane::SaveTraceAsked);
  QSignalSpy script(&pane_, &ConsolePane::SaveScriptAsked);
  QTest::mouseClick(Find<QPushButton>("consoleSaveTrace"), Qt::LeftButton);
  EXPECT_EQ(trace.count(), 1);
  EXPECT_EQ(script.count(), 0);
  QTest::mouseClick(Find<QPushButton>("consoleSaveScript"), Qt::LeftButton);
  EXPECT_EQ(trace.count(), 1);
  EXPECT_EQ(script.count(), 1);
}

}  // namespace
}  // namespace Helmsway
