// What the operator does with their hands, and what can be seen of the machine.
#include <algorithm>

#include "bench/instrument/SimulatedMarivane.h"

namespace Helmsway {
namespace {

std::string NameOrEmpty(const HeadType* head) { return head == nullptr ? "empty" : head->Name; }

}  // namespace

void SimulatedMarivane::LoadRack(const std::string& positionItem, const std::string& plateItem,
                                 const std::string& tipItem) {
  const auto place = std::find_if(description_.places.begin(), description_.places.end(),
                                  [&](const auto& candidate) { return candidate.item == positionItem; });
  if (place == description_.places.end()) return;
  ClearStage(place->name);
  const PlateType* const plate = PlateOf(description_, plateItem);
  if (plate != nullptr) world_.stage.PutRack(place->name, {plate, TipOf(description_, tipItem)});
}

void SimulatedMarivane::PutOnModule(const std::string& headItem) {
  const HeadType* const head = HeadOf(description_, headItem);
  if (head != nullptr && (head == world_.module.head || world_.stage.InSomeSlot(*head))) return;
  if (head != nullptr) world_.stage.TakeAway(*head);
  world_.module = {head, nullptr};
}

void SimulatedMarivane::PutInNest(const std::string& nestItem, const std::string& headItem) {
  const HeadType* const head = HeadOf(description_, headItem);
  if (head == nullptr || head == world_.module.head) return;
  // As the sequences choose: slot 1 or 2 by the head's shape, else slot 3.
  const auto& slots = description_.slots;
  std::optional<std::size_t> found;
  for (std::size_t i = 0; i < slots.size() && !found; ++i) {
    const bool takes = slots[i].headCode == head->HeadCode || slots[i].number == "3";
    if (slots[i].nestItem == nestItem && takes) found = i;
  }
  if (!found || world_.stage.HeadIn(*found) == head) return;
  world_.stage.TakeAway(*head);
  world_.stage.Put(*found, *head);
}

void SimulatedMarivane::ClearNest(const std::string& nestItem) {
  for (std::size_t i = 0; i < description_.slots.size(); ++i) {
    if (description_.slots[i].nestItem == nestItem) world_.stage.Empty(i);
  }
}

void SimulatedMarivane::ClearStage(const std::string& positionName) {
  world_.stage.TakeRack(positionName);
  if (positionName == description_.ejectPlace) world_.stage.TakeEjected();
}

MachineState SimulatedMarivane::State() const {
  MachineState state;
  state.time = now_;
  state.remote = remote_;
  for (const auto& [axis, axisState] : world_.motion.Axes()) {
    const auto position = axisState.homed ? std::optional(axisState.at) : std::nullopt;
    state.axes.push_back({std::string(NameOf(axis)), position, axisState.speed, axisState.at});
  }
  state.slider = !description_.hasSlider ? "none" : world_.slider == SliderState::Open ? "open" : "closed";
  state.zCollisionDetection = world_.zCollisionDetection == CollisionDetection::On;
  if (world_.module.head != nullptr) state.head = world_.module.head->Name;
  if (world_.module.tip != nullptr) state.tip = world_.module.tip->Name;
  for (std::size_t i = 0; i < description_.slots.size(); ++i) {
    state.places.push_back({description_.slots[i].name, NameOrEmpty(world_.stage.HeadIn(i))});
  }
  for (const auto& place : description_.places) {
    const bool takesHeads = place.name == description_.ejectPlace;
    if (!place.takesRacks && !takesHeads) continue;
    const Rack* const rack = world_.stage.RackOn(place.name);
    const bool holdsHead = takesHeads && world_.stage.Ejected() != nullptr;
    state.places.push_back({place.caption, holdsHead         ? world_.stage.Ejected()->Name
                                           : rack != nullptr ? rack->plate->Name
                                                             : "empty"});
  }
  state.pending = pending_;
  state.memory = calibrationMemory_;
  state.damage = world_.damage;
  return state;
}

}  // namespace Helmsway
