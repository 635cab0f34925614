#include "bench/instrument/World.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace Helmsway {
namespace {

template <class Entry>
const Entry* Find(const std::vector<Entry>& entries, const std::string& item, std::string Entry::*number) {
  const auto found =
      std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) { return entry.*number == item; });
  return found == entries.end() ? nullptr : &*found;
}

const HeadType* ToolOf(const MachineDescription& machine) {
  const auto found = std::find_if(machine.heads.begin(), machine.heads.end(), OrvelCalibrateS::IsTeachTool);
  return found == machine.heads.end() ? nullptr : &*found;
}

/// The slot that the nest says is the tool's; where no nest says so, the last one of its shape.
std::optional<std::size_t> SlotOfTool(const MachineDescription& machine) {
  const HeadType* const tool = ToolOf(machine);
  std::optional<std::size_t> last;
  for (std::size_t i = 0; tool != nullptr && i < machine.slots.size(); ++i) {
    if (machine.slots[i].headCode != tool->HeadCode) continue;
    last = i;
    if (tool->Name.starts_with(machine.slots[i].headName)) return last;
  }
  return last;
}

void FillSlots(World& world, const MachineDescription& machine) {
  const auto toolSlot = SlotOfTool(machine);
  const HeadType* const tool = ToolOf(machine);
  for (const HeadType& head : machine.heads) {
    if (&head == world.module.head || &head == tool) continue;
    for (std::size_t i = 0; i < machine.slots.size(); ++i) {
      if (toolSlot == i || machine.slots[i].headCode != head.HeadCode || world.stage.HeadIn(i) != nullptr) continue;
      world.stage.Put(i, head);
      break;
    }
  }
}

}  // namespace

const HeadType* HeadOf(const MachineDescription& machine, const std::string& item) {
  return Find(machine.heads, item, &HeadType::Index);
}

const TipType* TipOf(const MachineDescription& machine, const std::string& item) {
  return Find(machine.tips, item, &TipType::Item);
}

const PlateType* PlateOf(const MachineDescription& machine, const std::string& item) {
  return Find(machine.plates, item, &PlateType::Item);
}

World StartOf(const MachineDescription& machine) {
  World world{Motion(machine), Stage(machine), {}, SliderState::Closed, CollisionDetection::On, {}};
  world.module.head = HeadOf(machine, machine.installedHead);
  if (world.module.head == nullptr) world.module.head = ToolOf(machine);
  if (world.module.head != nullptr) world.module.tip = TipOf(machine, machine.installedTip);
  FillSlots(world, machine);
  return world;
}

}  // namespace Helmsway
