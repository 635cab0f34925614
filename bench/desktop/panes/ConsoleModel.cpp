#include "bench/desktop/panes/ConsoleModel.h"

#include <array>
#include <utility>

#include "bench/desktop/panes/Tone.h"

namespace Helmsway {
namespace {

QString Word(ConsoleEntry::Kind kind) {
  switch (kind) {
    case ConsoleEntry::Kind::Action:
      return QStringLiteral("Action");
    case ConsoleEntry::Kind::Line:
      return QStringLiteral("Line");
    case ConsoleEntry::Kind::Status:
      return QStringLiteral("Status");
    case ConsoleEntry::Kind::Write:
      return QStringLiteral("Write");
    case ConsoleEntry::Kind::Message:
      return QStringLiteral("Message");
    case ConsoleEntry::Kind::Flag:
      return QStringLiteral("Flag");
    case ConsoleEntry::Kind::Note:
      return QStringLiteral("Note");
  }
  return {};
}

struct ResultMark {
  QLatin1StringView result;
  QChar sign;
  Tone tone;
};

constexpr std::array<ResultMark, 4> resultMarks{{
    {QLatin1StringView("ok"), u'✓', Tone::Good},
    {QLatin1StringView("refused"), u'✗', Tone::Bad},
    {QLatin1StringView("failed"), u'✗', Tone::Bad},
    {QLatin1StringView("under way"), u'…', Tone::Waiting},
}};

const ResultMark* FindMark(const QString& result) {
  for (const ResultMark& mark : resultMarks) {
    if (result == mark.result) return &mark;
  }
  return nullptr;
}

QString Marked(const QString& result) {
  const ResultMark* mark = FindMark(result);
  return mark == nullptr ? result : mark->sign + QLatin1Char(' ') + result;
}

QString OneLine(QString text) {
  return text.replace(QStringLiteral("\r\n"), QStringLiteral("⏎"))
      .replace(u'\n', u'⏎')
      .replace(u'\r', u'⏎')
      .replace(u'\t', u' ');
}

QString Milliseconds(Seconds time) { return QString::number(time.count(), 'f', 3); }

}  // namespace

int ConsoleModel::Add(ConsoleEntry entry) {
  const int row = rowCount();
  beginInsertRows({}, row, row);
  entries_.push_back(std::move(entry));
  endInsertRows();
  return row;
}

void ConsoleModel::Update(int row, ConsoleEntry entry) {
  if (row < 0 || row >= rowCount()) return;
  entries_[static_cast<std::size_t>(row)] = std::move(entry);
  Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

void ConsoleModel::Clear() {
  beginResetModel();
  entries_.clear();
  endResetModel();
}

QString ConsoleModel::Shown(int row, int column) const {
  const ConsoleEntry& entry = Entry(row);
  switch (column) {
    case Time:
      return Milliseconds(entry.time);
    case Duration:
      return entry.duration ? Milliseconds(*entry.duration) : QString();
    case What:
      return Word(entry.kind);
    case Text:
      return OneLine(entry.text);
    case Result:
      return Marked(entry.result);
    case Reply:
      return OneLine(entry.reply);
    default:
      return {};
  }
}

int ConsoleModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

int ConsoleModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant ConsoleModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const int column = index.column();
  switch (role) {
    case Qt::DisplayRole:
      return Shown(index.row(), column);
    case Qt::ToolTipRole:
      // What is cut off in its column can be read here, with its line ends.
      if (column == Text) return Entry(index.row()).text;
      if (column == Reply) return Entry(index.row()).reply;
      return {};
    case Qt::TextAlignmentRole:
      return {(column == Time || column == Duration ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter};
    default:
      break;
  }
  const ResultMark* mark = column == Result ? FindMark(Entry(index.row()).result) : nullptr;
  return mark == nullptr ? QVariant() : ToneData(mark->tone, role);
}

QVariant ConsoleModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case Time:
      return QStringLiteral("Time (s)");
    case Duration:
      return QStringLiteral("Duration (s)");
    case What:
      return QStringLiteral("What");
    case Text:
      return QStringLiteral("Text");
    case Result:
      return QStringLiteral("Result");
    case Reply:
      return QStringLiteral("Reply or reason");
    default:
      return {};
  }
}

}  // namespace Helmsway
