#include "bench/desktop/panes/ValuesPane.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QWindow>

#include "bench/desktop/panes/LinesView.h"

namespace Helmsway {
namespace {

Verdict SummaryOf(const ValuesModel::Count& classes) {
  if (classes.classes == 0)
    return {QStringLiteral("– The file has no head that the instrument keeps a value for"), Tone::Plain};
  if (classes.missing == classes.classes) {
    return {QStringLiteral("– The instrument holds no calibration values yet"), Tone::Plain};
  }
  if (classes.differing == 0 && classes.missing > 0) {
    return {
        QStringLiteral("– File and instrument agree for %1 of %2 classes; the instrument has no value for the others")
            .arg(classes.classes - classes.missing)
            .arg(classes.classes),
        Tone::Plain};
  }
  if (classes.differing == 0) {
    return {QStringLiteral("= File and instrument agree for all %1 classes").arg(classes.classes), Tone::Good};
  }
  return {QStringLiteral("≠ File and instrument: %1 of %2 classes differ").arg(classes.differing).arg(classes.classes),
          Tone::Bad};
}

void ShowVerdict(QLabel& label, const Verdict& verdict) {
  label.setText(verdict.text);
  ApplyTone(label, verdict.tone);
}

std::string LineOf(const MemoryDifference& difference) {
  return difference.name + ": file " + difference.file + ", instrument " +
         (difference.memory.empty() ? "no value" : difference.memory);
}

QLabel* MakeLabel(const QString& name) {
  auto* label = new QLabel;
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setMargin(label->fontMetrics().descent());
  return label;
}

}  // namespace

ValuesPane::ValuesPane(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("valuesPane"));
  setAccessibleName(QStringLiteral("Calibration values"));
  summary_ = MakeLabel(QStringLiteral("valuesSummary"));
  summary_->setAccessibleName(QStringLiteral("Agreement of file and instrument"));
  splitter_ = new QSplitter(Qt::Vertical);
  splitter_->setObjectName(QStringLiteral("valuesSplitter"));
  splitter_->setAccessibleName(QStringLiteral("S positions, and what a save does"));
  splitter_->setChildrenCollapsible(false);
  splitter_->addWidget(BuildTable());
  splitter_->addWidget(BuildPreview());
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(summary_);
  layout->addWidget(splitter_, 1);
  ShowSummary();
  ClearPreview();
}

QWidget* ValuesPane::BuildTable() {
  table_ = new QTableView;
  table_->setObjectName(QStringLiteral("valuesTable"));
  table_->setAccessibleName(QStringLiteral("S positions of the heads"));
  table_->setModel(&values_);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setWordWrap(false);
  table_->setTabKeyNavigation(false);
  table_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  table_->horizontalHeader()->setHighlightSections(false);
  connect(&values_, &ValuesModel::modelReset, this, &ValuesPane::FitColumns);
  connect(&values_, &ValuesModel::dataChanged, this, &ValuesPane::WidenColumns);
  return table_;
}

QWidget* ValuesPane::BuildPreview() {
  preview_ = new QWidget;
  preview_->setObjectName(QStringLiteral("valuesPreview"));
  preview_->setAccessibleName(QStringLiteral("What a save does"));
  upperTitle_ = MakeLabel(QStringLiteral("valuesUpperTitle"));
  lowerTitle_ = MakeLabel(QStringLiteral("valuesLowerTitle"));
  lowerTitle_->setText(QStringLiteral("What the instrument will be sent"));
  upperLines_ = new LinesView(preview_);
  upperLines_->setObjectName(QStringLiteral("valuesUpperLines"));
  lowerLines_ = new LinesView(preview_);
  lowerLines_->setObjectName(QStringLiteral("valuesLowerLines"));
  lowerLines_->setAccessibleName(lowerTitle_->text());
  auto* layout = new QVBoxLayout(preview_);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(upperTitle_);
  layout->addWidget(upperLines_, 3);
  layout->addWidget(lowerTitle_);
  layout->addWidget(lowerLines_, 2);
  return preview_;
}

void ValuesPane::Show(const HeadPositions& positions, const std::vector<MemoryDifference>& differences,
                      const QString& doubt) {
  values_.Show(positions, differences, doubt);
  ShowSummary();
}

void ValuesPane::ShowSummary() { ShowVerdict(*summary_, SummaryOf(values_.Classes())); }

