#pragma once

#include <QSortFilterProxyModel>
#include <QString>

#include "bench/desktop/panes/ConsoleModel.h"

namespace Helmsway {

/// Which entries the console lists.
class ConsoleFilter : public QSortFilterProxyModel {
  Q_OBJECT

 public:
  enum class Kinds { All, LinesOnly };

  explicit ConsoleFilter(ConsoleModel& entries, QObject* parent = nullptr);

  /// Rows of which any column holds the text, in any letter case; empty: all.
  void ShowContaining(const QString& text);
  void ShowKinds(Kinds kinds);

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

 private:
  const ConsoleModel& entries_;
  QString text_;
  Kinds kinds_ = Kinds::All;
};

}  // namespace Helmsway
