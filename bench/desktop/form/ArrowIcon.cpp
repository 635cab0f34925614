#include "bench/desktop/form/ArrowIcon.h"

#include <QPainter>
#include <QPixmap>
#include <QPolygonF>

namespace Helmsway {
namespace {

QPixmap Drawn(forms::Arrow arrow, const QColor& color, int edge, double devicePixelRatio) {
  QPixmap pixmap(QSize(edge, edge) * devicePixelRatio);
  pixmap.setDevicePixelRatio(devicePixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.scale(edge, edge);
  if (arrow == forms::Arrow::Down) {
    painter.translate(0, 1);
    painter.scale(1, -1);
  }
  // A head on a shaft, pointing up in the unit square.
  painter.drawPolygon(
      QPolygonF({{0.5, 0.05}, {0.95, 0.5}, {0.65, 0.5}, {0.65, 0.95}, {0.35, 0.95}, {0.35, 0.5}, {0.05, 0.5}}));
  return pixmap;
}

}  // namespace

QIcon ArrowIcon(forms::Arrow arrow, const QPalette& palette, int edge, double devicePixelRatio) {
  if (arrow == forms::Arrow::None || edge <= 0) return {};
  const auto drawn = [&](QPalette::ColorGroup group) {
    return Drawn(arrow, palette.color(group, QPalette::ButtonText), edge, devicePixelRatio);
  };
  QIcon icon;
  icon.addPixmap(drawn(QPalette::Active), QIcon::Normal);
  icon.addPixmap(drawn(QPalette::Disabled), QIcon::Disabled);
  return icon;
}

}  // namespace Helmsway
