#include "docs/screenshots/Camera.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <limits>
#include <map>
#include <stdexcept>
#include <utility>
#include <vector>

namespace Helmsway {
namespace {

constexpr int BestCompression = 0;
constexpr qsizetype MostColors = 256;
constexpr std::size_t FrequentColors = 64;

int Distance(QRgb a, QRgb b) {
  const int red = qRed(a) - qRed(b);
  const int green = qGreen(a) - qGreen(b);
  const int blue = qBlue(a) - qBlue(b);
  return red * red + green * green + blue * blue;
}

/// A colour of the image, and its nearest one in the palette.
struct Color {
  QRgb color = 0;
  int count = 0;
  uint place = 0;
  int distance = std::numeric_limits<int>::max();
};

void AddToPalette(QRgb added, QList<QRgb>& palette, std::vector<Color>& colors) {
  for (Color& each : colors) {
    const int distance = Distance(each.color, added);
    if (distance >= each.distance) continue;
    each.distance = distance;
    each.place = static_cast<uint>(palette.size());
  }
  palette.push_back(added);
}

/// The image with a palette, which makes a small file. The most frequent colours stay as they are, and so do those that
/// are farthest from all of these; what is left becomes the nearest one.
QImage WithPalette(const QImage& image) {
  std::map<QRgb, int> counts;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) ++counts[image.pixel(x, y)];
  }
  std::vector<Color> colors;
  for (const auto& color : counts) colors.push_back({.color = color.first, .count = color.second});
  std::stable_sort(colors.begin(), colors.end(), [](const Color& a, const Color& b) { return a.count > b.count; });

  QList<QRgb> palette;
  for (std::size_t i = 0; i < std::min(FrequentColors, colors.size()); ++i) {
    AddToPalette(colors[i].color, palette, colors);
  }
  while (palette.size() < MostColors) {
    const auto farthest = std::max_element(colors.begin(), colors.end(),
                                           [](const Color& a, const Color& b) { return a.distance < b.distance; });
    if (farthest->distance == 0) break;
    AddToPalette(farthest->color, palette, colors);
  }
  std::map<QRgb, uint> places;
  for (const Color& each : colors) places[each.color] = each.place;

  QImage result(image.size(), QImage::Format_Indexed8);
  result.setColorTable(palette);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) result.setPixel(x, y, places.at(image.pixel(x, y)));
  }
  return result;
}

QString TitleOf(const QWidget& window) {
  QString title = window.windowTitle();
  return title.replace(QStringLiteral("[*]"), window.isWindowModified() ? QStringLiteral("*") : QString());
}

QImage Framed(QWidget& window) {
  const QImage inside = window.grab().toImage();
  QFont font = QApplication::font();
  font.setBold(true);
  const int bar = QFontMetrics(font).height() * 8 / 5;
  QImage image(inside.width() + 2, inside.height() + bar + 1, QImage::Format_RGB888);
  const QColor frame(0x2f, 0x43, 0x58);
  image.fill(frame);
  QPainter painter(&image);
  painter.setFont(font);
  painter.setPen(Qt::white);
  painter.drawText(QRect(bar / 2, 0, image.width() - bar, bar), Qt::AlignVCenter | Qt::AlignLeft, TitleOf(window));
  painter.drawImage(1, bar, inside);
  return image;
}

}  // namespace

void Camera::Take(const QString& name, QWidget& window, QDialog* dialog) const {
  QImage image = Framed(window);
  if (dialog != nullptr) {
    const QImage front = Framed(*dialog);
    const QSize beside = (image.size() - front.size()) / 2;
    QPainter(&image).drawImage(beside.width(), beside.height(), front);
  }
  const QString file = QStringLiteral("%1/%2.png").arg(folder_, name);
  if (!WithPalette(image).save(file, "PNG", BestCompression))
    throw std::runtime_error("can't be written: " + file.toStdString());
}

}  // namespace Helmsway
