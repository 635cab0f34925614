#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <deque>
#include <optional>

#include "bench/instrument/Instrument.h"

namespace Helmsway {

/// One thing that happened in a session.
struct ConsoleEntry {
  enum class Kind {
    Action,   ///< what the operator did
    Line,     ///< a command line to the instrument
    Status,   ///< a status text
    Write,    ///< a change of a configuration file
    Message,  ///< a message box, or its answer
    Flag,
    Note
  };

  Kind kind = Kind::Note;
  Seconds time{0};  ///< the instrument's clock
  QString text;     ///< the line, the action, the status text ...
  std::optional<Seconds> duration;
  QString result;  ///< "ok", "refused", "failed", "under way"; empty: there is none
  QString reply;   ///< the reply, or the reason of a refusal
};

/// The session's entries, oldest first, one row each.
class ConsoleModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Time, Duration, What, Text, Result, Reply, ColumnCount };

  using QAbstractTableModel::QAbstractTableModel;

  /// Gives the entry's row, which stays its own until `Clear`.
  int Add(ConsoleEntry entry);
  /// Replaces an entry: a line that was under way has ended. A row that isn't there any more is left alone.
  void Update(int row, ConsoleEntry entry);
  void Clear();

  const ConsoleEntry& Entry(int row) const { return entries_[static_cast<std::size_t>(row)]; }
  /// What the column shows of an entry, in one line: a line end shows as "⏎", a tab as a blank.
  QString Shown(int row, int column) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  std::deque<ConsoleEntry> entries_;
};

}  // namespace Helmsway
