#include "bench/instrument/Surroundings.h"

#include <algorithm>
#include <cmath>

namespace Helmsway {
namespace {

using StagePlace = MachineDescription::StagePlace;

/// Over a place means as near as this to it, in mm, along either axis.
constexpr double ExactlyOver = 1;
/// A stage position takes a plate lengthwise along X.
constexpr double HalfPlateWidth = 64;
constexpr double HalfPlateDepth = 43;
constexpr double HalfSlot = 10;

}  // namespace

double Surroundings::LengthOf(Axis axis, std::int32_t steps) const {
  const auto found = machine_.axes.find(axis);
  return found == machine_.axes.end() ? 0 : steps * found->second.mmPerStep;
}

Point Surroundings::PointAt(const Target& target) const {
  return {LengthOf(Axis::X, target.x) + LengthOf(Axis::SdX, target.sdX),
          LengthOf(Axis::Y, target.y) + LengthOf(Axis::SdY, target.sdY)};
}

bool Surroundings::IsAt(const Target& target) const {
  const Point here = Here();
  const Point there = PointAt(target);
  return std::abs(here.x - there.x) <= ExactlyOver && std::abs(here.y - there.y) <= ExactlyOver;
}

double Surroundings::LowestPoint() const {
  const Module& module = world_.module;
  return heights_.ModuleAt(world_.motion.At(Axis::Z)) - heights_.HangDepth(module.head, module.tip);
}

std::optional<std::size_t> Surroundings::SlotBelow() const {
  for (std::size_t i = 0; i < machine_.slots.size(); ++i) {
    if (IsAt(machine_.slots[i].target)) return i;
  }
  return std::nullopt;
}

const StagePlace* Surroundings::RackBelow() const {
  if (world_.module.head == nullptr) return nullptr;
  const auto isOver = [&](const StagePlace& place) {
    if (world_.stage.RackOn(place.name) == nullptr) return false;
    switch (world_.module.head->Channels) {
      case 1:
        return IsAt(place.one);
      case 8:
        return IsAt(place.eight);
      case 12:
        return IsAt(place.twelve);
      default:  // the large heads are over all of the rack, and have no place of their own in it
        return IsAt({place.one.x, place.one.y, 0, 0});
    }
  };
  const auto found = std::find_if(machine_.places.begin(), machine_.places.end(), isOver);
  return found == machine_.places.end() ? nullptr : &*found;
}

bool Surroundings::IsOverEjectPlace() const {
  const bool exists = std::any_of(machine_.places.begin(), machine_.places.end(),
                                  [&](const StagePlace& place) { return place.name == machine_.ejectPlace; });
  return exists && IsAt(machine_.ejectTarget);
}

std::vector<Obstacle> Surroundings::Obstacles() const {
  std::vector<Obstacle> obstacles;
  for (const StagePlace& place : machine_.places) obstacles.push_back(OnPlace(place));
  for (std::size_t i = 0; i < machine_.slots.size(); ++i) obstacles.push_back(AtSlot(i));
  return obstacles;
}

Obstacle Surroundings::OnPlace(const StagePlace& place) const {
  const double stage = heights_.Stage(place.lower);
  Obstacle obstacle{"the stage at " + place.caption, stage, PointAt(place.one), HalfPlateWidth, HalfPlateDepth};
  const auto standsHere = [&](const std::string& name, double top) {
    if (top <= obstacle.top) return;
    obstacle.name = name;
    obstacle.top = top;
  };
  if (SliderCovers(place.lower)) standsHere("the closed slider over " + place.caption, heights_.Stage(false));
  if (const Rack* const rack = world_.stage.RackOn(place.name)) {
    standsHere(rack->plate->Name + " on " + place.caption, stage + rack->plate->PlateHeight);
  }
  const HeadType* const ejected = world_.stage.Ejected();
  if (place.name == machine_.ejectPlace && ejected != nullptr) {
    standsHere(ejected->Name + " on " + place.caption, stage + heights_.HeadDepth(*ejected));
  }
  return obstacle;
}

Obstacle Surroundings::AtSlot(std::size_t number) const {
  const auto& slot = machine_.slots.at(number);
  Obstacle obstacle{slot.name, slot.floor, PointAt(slot.target), HalfSlot, HalfSlot};
  if (const HeadType* const head = world_.stage.HeadIn(number)) {
    // The module reaches into a head a little before it has it.
    obstacle.name = head->Name + " in " + slot.name;
    obstacle.top = heights_.Seat(slot, *head) + Heights::SeatTolerance;
  }
  if (SliderCovers(slot.lower) && heights_.Stage(false) > obstacle.top) {
    obstacle.name = "the closed slider over " + slot.name;
    obstacle.top = heights_.Stage(false);
  }
  return obstacle;
}

bool LeadsOver(const Point& from, const Point& to, const Obstacle& obstacle) {
  // One axis moves at a time, so the way is a line along X or along Y.
  const auto meets = [](double start, double end, double centre, double half) {
    return std::min(start, end) <= centre + half && std::max(start, end) >= centre - half;
  };
  return meets(from.x, to.x, obstacle.centre.x, obstacle.halfWidth) &&
         meets(from.y, to.y, obstacle.centre.y, obstacle.halfDepth);
}

}  // namespace Helmsway
