#include "bench/desktop/panes/ValuesModel.h"

#include <string_view>
#include <utility>

namespace Helmsway {
namespace {

constexpr QChar dash = u'–';

QString Signed(const QString& number, bool negative) { return negative ? number : u'+' + number; }

/// "500 → 600 (+100 steps, +5.000 mm)"; "no change"; a dash when there is no new value.
QString ChangeText(const HeadPosition& head, double mmPerStep) {
  if (!head.screen) return dash;
  // The difference of two 32-bit values can need more.
  const std::int64_t steps = std::int64_t{*head.screen} - head.file;
  if (steps == 0) return QStringLiteral("no change");
  QString text = QStringLiteral("%1 → %2 (%3 steps")
                     .arg(head.file)
                     .arg(*head.screen)
                     .arg(Signed(QString::number(steps), steps < 0));
  if (mmPerStep != 0) {
    const double length = static_cast<double>(steps) * mmPerStep;
    text += QStringLiteral(", %1 mm").arg(Signed(QString::number(length, 'f', 3), length < 0));
  }
  return text + u')';
}

struct Mark {
  QString text;
  Tone tone;
};

Mark MarkOf(Agreement agreement) {
  switch (agreement) {
    case Agreement::NotKept:
      return {QStringLiteral("– not kept there"), Tone::Plain};
    case Agreement::NoValue:
      return {QStringLiteral("– no value"), Tone::Plain};
    case Agreement::Same:
      return {QStringLiteral("= same"), Tone::Good};
    case Agreement::Differs:
      return {QStringLiteral("≠ differs"), Tone::Bad};
  }
  return {};
}

/// The difference in the length of the stroke that ejects a tip, which goes by the same class as the position.
const MemoryDifference* TipEjectDifference(const HeadPosition& head, const std::vector<MemoryDifference>& differences) {
  constexpr std::string_view position = "AspirateOrigin";
  if (!head.memoryName.starts_with(position)) return nullptr;
  const std::string name = "TipEject" + head.memoryName.substr(position.size());
  for (const MemoryDifference& difference : differences) {
    if (difference.name == name) return &difference;
  }
  return nullptr;
}

QString Name(const HeadPosition& head) {
  return head.name.empty() ? QStringLiteral("(no name)") : QString::fromStdString(head.name);
}

}  // namespace

void ValuesModel::Show(const HeadPositions& positions, const std::vector<MemoryDifference>& differences,
                       const QString& doubt) {
  std::vector<Row> rows;
  Count classes;
  for (const HeadPosition& head : positions.heads) {
    rows.push_back(RowOf(positions, head, differences));
    if (head.memoryName.empty() || &positions.Counting(head) != &head) continue;
    ++classes.classes;
    if (rows.back().agreedTone == Tone::Bad) ++classes.differing;
    if (rows.back().agreedTone == Tone::Plain) ++classes.missing;
  }
  for (Row& row : rows) MarkDoubt(row, doubt);
  classes_ = classes;
  Replace(std::move(rows));
}

void ValuesModel::MarkDoubt(Row& row, const QString& doubt) {
  if (doubt.isEmpty() || row.texts[Screen] == dash) return;
  row.texts[Screen] += QStringLiteral(" ? not confirmed");
  row.screenTone = Tone::Waiting;
  row.toolTip = doubt + u'\n' + row.toolTip;
}

void ValuesModel::Replace(std::vector<Row> rows) {
  if (rows.empty() || rows.size() != rows_.size()) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
    return;
  }
  rows_ = std::move(rows);
  Q_EMIT headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
  Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

ValuesModel::Row ValuesModel::RowOf(const HeadPositions& positions, const HeadPosition& head,
                                    const std::vector<MemoryDifference>& differences) {
  const Agreement agreement = positions.AgreementOf(head);
  Mark mark = MarkOf(agreement);
  QString toolTip = QString::fromStdString(head.memoryName);
  const MemoryDifference* tipEject = TipEjectDifference(head, differences);
  if (tipEject != nullptr) {
    const QString there =
        tipEject->memory.empty() ? QStringLiteral("no value") : QString::fromStdString(tipEject->memory);
    toolTip += QStringLiteral("\n%1: by the file %2, in the instrument %3")
                   .arg(QString::fromStdString(tipEject->name), QString::fromStdString(tipEject->file), there);
    if (agreement == Agreement::Same) mark = {QStringLiteral("≠ tip eject differs"), Tone::Bad};
  }
  const HeadPosition& counting = positions.Counting(head);
  if (&counting != &head) mark.text += QStringLiteral(" (Item%1 counts)").arg(QString::fromStdString(counting.item));

  Row row;
  row.item = QStringLiteral("Item") + QString::fromStdString(head.item);
  row.texts[Head] = Name(head);
  row.texts[Screen] = head.screen ? QString::number(*head.screen) : QString(dash);
  row.texts[File] = QString::number(head.file);
  row.texts[Change] = ChangeText(head, positions.mmPerStep);
  row.texts[Instrument] = head.memory.empty() ? QString(dash) : QString::fromStdString(head.memory);
  row.texts[Agreed] = mark.text;
  row.changeTone = head.screen && *head.screen != head.file ? Tone::Waiting : Tone::Plain;
  row.agreedTone = mark.tone;
  row.toolTip = toolTip;
  return row;
}

int ValuesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ValuesModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant ValuesModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const Row& row = rows_[static_cast<std::size_t>(index.row())];
  const int column = index.column();
  switch (role) {
    case Qt::DisplayRole:
      return row.texts[static_cast<std::size_t>(column)];
    case Qt::ToolTipRole:
      return row.toolTip;
    case Qt::TextAlignmentRole: {
      const bool isNumber = column == Screen || column == File || column == Instrument;
      return {(isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter};
    }
    default:
      break;
  }
  if (column == Screen) return ToneData(row.screenTone, role);
  if (column == Change) return ToneData(row.changeTone, role);
  if (column == Agreed) return ToneData(row.agreedTone, role);
  return {};
}

QVariant ValuesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return rows_[static_cast<std::size_t>(section)].item;
  switch (section) {
    case Head:
      return QStringLiteral("Head");
    case Screen:
      return QStringLiteral("On screen");
    case File:
      return QStringLiteral("In Marivane.ini");
    case Change:
      return QStringLiteral("Change (old → new)");
    case Instrument:
      return QStringLiteral("In the instrument");
    case Agreed:
      return QStringLiteral("Agreement");
    default:
      return {};
  }
}

}  // namespace Helmsway
