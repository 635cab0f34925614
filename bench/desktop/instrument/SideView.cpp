#include "bench/desktop/instrument/SideView.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

#include "bench/desktop/instrument/PictureAxes.h"
#include "bench/desktop/instrument/PictureColors.h"
#include "bench/instrument/Heights.h"

namespace Helmsway {
namespace {

constexpr int Margin = 6;
constexpr std::array<Axis, 6> AllAxes{Axis::X, Axis::Y, Axis::Z, Axis::S, Axis::SdX, Axis::SdY};
/// In mm: how high the module itself is drawn, and how thick the plates of the stage.
constexpr double ModuleHeight = 30;
constexpr double PlateThickness = 8;

QString StepsOf(const InstrumentPicture::AxisPicture& axis) { return QString::number(std::lround(axis.at)); }

QString MarkOf(const InstrumentPicture::AxisPicture& axis) {
  if (axis.moving) return axis.homed ? QStringLiteral("\u25B8 moving") : QStringLiteral("\u25B8 homing");
  return axis.homed ? QString() : QStringLiteral("not homed");
}

template <class Entry>
const Entry* Named(const std::vector<Entry>& entries, const std::string& name) {
  const auto found = std::find_if(entries.begin(), entries.end(), [&](const Entry& each) { return each.Name == name; });
  return name.empty() || found == entries.end() ? nullptr : &*found;
}

}  // namespace

SideView::SideView(const MachineDescription& machine, QWidget* parent) : QWidget(parent), machine_(machine) {
  setObjectName(QStringLiteral("sideView"));
  setAccessibleName(QStringLiteral("Instrument from the side"));
  Describe();
}

void SideView::Show(const InstrumentPicture& picture) {
  const bool sameAxes =
      std::all_of(AllAxes.begin(), AllAxes.end(), [&](Axis axis) { return SameAxis(picture_, picture, axis); });
  if (sameAxes && picture.head == picture_.head && picture.tip == picture_.tip) return;
  picture_ = picture;
  Describe();
  update();
}

void SideView::Describe() {
  QStringList words{QString::fromStdString(HangingIn(picture_))};
  for (const auto& axis : picture_.axes) {
    const QString name = QString::fromStdString(axis.name);
    words << (axis.homed ? name + QStringLiteral(" at ") + StepsOf(axis) : name + QStringLiteral(" not homed"));
  }
  const QString text = words.join(QStringLiteral(", "));
  const bool moves =
      std::any_of(picture_.axes.begin(), picture_.axes.end(), [](const auto& axis) { return axis.moving; });
  // A reader hears where a move has ended, not every place on the way.
  if (!moves && text != accessibleDescription()) setAccessibleDescription(text);
}

int SideView::TableWidth() const {
  const QFontMetrics metrics = fontMetrics();
  return metrics.horizontalAdvance(QStringLiteral("SD_X -00000 ")) +
         metrics.horizontalAdvance(QStringLiteral("not homed")) + 2 * Margin;
}

QSize SideView::minimumSizeHint() const {
  const int line = fontMetrics().lineSpacing();
  return {TableWidth() + 18 * fontMetrics().averageCharWidth(), 8 * line + 2 * Margin};
}

QSize SideView::sizeHint() const { return minimumSizeHint() + QSize(120, 80); }

void SideView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), PictureColors(palette()).ground);
  const QRectF inner = QRectF(rect()).adjusted(Margin, Margin, -Margin, -Margin);
  const double table = TableWidth();
  PaintTable(painter, QRectF(inner.right() - table, inner.top(), table, inner.height()));
  const QRectF elevation = inner.adjusted(0, 0, -table - Margin, 0);
  painter.setClipRect(elevation);
  PaintLevels(painter, elevation);
  PaintModule(painter, elevation);
}

void SideView::PaintTable(QPainter& painter, const QRectF& area) const {
  const QFontMetrics metrics = fontMetrics();
  const double line = metrics.lineSpacing();
  const double names = metrics.horizontalAdvance(QStringLiteral("SD_X "));
  const double steps = metrics.horizontalAdvance(QStringLiteral("-00000 "));
  const PictureColors colors(palette());
  QRectF row(area.left(), area.top(), area.width(), line);
  const auto write = [&](const QString& name, const QString& position, const QString& mark) {
    painter.drawText(QRectF(row.left(), row.top(), names, line), Qt::AlignVCenter, name);
    painter.drawText(QRectF(row.left() + names, row.top(), steps, line), Qt::AlignVCenter | Qt::AlignRight, position);
    painter.drawText(row.adjusted(names + steps + Margin, 0, 0, 0), Qt::AlignVCenter, mark);
    row.translate(0, line);
  };
  painter.setPen(colors.faint);
  painter.drawLine(QPointF(row.left(), row.bottom()), QPointF(row.right(), row.bottom()));
  painter.setPen(colors.ink);
  write(QStringLiteral("Axis"), QStringLiteral("steps"), {});
  row.translate(0, Margin / 2.0);
  for (const auto& axis : picture_.axes) {
    painter.setPen(axis.moving ? colors.marker : colors.ink);
    write(QString::fromStdString(axis.name), axis.homed ? StepsOf(axis) : QStringLiteral("\u2013"), MarkOf(axis));
  }
}

