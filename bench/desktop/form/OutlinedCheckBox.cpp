#include "bench/desktop/form/OutlinedCheckBox.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

#include "bench/desktop/form/FormColors.h"

namespace Helmsway {

void OutlinedCheckBox::paintEvent(QPaintEvent* event) {
  QCheckBox::paintEvent(event);
  QStyleOptionButton option;
  initStyleOption(&option);
  const QRect box = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
  QPainter painter(this);
  painter.setPen(Mixed(palette().color(QPalette::WindowText), palette().color(QPalette::Window)));
  painter.drawRect(box.adjusted(0, 0, -1, -1));
}

}  // namespace Helmsway
