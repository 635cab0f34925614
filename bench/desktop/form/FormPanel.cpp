#include "bench/desktop/form/FormPanel.h"

#include <QPainter>

#include "bench/desktop/form/FormColors.h"

namespace Helmsway {

void FormPanel::SetCaption(const QString& caption) {
  caption_ = caption;
  update();
}

QRect FormPanel::CaptionRect() const {
  if (caption_.isEmpty()) return {};
  const QFontMetrics metrics = fontMetrics();
  const int indent = metrics.averageCharWidth();
  return {indent, 0, metrics.horizontalAdvance(caption_) + 2 * indent, metrics.height()};
}

void FormPanel::paintEvent(QPaintEvent*) {
  if (caption_.isEmpty()) return;
  const QRect caption = CaptionRect();
  const QColor text = palette().color(QPalette::WindowText);
  QPainter painter(this);
  painter.setPen(text);
  painter.drawText(caption, Qt::AlignCenter | Qt::TextSingleLine, caption_);
  painter.setClipRegion(QRegion(rect()) - caption);
  painter.setPen(Mixed(text, palette().color(QPalette::Window)));
  painter.drawRect(rect().adjusted(0, caption.height() / 2, -1, -1));
}

}  // namespace Helmsway