double SideView::Ceiling() const {
  double top = std::max(machine_.levels.upperStage, machine_.levels.mount);
  const auto z = machine_.axes.find(Axis::Z);
  if (z != machine_.axes.end()) {
    const Heights heights(machine_);
    for (const std::int32_t end : {z->second.low, z->second.high}) {
      if (std::isfinite(heights.ModuleAt(end))) top = std::max(top, heights.ModuleAt(end));
    }
  }
  return std::max(top, 1.0) + ModuleHeight;
}

double SideView::RowOf(double height, const QRectF& area) const {
  const double whole = Ceiling() + PlateThickness;
  return area.bottom() - (height + PlateThickness) * area.height() / whole;
}

void SideView::PaintLevels(QPainter& painter, const QRectF& area) const {
  const PictureColors colors(palette());
  const QFontMetrics metrics = fontMetrics();
  const auto block = [&](double left, double right, double top, const QColor& color, const QString& word) {
    const QRectF body(QPointF(left, RowOf(top, area)), QPointF(right, RowOf(0, area)));
    painter.setPen(QPen(colors.faint, 1));
    painter.setBrush(color);
    painter.drawRect(body);
    painter.setPen(QPen(colors.faint, 1, Qt::DashLine));
    painter.drawLine(QPointF(area.left(), body.top()), QPointF(area.right(), body.top()));
    painter.setPen(colors.ink);
    const QRectF over(left, body.top() - metrics.height(), right - left, metrics.height());
    painter.drawText(over, Qt::AlignCenter, metrics.elidedText(word, Qt::ElideRight, static_cast<int>(over.width())));
  };
  const double third = area.width() / 3;
  const Heights heights(machine_);
  block(area.left(), area.left() + third, heights.Stage(false), colors.upper, QStringLiteral("upper"));
  block(area.right() - third, area.right(), heights.Stage(true), colors.lower, QStringLiteral("lower"));
  painter.fillRect(QRectF(QPointF(area.left(), RowOf(0, area)), area.bottomRight()), colors.faint);
}

void SideView::PaintModule(QPainter& painter, const QRectF& area) const {
  const PictureColors colors(palette());
  const auto* const z = AxisIn(picture_, Axis::Z);
  const double module =
      z == nullptr ? HUGE_VAL : Heights(machine_).ModuleAt(static_cast<std::int32_t>(std::lround(z->at)));
  painter.setPen(colors.ink);
  if (!std::isfinite(module)) {
    painter.drawText(area, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, QStringLiteral("height unknown"));
    return;
  }
  PaintHead(painter, area, module);
  const double half = area.width() / 7;
  const QRectF body(QPointF(area.center().x() - half, RowOf(module + ModuleHeight, area)),
                    QPointF(area.center().x() + half, RowOf(module, area)));
  const bool known = z->homed;
  painter.setPen(QPen(known ? colors.ink : colors.marker, 1.5, known ? Qt::SolidLine : Qt::DashLine));
  painter.setBrush(known ? QBrush(colors.occupied) : QBrush(colors.ground));
  painter.drawRect(body);
  if (known) return;
  painter.setPen(colors.ink);
  const QRectF beside(area.left(), body.top(), area.center().x() - half - area.left() - 2, body.height());
  painter.drawText(beside.adjusted(0, 0, 0, 3 * fontMetrics().height()), Qt::AlignTop | Qt::TextWordWrap,
                   QStringLiteral("Z not homed"));
}

double SideView::SleeveShare() const {
  const auto described = machine_.axes.find(Axis::S);
  const auto* const shown = AxisIn(picture_, Axis::S);
  if (described == machine_.axes.end() || shown == nullptr) return 0;
  const double range = static_cast<double>(described->second.high) - described->second.low;
  if (range <= 0) return 0;
  const double up = (shown->at - described->second.low) / range;
  return std::clamp(described->second.moveSign > 0 ? 1 - up : up, 0.0, 1.0);
}

void SideView::PaintHead(QPainter& painter, const QRectF& area, double module) const {
  const HeadType* const head = Named(machine_.heads, picture_.head);
  if (head == nullptr) return;
  const PictureColors colors(palette());
  const Heights heights(machine_);
  const double middle = area.center().x();
  const auto bar = [&](double half, double top, double bottom) {
    return QRectF(QPointF(middle - half, RowOf(top, area)), QPointF(middle + half, RowOf(bottom, area)));
  };
  const double half = area.width() / 14;
  const double end = module - heights.HeadDepth(*head);
  painter.setPen(QPen(colors.ink, 1));
  painter.setBrush(colors.ring);
  const TipType* const tip = Named(machine_.tips, picture_.tip);
  if (tip != nullptr) {
    const QRectF body = bar(half * 0.5, end, module - heights.HangDepth(head, tip));
    painter.drawPolygon(QList<QPointF>{body.topLeft(), body.topRight(), QPointF(middle, body.bottom())});
  } else {
    painter.drawRect(bar(half * 0.4, end, module - heights.HangDepth(head, nullptr)));
  }
  painter.setBrush(colors.shaft);
  painter.drawRect(bar(half, module, end));
  // Of the sleeve's way only the share is true: S goes much further than a head is long.
  const double reach = (module - end) * (0.2 + 0.75 * SleeveShare());
  const auto* const s = AxisIn(picture_, Axis::S);
  const bool known = s != nullptr && s->homed;
  painter.setPen(QPen(colors.ink, 1, known ? Qt::SolidLine : Qt::DashLine));
  painter.setBrush(known ? QBrush(colors.sleeve) : QBrush(Qt::NoBrush));
  painter.drawRect(bar(half * 1.4, module, module - reach));
}

}  // namespace Helmsway
