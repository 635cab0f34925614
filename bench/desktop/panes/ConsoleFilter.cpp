#include "bench/desktop/panes/ConsoleFilter.h"

namespace Helmsway {

ConsoleFilter::ConsoleFilter(ConsoleModel& entries, QObject* parent)
    : QSortFilterProxyModel(parent), entries_(entries) {
  setSourceModel(&entries);
}

void ConsoleFilter::ShowContaining(const QString& text) {
  if (text == text_) return;
  text_ = text;
  invalidateFilter();
}

void ConsoleFilter::ShowKinds(Kinds kinds) {
  if (kinds == kinds_) return;
  kinds_ = kinds;
  invalidateFilter();
}

bool ConsoleFilter::filterAcceptsRow(int row, const QModelIndex&) const {
  if (kinds_ == Kinds::LinesOnly && entries_.Entry(row).kind != ConsoleEntry::Kind::Line) return false;
  if (text_.isEmpty()) return true;
  for (int column = 0; column < ConsoleModel::ColumnCount; ++column) {
    if (entries_.Shown(row, column).contains(text_, Qt::CaseInsensitive)) return true;
  }
  return false;
}

}  // namespace Helmsway
