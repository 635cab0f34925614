#include "bench/desktop/panes/ConsolePane.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <vector>

namespace Helmsway {
namespace {

QPushButton* AddButton(QHBoxLayout& row, const QString& text, const QString& name, const QString& accessibleName) {
  auto* button = new QPushButton(text);
  button->setObjectName(name);
  button->setAccessibleName(accessibleName);
  row.addWidget(button);
  return button;
}

}  // namespace

ConsolePane::ConsolePane(ConsoleModel& entries, QWidget* parent) : QWidget(parent), filter_(entries) {
  setObjectName(QStringLiteral("consolePane"));
  setAccessibleName(QStringLiteral("Console"));
  BuildTable();
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(BuildFilterRow());
  layout->addWidget(table_, 1);
  layout->addLayout(BuildButtonRow());
  ApplyFont();
}

void ConsolePane::BuildTable() {
  table_ = new QTableView;
  // Of a long line, the command and the value at its end are what matters.
  table_->setTextElideMode(Qt::ElideMiddle);
  table_->setObjectName(QStringLiteral("consoleTable"));
  table_->setAccessibleName(QStringLiteral("Console entries"));
  table_->setModel(&filter_);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setWordWrap(false);
  table_->setShowGrid(false);
  table_->setAlternatingRowColors(true);
  table_->setTabKeyNavigation(false);
  table_->verticalHeader()->hide();
  // One height for all rows: none is ever measured, however many there are.
  table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  table_->viewport()->installEventFilter(this);
  table_->horizontalHeader()->setHighlightSections(false);
  table_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);

  auto* copy = new QAction(QStringLiteral("Copy"), table_);
  copy->setShortcut(QKeySequence::Copy);
  copy->setShortcutContext(Qt::WidgetShortcut);
  connect(copy, &QAction::triggered, this, &ConsolePane::Copy);
  table_->addAction(copy);
  table_->setContextMenuPolicy(Qt::ActionsContextMenu);
  FollowTheEnd();
}

void ConsolePane::FollowTheEnd() {
  QScrollBar* bar = table_->verticalScrollBar();
  connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) { atEnd_ = value >= bar->maximum(); });
  connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int maximum) {
    if (atEnd_) bar->setValue(maximum);
  });
}

QLayout* ConsolePane::BuildFilterRow() {
  auto* layout = new QHBoxLayout;
  filterText_ = new QLineEdit;
  filterText_->setObjectName(QStringLiteral("consoleFilter"));
  filterText_->setAccessibleName(QStringLiteral("Filter"));
  filterText_->setPlaceholderText(QStringLiteral("Any column"));
  filterText_->setClearButtonEnabled(true);
  auto* label = new QLabel(QStringLiteral("&Filter:"));
  label->setObjectName(QStringLiteral("consoleFilterLabel"));
  label->setBuddy(filterText_);
  linesOnly_ = new QCheckBox(QStringLiteral("Command &lines only"));
  linesOnly_->setObjectName(QStringLiteral("consoleLinesOnly"));
  linesOnly_->setAccessibleName(QStringLiteral("Command lines only"));
  layout->addWidget(label);
  layout->addWidget(filterText_, 1);
  layout->addWidget(linesOnly_);
  connect(filterText_, &QLineEdit::textChanged, &filter_, &ConsoleFilter::ShowContaining);
  connect(linesOnly_, &QCheckBox::toggled, &filter_,
          [this](bool only) { filter_.ShowKinds(only ? ConsoleFilter::Kinds::LinesOnly : ConsoleFilter::Kinds::All); });
  return layout;
}

QLayout* ConsolePane::BuildButtonRow() {
  auto* layout = new QHBoxLayout;
  const QPushButton* copy = AddButton(*layout, QStringLiteral("Cop&y"), QStringLiteral("consoleCopy"),
                                      QStringLiteral("Copy the selected entries, or all that are shown"));
  layout->addStretch(1);
  saveTrace_ = AddButton(*layout, QStringLiteral("Save as &trace…"), QStringLiteral("consoleSaveTrace"),
                         QStringLiteral("Save as trace"));
  saveScript_ = AddButton(*layout, QStringLiteral("Save session as &replay script…"),
                          QStringLiteral("consoleSaveScript"), QStringLiteral("Save session as replay script"));
  connect(copy, &QPushButton::clicked, this, &ConsolePane::Copy);
  connect(saveTrace_, &QPushButton::clicked, this, &ConsolePane::SaveTraceAsked);
  connect(saveScript_, &QPushButton::clicked, this, &ConsolePane::SaveScriptAsked);
  return layout;
}

void ConsolePane::SetSaving(Saving saving) {
  for (QPushButton* const button : {saveTrace_, saveScript_}) button->setEnabled(saving == Saving::Possible);
}

void ConsolePane::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) ApplyFont();
}

bool ConsolePane::eventFilter(QObject* watched, QEvent* event) {
  if (watched == table_->viewport() && event->type() == QEvent::Resize) FitReplies();
  return QWidget::eventFilter(watched, event);
}

void ConsolePane::FitReplies() {
  constexpr int usualLength = 50;
  const QHeaderView& header = *table_->horizontalHeader();
  const int taken = header.length() - header.sectionSize(ConsoleModel::Reply);
  const int needed = QFontMetrics(font()).averageCharWidth() * usualLength;
  table_->setColumnWidth(ConsoleModel::Reply, std::max(needed, table_->viewport()->width() - taken));
}

void ConsolePane::ApplyFont() {
  struct Width {
    int column;
    const char16_t* widest;
  };
  static constexpr std::array<Width, 5> widths{{{ConsoleModel::Time, u"Time (s) 000"},
                                                {ConsoleModel::Duration, u"Duration (s) 0"},
                                                {ConsoleModel::What, u"Message 0"},
                                                {ConsoleModel::Text, u"MOVE SLIDER_CLOSED 0000000000"},
                                                {ConsoleModel::Result, u"… under way 0"}}};
  const QFontMetrics metrics(font());
  for (const Width& width : widths) {
    table_->setColumnWidth(width.column, metrics.horizontalAdvance(QString::fromUtf16(width.widest)));
  }
  FitReplies();
  table_->verticalHeader()->setMinimumSectionSize(metrics.height());
  table_->verticalHeader()->setDefaultSectionSize(metrics.height() + metrics.leading() + metrics.descent());
}

QString ConsolePane::TextToCopy() const {
  std::vector<int> rows;
  for (const QModelIndex& index : table_->selectionModel()->selectedRows()) rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  if (rows.empty()) {
    for (int row = 0; row < filter_.rowCount(); ++row) rows.push_back(row);
  }
  QString text;
  for (const int row : rows) {
    for (int column = 0; column < ConsoleModel::ColumnCount; ++column) {
      if (column > 0) text += u'\t';
      text += filter_.index(row, column).data().toString();
    }
    text += u'\n';
  }
  return text;
}

void ConsolePane::Copy() const { QGuiApplication::clipboard()->setText(TextToCopy()); }

}  // namespace Helmsway
