#include "bench/desktop/instrument/StageView.h"

#include <QHelpEvent>
#include <QPainter>
#include <QTextOption>
#include <QToolTip>
#include <algorithm>
#include <array>
#include <cmath>

#include "bench/desktop/instrument/PictureAxes.h"
#include "bench/desktop/instrument/PictureColors.h"

namespace Helmsway {
namespace {

constexpr int Margin = 6;
constexpr std::array<Axis, 4> Sideways{Axis::X, Axis::Y, Axis::SdX, Axis::SdY};

}  // namespace

StageView::StageView(const MachineDescription& machine, QWidget* parent)
    : QWidget(parent), machine_(machine), map_(machine, fontMetrics()) {
  setObjectName(QStringLiteral("stageView"));
  setAccessibleName(QStringLiteral("Stage from above"));
  LayOut();
  Describe();
}

void StageView::Show(const InstrumentPicture& picture) {
  const bool sameStage = picture.places == picture_.places && picture.slider == picture_.slider &&
                         picture.head == picture_.head && picture.tip == picture_.tip;
  const bool samePlace =
      std::all_of(Sideways.begin(), Sideways.end(), [&](Axis axis) { return SameAxis(picture_, picture, axis); });
  if (sameStage && samePlace) return;
  picture_ = picture;
  if (!sameStage) Describe();
  update();
}

void StageView::Describe() {
  QStringList words{HeadLine()};
  for (const auto& place : picture_.places) {
    words << QString::fromStdString(place.name + ": " + place.contents);
  }
  words << QStringLiteral("on the module: ") + QString::fromStdString(HangingIn(picture_));
  setAccessibleDescription(words.join(QStringLiteral("; ")));
}

QRectF StageView::PlanArea() const {
  return QRectF(rect()).adjusted(Margin, 2 * Margin + 2 * fontMetrics().lineSpacing(), -Margin, -Margin);
}

QString StageView::HeadLine() const {
  const QString directions = map_.XRunsDown() ? QStringLiteral("X \u2193  Y \u2192") : QStringLiteral("Y \u2193");
  const QString slider = picture_.slider == "closed" || picture_.slider == "open"
                             ? QStringLiteral("   slider ") + QString::fromStdString(picture_.slider)
                             : QString();
  return QStringLiteral("Stage   ") + directions + slider;
}

QSize StageView::minimumSizeHint() const {
  const QSizeF least = map_.Least();
  return {static_cast<int>(std::ceil(least.width())) + 2 * Margin,
          static_cast<int>(std::ceil(least.height())) + 3 * Margin + 2 * fontMetrics().lineSpacing()};
}

QSize StageView::sizeHint() const { return minimumSizeHint() + QSize(8 * Margin, 4 * Margin); }

void StageView::LayOut() {
  map_.FitInto(PlanArea());
  spots_ = map_.Spots();
}

void StageView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  LayOut();
}

void StageView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) {
    map_ = StageMap(machine_, fontMetrics());
    LayOut();
  }
  QWidget::changeEvent(event);
}

bool StageView::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* const help = static_cast<QHelpEvent*>(event);
  const QString words = WordsAt(help->pos());
  words.isEmpty() ? QToolTip::hideText() : QToolTip::showText(help->globalPos(), words.toHtmlEscaped(), this);
  return true;
}

bool StageView::IsCovered(const StageMap::Spot& spot) const { return spot.lower && picture_.slider == "closed"; }

QString StageView::ContentsOf(const StageMap::Spot& spot) const {
  const auto found = std::find_if(picture_.places.begin(), picture_.places.end(),
                                  [&](const MachineState::Place& each) { return each.name == spot.place; });
  return found == picture_.places.end() ? QString() : QString::fromStdString(found->contents);
}

QString StageView::WordsFor(const StageMap::Spot& spot) const {
  if (spot.kind == StageMap::Kind::NestName) return spot.caption;
  QString words = QString::fromStdString(spot.place);
  const QString contents = ContentsOf(spot);
  if (!contents.isEmpty()) words += QStringLiteral(": ") + contents;
  if (IsCovered(spot)) words += QStringLiteral(" (under the closed slider)");
  return words;
}

QString StageView::WordsAt(const QPoint& position) const {
  const auto found = std::find_if(spots_.begin(), spots_.end(),
                                  [&](const StageMap::Spot& spot) { return spot.area.contains(position); });
  return found == spots_.end() ? QString() : WordsFor(*found);
}

void StageView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const PictureColors colors(palette());
  painter.fillRect(rect(), colors.ground);
  painter.setPen(colors.ink);
  const QRect line = rect().adjusted(Margin, Margin, -Margin, -Margin);
  painter.drawText(line, Qt::AlignTop | Qt::AlignLeft,
                   fontMetrics().elidedText(HeadLine(), Qt::ElideRight, line.width()));
  for (const StageMap::Spot& spot : spots_) PaintSpot(painter, spot);
  PaintModule(painter);
}

