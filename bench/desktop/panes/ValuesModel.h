#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <array>
#include <vector>

#include "bench/desktop/panes/Tone.h"
#include "bench/instrument/HeadPositions.h"
#include "bench/instrument/MemoryComparison.h"

namespace Helmsway {

/// The S positions of the concerned heads, one row each, as texts ready to be shown.
class ValuesModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Head, Screen, File, Change, Instrument, Agreed, ColumnCount };

  /// How many values of the instrument, one for each class of heads, stand for the same as the file's.
  struct Count {
    int classes = 0;
    int differing = 0;
    int missing = 0;  ///< the instrument has no value
  };

  using QAbstractTableModel::QAbstractTableModel;

  /// With as many heads as before, rows change in place, so that what is selected and in sight stays so. `doubt` says
  /// why the number on the screen isn't confirmed; empty when it is.
  void Show(const HeadPositions& positions, const std::vector<MemoryDifference>& differences,
            const QString& doubt = {});
  const Count& Classes() const { return classes_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct Row {
    QString item;
    std::array<QString, ColumnCount> texts;
    Tone screenTone = Tone::Plain;
    Tone changeTone = Tone::Plain;
    Tone agreedTone = Tone::Plain;
    QString toolTip;
  };

  static Row RowOf(const HeadPositions& positions, const HeadPosition& head,
                   const std::vector<MemoryDifference>& differences);

  static void MarkDoubt(Row& row, const QString& doubt);
  void Replace(std::vector<Row> rows);

  std::vector<Row> rows_;
  Count classes_;
};

}  // namespace Helmsway