void ValuesPane::ShowPreview(const std::vector<std::string>& fileLines, const std::vector<std::string>& commands,
                             const QString& problem) {
  const QString title = QStringLiteral("What Save will change in Marivane.ini (Page Up and Page Down scroll)");
  ShowVerdict(*upperTitle_, problem.isEmpty()
                                ? Verdict{title, Tone::Plain}
                                : Verdict{QStringLiteral("✗ Save can't do what it asks for: ") + problem, Tone::Bad});
  upperLines_->setAccessibleName(upperTitle_->text());
  upperLines_->ShowDifference(fileLines, QStringLiteral("Nothing: all lines stay as they are."));
  lowerLines_->ShowLines(commands, QStringLiteral("Nothing: no line will be sent."));
  lowerTitle_->show();
  lowerLines_->show();
  preview_->show();
  SetUpper(Upper::WithLines);
  qApp->installEventFilter(this);
}

void ValuesPane::SetUpper(Upper upper) {
  const bool withLines = upper == Upper::WithLines;
  upperLines_->setVisible(withLines);
  // Lines are what is to be read now, and get all that can be had; a title alone leaves the rest to the table.
  splitter_->setStretchFactor(0, withLines ? 0 : 1);
  splitter_->setStretchFactor(1, withLines ? 1 : 0);
  TellRoom();
  splitter_->setSizes(withLines ? QList<int>{0, 1} : QList<int>{1, 0});
}

// At once, so that whoever holds the pane can give or take room.
void ValuesPane::TellRoom() {
  preview_->layout()->activate();
  splitter_->refresh();
  splitter_->updateGeometry();
}

void ValuesPane::ShowReadBack(const std::vector<MemoryDifference>& differences, const Verdict& verdict) {
  qApp->removeEventFilter(this);
  ShowVerdict(*upperTitle_, verdict);
  std::vector<std::string> lines;
  lines.reserve(differences.size());
  for (const MemoryDifference& difference : differences) lines.push_back(LineOf(difference));
  upperLines_->setAccessibleName(QStringLiteral("Differences found in the instrument's memory"));
  upperLines_->ShowLines(lines, QStringLiteral("No differences."), Tone::Bad);
  lowerTitle_->hide();
  lowerLines_->hide();
  preview_->show();
  SetUpper(lines.empty() ? Upper::TitleAlone : Upper::WithLines);
}

void ValuesPane::Withdraw(const QString& words) {
  ShowVerdict(*upperTitle_, {QStringLiteral("– ") + words, Tone::Plain});
  SetUpper(Upper::TitleAlone);
}

void ValuesPane::ClearPreview() {
  qApp->removeEventFilter(this);
  preview_->hide();
  TellRoom();
}

void ValuesPane::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::FontChange) return;
  upperLines_->UseSizeOf(font());
  lowerLines_->UseSizeOf(font());
  FitColumns();
}

bool ValuesPane::eventFilter(QObject* watched, QEvent* event) {
  const QWidget* const box = QApplication::activeModalWidget();
  if (box == nullptr || watched != box->windowHandle()) return false;
  if (event->type() == QEvent::Wheel) {
    const int turn = static_cast<const QWheelEvent*>(event)->angleDelta().y();
    if (turn != 0) ScrollPreview(turn > 0 ? QScrollBar::SliderSingleStepSub : QScrollBar::SliderSingleStepAdd);
    return turn != 0;
  }
  if (event->type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent*>(event)->key();
  if (key != Qt::Key_PageUp && key != Qt::Key_PageDown) return false;
  ScrollPreview(key == Qt::Key_PageUp ? QScrollBar::SliderPageStepSub : QScrollBar::SliderPageStepAdd);
  return true;
}

void ValuesPane::ScrollPreview(QAbstractSlider::SliderAction action) {
  for (const LinesView* const view : {upperLines_, lowerLines_}) view->verticalScrollBar()->triggerAction(action);
}

// There are a few dozen heads at most, so that every cell can be measured.
void ValuesPane::FitColumns() {
  table_->resizeColumnsToContents();
  table_->resizeRowsToContents();
}

void ValuesPane::WidenColumns() {
  for (int column = 0; column < ValuesModel::ColumnCount; ++column) {
    const int width = table_->columnWidth(column);
    table_->resizeColumnToContents(column);
    if (table_->columnWidth(column) < width) table_->setColumnWidth(column, width);
  }
}

}  // namespace Helmsway
