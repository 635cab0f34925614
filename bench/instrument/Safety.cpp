#include "bench/instrument/Safety.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace Helmsway {
namespace {

using StagePlace = MachineDescription::StagePlace;

/// Less than this, in mm, is no collision: positions are whole steps.
constexpr double Touch = 0.1;

std::string Millimetres(double length) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.1f mm", length);
  return text.data();
}

std::string NameOfHanging(const Module& module) {
  if (module.head == nullptr) return "the bare pipette module";
  return module.tip == nullptr ? module.head->Name : module.tip->Name + " on " + module.head->Name;
}

Target Moved(Target where, Axis axis, std::int32_t target) {
  (axis == Axis::X ? where.x : axis == Axis::Y ? where.y : axis == Axis::SdX ? where.sdX : where.sdY) = target;
  return where;
}

/// Where Z has been sent, as far as people can be told.
std::string At(Axis axis, const World& world) {
  return "axis " + std::string(NameOf(axis)) + " is at " + std::to_string(world.motion.At(axis));
}

}  // namespace

std::string Safety::WhyNotSideways(Axis axis, std::int32_t target) const {
  if (target == world_.motion.At(axis)) return {};
  const Point from = around_.Here();
  const Point to = around_.PointAt(Moved(world_.motion.Where(), axis, target));
  const double lowest = around_.LowestPoint();
  for (const Obstacle& obstacle : around_.Obstacles()) {
    if (obstacle.top - lowest <= Touch || !LeadsOver(from, to, obstacle)) continue;
    return "axis " + std::string(NameOf(axis)) + " can't go to " + std::to_string(target) + ": " +
           NameOfHanging(world_.module) + " hangs " + Millimetres(obstacle.top - lowest) + " too low for " +
           obstacle.name + ", " + At(Axis::Z, world_);
  }
  return {};
}

std::string Safety::WhyNotSlider(SliderState target) const {
  if (target == world_.slider) return {};
  const Motion& motion = world_.motion;
  const std::string reason = target == SliderState::Open ? "the slider can't open: " : "the slider can't close: ";
  for (const Axis axis : {Axis::X, Axis::Z}) {
    if (motion.Has(axis) && !motion.Homed(axis)) return reason + "axis " + std::string(NameOf(axis)) + " is not homed";
  }
  const double low = heights_.Stage(false) - around_.LowestPoint();
  if (low > Touch) {
    return reason + NameOfHanging(world_.module) + " hangs " + Millimetres(low) + " below its level, " +
           At(Axis::Z, world_);
  }
  const auto x = machine_.axes.find(Axis::X);
  const auto z = machine_.axes.find(Axis::Z);
  if (x == machine_.axes.end() || motion.At(Axis::X) == x->second.safePosition) return {};
  // A head on its way to a nest of the upper stage finds the slider open now and then, and X anywhere.
  const bool zIsUp =
      z != machine_.axes.end() && heights_.ModuleAt(motion.At(Axis::Z)) >= heights_.ModuleAt(z->second.safePosition);
  if (target == SliderState::Closed && zIsUp) return {};
  return reason + At(Axis::X, world_) + ", its safe position is " + std::to_string(x->second.safePosition);
}

std::string Safety::RunsInto(std::int32_t zTarget) const {
  const double module = heights_.ModuleAt(zTarget);
  if (!(module < heights_.ModuleAt(world_.motion.At(Axis::Z)))) return {};
  const auto floors = FloorsAt(module);
  const auto depth = [](const Floor& floor) { return floor.lowest - floor.reached; };
  const auto deepest = std::max_element(
      floors.begin(), floors.end(), [&](const Floor& left, const Floor& right) { return depth(left) < depth(right); });
  if (deepest == floors.end() || depth(*deepest) <= Touch) return {};
  return NameOfHanging(world_.module) + " " + Millimetres(depth(*deepest)) + " into " + deepest->name;
}

