#include "bench/desktop/form/FocusMark.h"

#include <QPainter>
#include <algorithm>

namespace Helmsway {

FocusMark::FocusMark(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("focusMark"));
  setAccessibleName(QStringLiteral("Focus"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  hide();
}

void FocusMark::Follow(const QWidget* widget) {
  followed_ = widget;
  setVisible(widget != nullptr);
  if (widget == nullptr) return;
  const QRect around(widget->mapTo(parentWidget(), QPoint(0, 0)), widget->size());
  const int out = Thickness() + 1;
  setGeometry(around.adjusted(-out, -out, out, out).intersected(parentWidget()->rect()));
  raise();
}

void FocusMark::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const int thickness = Thickness();
  const QRegion frame = QRegion(rect()) - rect().adjusted(thickness, thickness, -thickness, -thickness);
  for (const QRect& part : frame) painter.fillRect(part, palette().color(QPalette::WindowText));
}

int FocusMark::Thickness() const { return std::max(2, fontMetrics().height() / 8); }

}  // namespace Helmsway
