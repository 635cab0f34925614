#include "bench/desktop/instrument/LoupeView.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "bench/desktop/instrument/PictureColors.h"

namespace Helmsway {
namespace {

/// In mm; the ring reaches from 0 up to its height.
constexpr double RingHeight = 0.8;
constexpr double HalfRange = 3.2;
constexpr double LeastScale = 50;
constexpr int Margin = 6;

QString Caption() { return QStringLiteral("Teach tool, magnified"); }
QString NothingToSee() { return QStringLiteral("No teach tool on the module, or S not homed"); }

QString InWords(std::optional<double> edge) {
  if (!edge) return NothingToSee();
  const double tenths = std::round(*edge * 10) / 10;
  const QString length = QString::number(std::abs(tenths), 'f', 1);
  if (tenths == 0) return QStringLiteral("the ring is covered");
  if (tenths < 0) return QStringLiteral("the edge reaches about %1 mm below the ring").arg(length);
  if (tenths <= RingHeight) return QStringLiteral("the ring shows about %1 mm").arg(length);
  return QStringLiteral("the whole ring shows, the edge is about %1 mm above its lower rim").arg(length);
}

/// A round bar, lit from the left.
QLinearGradient Round(const QRectF& bar, const QColor& color) {
  QLinearGradient gradient(bar.left(), 0, bar.right(), 0);
  gradient.setColorAt(0, color.darker(130));
  gradient.setColorAt(0.3, color.lighter(115));
  gradient.setColorAt(1, color.darker(150));
  return gradient;
}

void PaintBar(QPainter& painter, const QRectF& bar, const QColor& color) {
  painter.fillRect(bar, Round(bar, color));
  painter.drawLine(bar.topLeft(), bar.bottomLeft());
  painter.drawLine(bar.topRight(), bar.bottomRight());
}

}  // namespace

LoupeView::LoupeView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("loupeView"));
  setAccessibleName(Caption());
  setAccessibleDescription(InWords(edge_));
}

void LoupeView::Show(std::optional<double> edge) {
  if (edge == edge_) return;
  edge_ = edge;
  const QString words = InWords(edge_);
  if (words != accessibleDescription()) setAccessibleDescription(words);
  update();
}

QRectF LoupeView::Field() const {
  const int caption = fontMetrics().height() + 2 * Margin;
  return QRectF(rect()).adjusted(Margin, caption, -Margin, -Margin);
}

double LoupeView::PixelsPerMillimetre() const { return std::max(LeastScale, Field().height() / (2 * HalfRange)); }

double LoupeView::RowOf(double edge) const { return Field().center().y() - edge * PixelsPerMillimetre(); }

QSize LoupeView::minimumSizeHint() const {
  const QFontMetrics metrics = fontMetrics();
  const int height = static_cast<int>(std::ceil(2 * HalfRange * LeastScale)) + metrics.height() + 3 * Margin;
  return {metrics.horizontalAdvance(Caption()) + 3 * Margin, height};
}

QSize LoupeView::sizeHint() const { return minimumSizeHint() + QSize(2 * Margin, 8 * Margin); }

void LoupeView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const PictureColors colors(palette());
  painter.fillRect(rect(), colors.ground);
  painter.setPen(colors.ink);
  const QRect captionLine = rect().adjusted(Margin, Margin, -Margin, 0);
  painter.drawText(captionLine, Qt::AlignHCenter | Qt::AlignTop,
                   fontMetrics().elidedText(Caption(), Qt::ElideRight, captionLine.width()));
  const QRectF field = Field();
  if (!edge_) {
    painter.drawText(field, Qt::AlignCenter | Qt::TextWordWrap, NothingToSee());
    return;
  }
  painter.setClipRect(field);
  PaintTool(painter, *edge_);
  PaintGraticule(painter);
  PaintRingMark(painter);
  PaintOutside(painter, *edge_);
  painter.setClipping(false);
  painter.setPen(QPen(colors.faint, 1));
  painter.drawRect(field);
}

void LoupeView::PaintTool(QPainter& painter, double edge) const {
  const PictureColors colors(palette());
  const QRectF field = Field();
  const double middle = field.center().x();
  const auto bar = [&](double halfWidth, double top, double bottom) {
    return QRectF(QPointF(middle - halfWidth, top), QPointF(middle + halfWidth, bottom));
  };
  const double half = field.width() * 0.2;
  painter.setPen(QPen(colors.metalEdge, 1));
  PaintBar(painter, bar(half * 0.72, field.top(), field.bottom()), colors.shaft);
  const QRectF ring = bar(half * 0.86, RowOf(RingHeight), RowOf(0));
  PaintBar(painter, ring, colors.ring);
  painter.drawLine(ring.topLeft(), ring.topRight());
  // The edge itself stays where the fill ends: no outline may hide a tenth of the ring, or show one.
  const double row = std::clamp(RowOf(edge), field.top(), field.bottom());
  PaintBar(painter, bar(half, field.top(), row), colors.sleeve);
}

void LoupeView::PaintGraticule(QPainter& painter) const {
  const QRectF field = Field();
  const int unit = std::max(4, fontMetrics().averageCharWidth());
  painter.setPen(QPen(PictureColors(palette()).ink, 1));
  for (int tenth = static_cast<int>(-10 * HalfRange); tenth <= static_cast<int>(10 * HalfRange); ++tenth) {
    const int length = tenth % 10 == 0 ? 3 * unit : tenth % 5 == 0 ? 2 * unit : unit;
    const double row = RowOf(tenth / 10.0);
    painter.drawLine(QPointF(field.left(), row), QPointF(field.left() + length, row));
  }
}

void LoupeView::PaintRingMark(QPainter& painter) const {
  // It shows where the ring is, covered or not.
  const QRectF field = Field();
  const QString word = QStringLiteral("ring");
  const double wordWidth = fontMetrics().horizontalAdvance(word);
  const double right = field.right() - wordWidth - Margin;
  const double left = right - Margin;
  const double top = RowOf(RingHeight);
  const double bottom = RowOf(0);
  painter.setPen(QPen(PictureColors(palette()).ink, 1));
  painter.drawPolyline(
      QList<QPointF>{QPointF(left, top), QPointF(right, top), QPointF(right, bottom), QPointF(left, bottom)});
  painter.drawText(QRectF(right + 2, top, wordWidth + 2, bottom - top), Qt::AlignVCenter | Qt::AlignLeft, word);
}

void LoupeView::PaintOutside(QPainter& painter, double edge) const {
  if (std::abs(edge) <= HalfRange) return;
  const PictureColors colors(palette());
  const QRectF field = Field();
  const bool above = edge > 0;
  const QString words = above ? QStringLiteral("edge above the picture") : QStringLiteral("edge below the picture");
  const double line = fontMetrics().height();
  const double tip = above ? field.top() + 2 : field.bottom() - 2;
  const double shaft = above ? tip + line : tip - line;
  QPainterPath arrow(QPointF(field.center().x(), tip));
  arrow.lineTo(field.center().x() - line / 2, shaft);
  arrow.lineTo(field.center().x() + line / 2, shaft);
  arrow.closeSubpath();
  QRectF label(field.left(), 0, field.width(), 2 * line + Margin);
  label.moveTop(above ? shaft + 2 : shaft - 2 - label.height());
  painter.fillRect(label, colors.ground);
  painter.setPen(QPen(colors.ink, 1));
  painter.fillPath(arrow, colors.ground);
  painter.drawPath(arrow);
  painter.drawText(label, Qt::AlignCenter | Qt::TextWordWrap, words);
}

}  // namespace Helmsway