void StageView::PaintSpot(QPainter& painter, const StageMap::Spot& spot) const {
  const PictureColors colors(palette());
  const QRectF inside = spot.area.adjusted(3, 1, -3, -1);
  if (spot.kind == StageMap::Kind::NestName) {
    painter.setPen(colors.ink);
    PaintWords(painter, spot, spot.area.adjusted(0, 0, -3, 0));
    return;
  }
  const QString contents = ContentsOf(spot);
  const bool holdsSomething = !contents.isEmpty() && contents != QStringLiteral("empty");
  painter.setPen(QPen(colors.faint, 1));
  painter.setBrush(holdsSomething ? colors.occupied : spot.lower ? colors.lower : colors.upper);
  painter.drawRoundedRect(spot.area, 3, 3);
  if (IsCovered(spot)) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QBrush(colors.cover, Qt::BDiagPattern));
    painter.drawRoundedRect(spot.area, 3, 3);
  }
  painter.setPen(colors.ink);
  PaintWords(painter, spot, inside);
}

void StageView::PaintWords(QPainter& painter, const StageMap::Spot& spot, const QRectF& inside) const {
  const QFontMetrics metrics = fontMetrics();
  if (spot.kind == StageMap::Kind::NestName) {
    const int lines = std::max(1, static_cast<int>(inside.height()) / metrics.lineSpacing());
    const int needed = metrics.boundingRect(inside.toRect(), Qt::TextWordWrap, spot.caption).height();
    const bool fits = needed <= inside.height();
    QTextOption wrapped(Qt::AlignRight | (fits ? Qt::AlignVCenter : Qt::AlignTop));
    wrapped.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QRectF wholeLines = inside;
    if (!fits) wholeLines.setHeight(lines * metrics.lineSpacing());
    painter.drawText(wholeLines, spot.caption, wrapped);
    return;
  }
  const QString contents = ContentsOf(spot);
  QStringList lines{spot.caption};
  if (!contents.isEmpty()) {
    const bool hasTwoLines = spot.kind == StageMap::Kind::Position && spot.area.height() >= 2 * metrics.height();
    if (hasTwoLines) {
      lines << contents;
    } else {
      lines.first() += QStringLiteral(": ") + contents;
    }
  }
  double top = inside.center().y() - static_cast<double>(lines.size()) * metrics.height() / 2.0;
  for (const QString& line : lines) {
    const QRectF row(inside.left(), top, inside.width(), metrics.height());
    painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(line, Qt::ElideRight, static_cast<int>(row.width())));
    top += metrics.height();
  }
}

bool StageView::PositionKnown() const {
  return std::all_of(Sideways.begin(), Sideways.end(), [&](Axis axis) {
    const auto* const shown = AxisIn(picture_, axis);
    return shown == nullptr || shown->homed;
  });
}

void StageView::PaintModule(QPainter& painter) const {
  if (picture_.axes.empty()) return;
  const PictureColors colors(palette());
  const Point point{LengthAt(machine_, picture_, Axis::X) + LengthAt(machine_, picture_, Axis::SdX),
                    LengthAt(machine_, picture_, Axis::Y) + LengthAt(machine_, picture_, Axis::SdY)};
  const QRectF plan = PlanArea();
  const QPointF at = map_.At(point);
  const bool known = PositionKnown();
  // The arm, and the module on it.
  painter.setPen(QPen(colors.marker, 1.5, Qt::DotLine));
  if (map_.XRunsDown()) painter.drawLine(QPointF(plan.left(), at.y()), QPointF(plan.right(), at.y()));
  PaintMarker(painter, at);
  // What it means stands above the plan, where it hides no place.
  const QFontMetrics metrics = fontMetrics();
  const double size = metrics.height();
  const double top = Margin + metrics.lineSpacing();
  PaintMarker(painter, {plan.left() + size / 2, top + size / 2});
  QString words = QString::fromStdString(HangingIn(picture_));
  if (!known) words = QStringLiteral("position unknown: ") + words;
  const QRectF legend(plan.left() + 1.5 * size, top, plan.width() - 1.5 * size, size);
  painter.setPen(colors.ink);
  painter.drawText(legend, Qt::AlignLeft | Qt::AlignVCenter,
                   metrics.elidedText(words, Qt::ElideRight, static_cast<int>(legend.width())));
}

void StageView::PaintMarker(QPainter& painter, const QPointF& centre) const {
  const PictureColors colors(palette());
  const double radius = fontMetrics().height() * 0.32;
  painter.setPen(QPen(colors.marker, 2, PositionKnown() ? Qt::SolidLine : Qt::DotLine));
  painter.setBrush(Qt::NoBrush);
  painter.drawEllipse(centre, radius, radius);
  painter.drawLine(centre - QPointF(0, radius * 1.6), centre + QPointF(0, radius * 1.6));
  painter.drawLine(centre - QPointF(radius * 1.6, 0), centre + QPointF(radius * 1.6, 0));
}

}  // namespace Helmsway
