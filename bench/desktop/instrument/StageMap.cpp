#include "bench/desktop/instrument/StageMap.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace Helmsway {
namespace {

using Slot = MachineDescription::Slot;
using StagePlace = MachineDescription::StagePlace;
using Stretch = StretchedScale::Stretch;

/// In mm. A plate lies lengthwise along X; neighbouring grounds are made smaller until they keep apart.
constexpr double HalfPlateWidth = 64;
constexpr double HalfPlateDepth = 43;
constexpr double HalfSlot = 10;
constexpr double NestNameWidth = 40;
constexpr double LeastHalf = 1;
constexpr double ShareOfDistance = 0.46;

double LengthOf(const MachineDescription& machine, Axis axis, std::int32_t steps) {
  const auto found = machine.axes.find(axis);
  return found == machine.axes.end() ? 0 : steps * found->second.mmPerStep;
}

Point PointOf(const MachineDescription& machine, const Target& target) {
  return {LengthOf(machine, Axis::X, target.x) + LengthOf(machine, Axis::SdX, target.sdX),
          LengthOf(machine, Axis::Y, target.y) + LengthOf(machine, Axis::SdY, target.sdY)};
}

/// How much smaller grounds of that half size, around those points, must be to keep apart: 1 for not at all.
double ShrunkBy(const std::vector<Point>& points, const Point& half) {
  double factor = 1;
  for (std::size_t i = 0; i < points.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      const double apart =
          std::max(std::abs(points[i].x - points[j].x) / half.x, std::abs(points[i].y - points[j].y) / half.y);
      factor = std::min(factor, apart * ShareOfDistance);
    }
  }
  return std::max(factor, LeastHalf / std::min(half.x, half.y));
}

QString NestNameOf(const Slot& slot) {
  QString name = QString::fromStdString(slot.name);
  const QString ending = QStringLiteral(", slot ") + QString::fromStdString(slot.number);
  if (name.endsWith(ending)) name.chop(ending.size());
  return name;
}

/// From the first place to the last.
double Spread(const std::vector<double>& places) {
  if (places.empty()) return 0;
  const auto [first, last] = std::minmax_element(places.begin(), places.end());
  return *last - *first;
}

}  // namespace

StageMap::StageMap(const MachineDescription& machine, const QFontMetrics& metrics) {
  AddPositions(machine);
  AddSlots(machine);
  AddNestNames(machine);
  MakeScales(machine, metrics);
}

void StageMap::AddPositions(const MachineDescription& machine) {
  std::vector<Point> centres;
  for (const StagePlace& place : machine.places) centres.push_back(PointOf(machine, place.one));
  std::vector<double> xs;
  std::vector<double> ys;
  for (const Point& centre : centres) {
    xs.push_back(centre.x);
    ys.push_back(centre.y);
  }
  xRunsDown_ = machine.axes.contains(Axis::X) && Spread(xs) >= Spread(ys);
  const double factor = ShrunkBy(centres, {HalfPlateWidth, HalfPlateDepth});
  for (std::size_t i = 0; i < centres.size(); ++i) {
    const StagePlace& place = machine.places[i];
    const Point half{HalfPlateWidth * factor, HalfPlateDepth * factor};
    grounds_.push_back({{Kind::Position, QString::fromStdString(place.caption), place.caption, place.lower, {}},
                        {centres[i].x - half.x, centres[i].y - half.y},
                        {centres[i].x + half.x, centres[i].y + half.y}});
  }
}

void StageMap::AddSlots(const MachineDescription& machine) {
  std::vector<Point> centres;
  for (const Slot& slot : machine.slots) centres.push_back(PointOf(machine, slot.target));
  const double half = HalfSlot * ShrunkBy(centres, {HalfSlot, HalfSlot});
  for (std::size_t i = 0; i < centres.size(); ++i) {
    const Slot& slot = machine.slots[i];
    grounds_.push_back({{Kind::Slot, QString::fromStdString(slot.number), slot.name, slot.lower, {}},
                        {centres[i].x - half, centres[i].y - half},
                        {centres[i].x + half, centres[i].y + half}});
  }
}

void StageMap::AddNestNames(const MachineDescription& machine) {
  std::map<std::string, Ground> names;
  const std::size_t firstSlot = grounds_.size() - machine.slots.size();
  for (std::size_t i = 0; i < machine.slots.size(); ++i) {
    const Ground& slot = grounds_[firstSlot + i];
    const auto [found, isNew] = names.try_emplace(machine.slots[i].nestItem, slot);
    Ground& name = found->second;
    if (isNew) name.spot = {Kind::NestName, NestNameOf(machine.slots[i]), {}, slot.spot.lower, {}};
    name.from = {std::min(name.from.x, slot.from.x), std::min(name.from.y, slot.from.y)};
    name.to = {std::max(name.to.x, slot.to.x), std::max(name.to.y, slot.to.y)};
  }
  // The name stands before the slots, across from the direction in which the places follow one another.
  for (auto& [nest, name] : names) {
    double& from = xRunsDown_ ? name.from.y : name.from.x;
    double& to = xRunsDown_ ? name.to.y : name.to.x;
    to = from - LeastHalf;
    from = to - NestNameWidth;
    grounds_.push_back(name);
  }
}

void StageMap::MakeScales(const MachineDescription& machine, const QFontMetrics& metrics) {
  const double line = metrics.height();
  const double letter = metrics.averageCharWidth();
  struct Room {
    double across;
    double down;
  };
  const std::map<Kind, Room> rooms{{Kind::Position, {11 * letter, 2 * line + 4}},
                                   {Kind::Slot, {11 * letter, line + 3}},
                                   {Kind::NestName, {8 * letter, 2 * line + 2}}};
  const auto reach = [&](Axis far, Axis near) {
    Stretch whole;
    for (const Axis axis : {far, near}) {
      const auto found = machine.axes.find(axis);
      if (found == machine.axes.end()) continue;
      whole.from += found->second.low * found->second.mmPerStep;
      whole.to += found->second.high * found->second.mmPerStep;
    }
    return whole;
  };
  std::vector<Stretch> alongX{reach(Axis::X, Axis::SdX)};
  std::vector<Stretch> alongY{reach(Axis::Y, Axis::SdY)};
  for (const Ground& ground : grounds_) {
    const Room room = rooms.at(ground.spot.kind);
    alongX.push_back({ground.from.x, ground.to.x, xRunsDown_ ? room.down : room.across});
    alongY.push_back({ground.from.y, ground.to.y, xRunsDown_ ? room.across : room.down});
  }
  across_ = StretchedScale(xRunsDown_ ? alongY : alongX);
  down_ = StretchedScale(xRunsDown_ ? alongX : alongY);
}

void StageMap::FitInto(const QRectF& area) {
  corner_ = area.topLeft();
  across_.FitInto(area.width());
  down_.FitInto(area.height());
}

QPointF StageMap::At(const Point& point) const {
  const double across = xRunsDown_ ? point.y : point.x;
  const double down = xRunsDown_ ? point.x : point.y;
  return corner_ + QPointF(across_.At(across), down_.At(down));
}

std::vector<StageMap::Spot> StageMap::Spots() const {
  std::vector<Spot> spots;
  for (const Ground& ground : grounds_) {
    spots.push_back(ground.spot);
    spots.back().area = QRectF(At(ground.from), At(ground.to));
  }
  return spots;
}

}  // namespace Helmsway