std::vector<Safety::Floor> Safety::FloorsAt(double module) const {
  if (const auto slot = around_.SlotBelow()) return FloorsOfSlot(*slot, module);
  const StagePlace* const rackPlace = around_.RackBelow();
  if (rackPlace != nullptr) return FloorsOfRack(*rackPlace, module);
  std::vector<Floor> floors;
  const double lowest = module - heights_.HangDepth(world_.module.head, world_.module.tip);
  const Point here = around_.Here();
  for (const Obstacle& obstacle : around_.Obstacles()) {
    if (LeadsOver(here, here, obstacle)) floors.push_back({obstacle.name, obstacle.top, lowest});
  }
  return floors;
}

std::vector<Safety::Floor> Safety::FloorsOfSlot(std::size_t number, double module) const {
  const auto& slot = machine_.slots.at(number);
  const HeadType* const standing = world_.stage.HeadIn(number);
  const HeadType* const hanging = world_.module.head;
  const TipType* const tip = world_.module.tip;
  const double lowest = module - heights_.HangDepth(hanging, tip);
  std::vector<Floor> floors;
  AddSlider(floors, slot.lower, slot.name, lowest);
  if (hanging == nullptr) {
    if (standing == nullptr) {
      floors.push_back({slot.name, slot.floor, module});
    } else {
      floors.push_back({standing->Name + " in " + slot.name,
                        heights_.SeatToCollect(slot, *standing) - Heights::SeatTolerance, module});
    }
    return floors;
  }
  if (standing != nullptr) {
    floors.push_back({standing->Name + " in " + slot.name, heights_.Seat(slot, *standing), lowest});
    return floors;
  }
  const double seat = std::min(heights_.SeatToEject(slot, *hanging), heights_.SeatToCollect(slot, *hanging));
  floors.push_back({"the seat of " + slot.name, seat - Heights::SeatTolerance, module});
  if (tip != nullptr) floors.push_back({"the stage below " + slot.name, heights_.Stage(slot.lower), lowest});
  return floors;
}

std::vector<Safety::Floor> Safety::FloorsOfRack(const StagePlace& place, double module) const {
  const Rack& rack = *world_.stage.RackOn(place.name);
  const HeadType& head = *world_.module.head;
  const TipType* const tip = world_.module.tip;
  const double stage = heights_.Stage(place.lower);
  const double rim = stage + rack.plate->PlateHeight;
  const double headEnd = module - heights_.HeadDepth(head);
  const double lowest = module - heights_.HangDepth(&head, tip);
  const std::string name = rack.plate->Name + " on " + place.caption;
  std::vector<Floor> floors;
  AddSlider(floors, place.lower, place.caption, lowest);
  const bool fits = rack.tip != nullptr && rack.tip->Kind == head.Kind && (tip == nullptr || tip == rack.tip);
  if (!fits) {
    floors.push_back({"the rim of " + name, rim, lowest});
  } else if (tip != nullptr) {
    floors.push_back({"the tips of " + name, rim + rack.tip->EjectHeight - Heights::SeatTolerance, headEnd});
    floors.push_back({"the stage at " + place.caption, stage, lowest});
  } else {
    floors.push_back({"the tips of " + name, rim - rack.tip->CollectDepth - Heights::SeatTolerance, headEnd});
    // The tip comes along as soon as the head has it.
    const bool collects = headEnd <= rim - rack.tip->CollectDepth + Heights::SeatTolerance;
    if (collects) floors.push_back({"the stage at " + place.caption, stage, headEnd - rack.tip->TipLength});
  }
  return floors;
}

void Safety::AddSlider(std::vector<Floor>& floors, bool lower, const std::string& where, double lowestPoint) const {
  if (around_.SliderCovers(lower)) {
    floors.push_back({"the closed slider over " + where, heights_.Stage(false), lowestPoint});
  }
}

}  // namespace Helmsway
