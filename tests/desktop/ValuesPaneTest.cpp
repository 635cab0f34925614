#include <gtest/gtest.h>

#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <functional>

#include "bench/desktop/panes/ValuesPane.h"

namespace Helmsway {
namespace {

class ValuesPaneTest : public testing::Test {
 protected:
  ValuesPaneTest() {
    pane_.resize(900, 600);
    pane_.show();
  }

  std::string RowText(int row) {
    const QAbstractItemModel& model = *pane_.findChild<QTableView*>(QStringLiteral("valuesTable"))->model();
    QString text = model.headerData(row, Qt::Vertical).toString();
    for (int column = 0; column < model.columnCount(); ++column) {
      text += QStringLiteral(" | ") + model.index(row, column).data().toString();
    }
    return text.toStdString();
  }

  std::string Label(const char* name) {
    return pane_.findChild<QLabel*>(QString::fromLatin1(name))->text().toStdString();
  }
  QPlainTextEdit& Lines(const char* name) { return *pane_.findChild<QPlainTextEdit*>(QString::fromLatin1(name)); }
  std::string LinesText(const char* name) { return Lines(name).toPlainText().toStdString(); }
  bool IsPreviewVisible() { return pane_.findChild<QWidget*>(QStringLiteral("valuesPreview"))->isVisible(); }

  ValuesPane pane_;
};

TEST_F(ValuesPaneTest, EachHeadTellsItsChangeAndItsAgreement) {
  const std::string eight = "AspirateOrigin_8Ch_125_S";
  const std::string twelve = "AspirateOrigin_12Ch_30_S";
  HeadPositions positions;
  positions.mmPerStep = 0.05;
  positions.heads = {{"1", "Twin", 500, 600, eight, "580"},
                     {"2", "Eight", 580, 600, eight, "580"},
                     {"3", "Twelve", -590, -600, twelve, "-580"},
                     {"4", "Short", 600, 600, "AspirateOrigin_1Ch_12_S", ""},
                     {"5", "Long", 7, std::nullopt, "AspirateOrigin_1Ch_300_S", "7"},
                     {"6", "Trial", 8, 2147483647, "", ""}};
  pane_.Show(positions,
             {{twelve, "-590", "-580"}, {"AspirateOrigin_1Ch_12_S", "600", ""}, {"TipEject_1Ch_300_S", "-30", "-25"}});
  EXPECT_EQ(RowText(0), "Item1 | Twin | 600 | 500 | 500 → 600 (+100 steps, +5.000 mm) | 580 | = same (Item2 counts)");
  EXPECT_EQ(RowText(1), "Item2 | Eight | 600 | 580 | 580 → 600 (+20 steps, +1.000 mm) | 580 | = same");
  EXPECT_EQ(RowText(2), "Item3 | Twelve | -600 | -590 | -590 → -600 (-10 steps, -0.500 mm) | -580 | ≠ differs");
  EXPECT_EQ(RowText(3), "Item4 | Short | 600 | 600 | no change | – | – no value");
  EXPECT_EQ(RowText(4), "Item5 | Long | – | 7 | – | 7 | ≠ tip eject differs");
  EXPECT_EQ(Label("valuesSummary"), "≠ File and instrument: 2 of 4 classes differ");

  // Nothing is alarming before anything was calibrated, and a number that S hasn't reached is marked.
  for (HeadPosition& head : positions.heads) head.memory.clear();
  pane_.Show(positions, {}, QStringLiteral("it was not reached"));
  EXPECT_EQ(Label("valuesSummary"), "– The instrument holds no calibration values yet");
  EXPECT_EQ(RowText(3), "Item4 | Short | 600 ? not confirmed | 600 | no change | – | – no value");
  const QAbstractItemModel& model = *pane_.findChild<QTableView*>(QStringLiteral("valuesTable"))->model();
  for (int row = 0; row < model.rowCount(); ++row) {
    EXPECT_FALSE(model.index(row, ValuesModel::Agreed).data(Qt::BackgroundRole).isValid()) << row;
  }
  positions.heads[0].memory = positions.heads[1].memory = "580";
  pane_.Show(positions, {});
  EXPECT_EQ(Label("valuesSummary"),
            "– File and instrument agree for 1 of 4 classes; the instrument has no value for the others");

  // Without an S axis a step has no length.
  positions.mmPerStep = 0;
  positions.heads = {positions.heads[1], positions.heads[5]};
  pane_.Show(positions, {});
  EXPECT_EQ(RowText(0), "Item2 | Eight | 600 | 580 | 580 → 600 (+20 steps) | 580 | = same");
  EXPECT_EQ(RowText(1), "Item6 | Trial | 2147483647 | 8 | 8 → 2147483647 (+2147483639 steps) | – | – not kept there");
  EXPECT_EQ(Label("valuesSummary"), "= File and instrument agree for all 1 classes");

  positions.heads.erase(positions.heads.begin());
  pane_.Show(positions, {});
  EXPECT_EQ(Label("valuesSummary"), "– The file has no head that the instrument keeps a value for");
}

TEST_F(ValuesPaneTest, ThePreviewShowsTheExactLinesFromTheTop) {
  EXPECT_FALSE(IsPreviewVisible());
  std::vector<std::string> fileLines = {"@@ -9,1 +9,1 @@", "-Item1=\"Acht\",-580,1", "+Item1=\"Acht\",600,1"};
  std::vector<std::string> commands = {"SET_CALIBRATION AspirateOrigin_8Ch_125_S 600"};
  pane_.ShowPreview(fileLines, commands);
  EXPECT_TRUE(IsPreviewVisible());
  EXPECT_EQ(Label("valuesUpperTitle"), "What Save will change in Marivane.ini (Page Up and Page Down scroll)");
  EXPECT_EQ(Label("valuesLowerTitle"), "What the instrument will be sent");
  EXPECT_EQ(LinesText("valuesUpperLines"), "@@ -9,1 +9,1 @@\n-Item1=\"Acht\",-580,1\n+Item1=\"Acht\",600,1");
  EXPECT_EQ(LinesText("valuesLowerLines"), commands[0]);

  // Of the changed line it is the changed place that is emphasised.
  QTextCursor cursor(Lines("valuesUpperLines").document()->findBlockByNumber(2));
  const auto isBold = [&cursor](int characters) {
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, characters);
    return cursor.charFormat().fontWeight() == QFont::Bold;
  };
  EXPECT_FALSE(isBold(8));
  EXPECT_TRUE(isBold(7));
  EXPECT_FALSE(isBold(4));

