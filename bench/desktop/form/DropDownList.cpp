#include "bench/desktop/form/DropDownList.h"

#include <QAbstractItemView>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QWheelEvent>

namespace Helmsway {

void DropDownList::showPopup() {
  view()->setMinimumWidth(view()->sizeHintForColumn(0) +
                          style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this));
  QComboBox::showPopup();
}

void DropDownList::paintEvent(QPaintEvent*) {
  QStyleOptionComboBox option;
  initStyleOption(&option);
  const QRect field = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
  // The style keeps a pixel free on either side.
  option.currentText = fontMetrics().elidedText(option.currentText, Qt::ElideRight, field.width() - 2);
  QStylePainter painter(this);
  painter.setPen(palette().color(QPalette::Text));
  painter.drawComplexControl(QStyle::CC_ComboBox, option);
  painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void DropDownList::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace Helmsway
