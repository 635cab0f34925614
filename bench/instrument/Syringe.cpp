#include "bench/instrument/Syringe.h"

#include <algorithm>
#include <utility>

#include "bench/instrument/DescribeMachine.h"

namespace Helmsway {
namespace {

/// Half-way from the S position to the one that ejects the head, the catch is open.
bool LetsGoOf(const HeadType& head, std::int32_t s) {
  const double stroke = static_cast<double>(head.EjectSPosition) - head.SPosition;
  if (stroke == 0) return false;
  const double done = static_cast<double>(s) - head.SPosition;
  return done / stroke >= 0.5;
}

/// Half the stroke, counted from where S stands to collect a tip, pushes the tip off.
bool PushesTipOff(const HeadType& head, const MachineDescription::AxisDescription& axis, std::int32_t s) {
  const double collecting = head.SPosition + 2 * axis.moveSign * head.SDTeachToolOffset;
  const double stroke = head.SPositionMM / axis.mmPerStep;
  return (s - collecting) * axis.offsetSign >= stroke / 2;
}

}  // namespace

std::vector<HeadType> Syringe::KnownHeads() const {
  std::vector<HeadType> known{*world_.module.head};
  if (machine_.file.empty()) return known;
  for (HeadType& head : ReadHeads(machine_.file)) {
    if (head.Index == known.front().Index) known.push_back(std::move(head));
  }
  return known;
}

bool Syringe::TipComesOff(std::int32_t sTarget) const {
  const auto* const place = around_.RackBelow();
  const auto axis = machine_.axes.find(Axis::S);
  if (world_.module.tip == nullptr || place == nullptr || axis->second.mmPerStep == 0) return false;
  const bool ejects = (static_cast<double>(sTarget) - world_.motion.At(Axis::S)) * axis->second.offsetSign > 0;
  const double rim = heights_.Stage(place->lower) + world_.stage.RackOn(place->name)->plate->PlateHeight;
  // A tip that isn't down in the rack would fall beside its place; the stroke stops at the way there.
  if (!ejects || around_.LowestPoint() >= rim) return false;
  const auto known = KnownHeads();
  return std::any_of(known.begin(), known.end(),
                     [&](const HeadType& head) { return PushesTipOff(head, axis->second, sTarget); });
}

bool Syringe::IsInSeat() const {
  const auto number = around_.SlotBelow();
  if (!number) return false;
  const double seat = heights_.SeatToEject(machine_.slots.at(*number), *world_.module.head);
  return heights_.ModuleAt(world_.motion.At(Axis::Z)) <= seat + Heights::SeatTolerance;
}

Syringe::Release Syringe::ReleaseAt(std::int32_t sTarget) const {
  if (world_.module.head == nullptr) return Release::Nothing;
  if (TipComesOff(sTarget)) return Release::Tip;
  const bool inSeat = IsInSeat();
  if (!inSeat && !around_.IsOverEjectPlace()) return Release::Nothing;
  const auto known = KnownHeads();
  const bool letsGo =
      std::any_of(known.begin(), known.end(), [&](const HeadType& head) { return LetsGoOf(head, sTarget); });
  if (!letsGo) return Release::Nothing;
  return inSeat ? Release::HeadInSlot : Release::HeadOnStage;
}

std::string Syringe::Occupant(Release release) const {
  if (release == Release::HeadInSlot) {
    const std::size_t number = around_.SlotBelow().value();
    const HeadType* const head = world_.stage.HeadIn(number);
    return head == nullptr ? "" : head->Name + " stands in " + machine_.slots.at(number).name;
  }
  if (release == Release::HeadOnStage) {
    const auto place = std::find_if(machine_.places.begin(), machine_.places.end(),
                                    [&](const auto& candidate) { return candidate.name == machine_.ejectPlace; });
    const HeadType* const head = world_.stage.Ejected();
    if (head != nullptr) return head->Name + " lies on " + place->caption;
    const Rack* const rack = world_.stage.RackOn(place->name);
    if (rack != nullptr) return rack->plate->Name + " stands on " + place->caption;
  }
  return {};
}

std::string Syringe::WhyNotRelease(std::int32_t sTarget) const {
  const std::string occupant = Occupant(ReleaseAt(sTarget));
  if (occupant.empty()) return {};
  return "axis S can't go to " + std::to_string(sTarget) + ": this ejects " + world_.module.head->Name + ", and " +
         occupant;
}

}  // namespace Helmsway