  for (int i = 0; i < 100; ++i) {
    fileLines.push_back("+line");
    commands.push_back("REV");
  }
  pane_.ShowPreview(fileLines, commands);
  QCoreApplication::processEvents();
  for (const char* name : {"valuesUpperLines", "valuesLowerLines"}) {
    EXPECT_GT(Lines(name).verticalScrollBar()->maximum(), 0) << name;
    EXPECT_EQ(Lines(name).verticalScrollBar()->value(), 0) << name;
  }

  pane_.ShowPreview({}, {});
  EXPECT_EQ(LinesText("valuesUpperLines"), "Nothing: all lines stay as they are.");
  EXPECT_EQ(LinesText("valuesLowerLines"), "Nothing: no line will be sent.");
  pane_.ClearPreview();
  EXPECT_FALSE(IsPreviewVisible());
}

TEST_F(ValuesPaneTest, ANewValueLeavesTheSelection) {
  auto* table = pane_.findChild<QTableView*>(QStringLiteral("valuesTable"));
  HeadPositions positions;
  positions.heads = {{"1", "One", 1, 1, "", ""}, {"2", "Two", 2, 2, "", ""}};
  pane_.Show(positions, {});
  table->selectRow(1);
  const int width = table->columnWidth(ValuesModel::Change);
  positions.heads[1].screen = 30000;
  pane_.Show(positions, {});
  EXPECT_TRUE(table->selectionModel()->isRowSelected(1));
  EXPECT_GT(table->columnWidth(ValuesModel::Change), width);
  EXPECT_EQ(RowText(1), "Item2 | Two | 30000 | 2 | 2 → 30000 (+29998 steps) | – | – not kept there");
}

TEST_F(ValuesPaneTest, TheLinesGrowWithTheFont) {
  QFont large = pane_.font();
  large.setPointSizeF(large.pointSizeF() * 2);
  pane_.setFont(large);
  for (const char* name : {"valuesUpperLines", "valuesLowerLines"}) {
    EXPECT_EQ(Lines(name).font().pointSizeF(), large.pointSizeF()) << name;
  }
}

TEST_F(ValuesPaneTest, TheReadBackReplacesThePreview) {
  pane_.ShowPreview({"+x"}, {"REV"}, QStringLiteral("the folder is read-only"));
  EXPECT_EQ(Label("valuesUpperTitle"), "✗ Save can't do what it asks for: the folder is read-only");
  pane_.ShowReadBack({{"TipEject_8Ch_125_S", "-30", ""}, {"AspirateOrigin_8Ch_125_S", "600", "580"}},
                     {QStringLiteral("≠ so"), Tone::Bad});
  EXPECT_EQ(Label("valuesUpperTitle"), "≠ so");
  EXPECT_EQ(LinesText("valuesUpperLines"),
            "TipEject_8Ch_125_S: file -30, instrument no value\nAspirateOrigin_8Ch_125_S: file 600, instrument 580");
  EXPECT_FALSE(Lines("valuesLowerLines").isVisible());
  pane_.Withdraw(QStringLiteral("no longer"));
  EXPECT_EQ(Label("valuesUpperTitle"), "– no longer");
  EXPECT_FALSE(Lines("valuesUpperLines").isVisible());
}

TEST(SaveVerdict, IsGoodOnlyWhenAllWasDoneAndCompared) {
  SaveResult good;
  good.headsPlanned = good.headsWritten = 16;
  good.linesPlanned = good.linesTaken = 29;
  good.memorySaved = true;
  good.valuesCompared = 14;
  EXPECT_EQ(VerdictOf(good).tone, Tone::Good);
  struct Row {
    const char* words;
    std::function<void(SaveResult&)> change;
  };
  const Row rows[] = {
      {"Not saved: Marivane.ini has no heads",
       [](SaveResult& save) {
         save.headsPlanned = save.headsWritten = save.valuesCompared = 0;
         save.whyNoHeads = "Marivane.ini has no heads";
       }},
      {"Not saved: the folder is read-only. The instrument has taken the new values all the same",
       [](SaveResult& save) {
         save.headsWritten = 0;
         save.whyNotWritten = "the folder is read-only";
       }},
      {"1 of 16 heads were not written", [](SaveResult& save) { save.headsWritten = 15; }},
      {"the mark that S is calibrated is not in", [](SaveResult& save) { save.markNotWritten = true; }},
      {"not in the instrument: line 3 of 29 was refused (no)",
       [](SaveResult& save) {
         save.linesTaken = 2;
         save.memorySaved = false;
         save.brokenBy = "was refused (no)";
         save.differences.push_back({"A", "1", ""});
       }},
      {"a stop was requested, 27 of 29 lines were not sent",
       [](SaveResult& save) {
         save.linesTaken = 2;
         save.linesSkipped = 27;
       }},
      {"not in the instrument: the link was lost",
       [](SaveResult& save) {
         save.linkLost = true;
         save.memorySaved = false;
         save.differences.push_back({"A", "1", ""});
       }},
      {"Not saved: the heads could not be read: no",
       [](SaveResult& save) {
         save.headsWritten = 0;
         save.linesTaken = 1;
         save.whyNotRead = "no";
       }},
      {"not all lines were sent", [](SaveResult& save) { save.memorySaved = false; }},
      {"another program has changed it meanwhile", [](SaveResult& save) { save.fileDiffers = true; }},
      {"2 of 16 heads have not got the position", [](SaveResult& save) { save.headsOff = 2; }},
      {"sends no calibration values",
       [](SaveResult& save) {
         save.linesPlanned = save.linesTaken = 0;
         save.memorySaved = false;
       }},
      {"memory differ from the file: 1",
       [](SaveResult& save) {
         save.differences.push_back({"A", "1", "2"});
       }},
      {"Saved, but the number", [](SaveResult& save) { save.doubt = "the number on the form, 1, was not reached"; }},
      {"keeps no value for these heads", [](SaveResult& save) { save.valuesCompared = 0; }},
      {"in this window's copy only", [](SaveResult& save) { save.inCopy = true; }},
  };
  for (const Row& row : rows) {
    SaveResult save = good;
    row.change(save);
    const Verdict verdict = VerdictOf(save);
    EXPECT_NE(verdict.tone, Tone::Good) << row.words;
    EXPECT_NE(verdict.text.toStdString().find(row.words), std::string::npos) << verdict.text.toStdString();
  }
}

}  // namespace
}  // namespace Helmsway
