#include "bench/desktop/form/FormArea.h"

#include <QApplication>

namespace Helmsway {

FormArea::FormArea(QWidget* parent) : QScrollArea(parent) {
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  connect(qApp, &QApplication::focusChanged, this, [this](const QWidget*, const QWidget* now) { Follow(now); });
}

void FormArea::Follow(const QWidget* focus) {
  if (focus == nullptr || widget() == nullptr || !widget()->isAncestorOf(focus)) return;
  // What can be seen may be what the mouse has just clicked, and will click again: that may not slip away.
  const QRect place(focus->mapTo(viewport(), QPoint()), focus->size());
  if (place.intersects(viewport()->rect())) return;
  const QPoint topLeft = focus->mapTo(widget(), QPoint());
  const QPoint bottomRight = focus->mapTo(widget(), focus->rect().bottomRight());
  ensureVisible(bottomRight.x(), bottomRight.y());
  // Last, so that the beginning is seen of what is larger than the room.
  ensureVisible(topLeft.x(), topLeft.y());
}

}  // namespace Helmsway
