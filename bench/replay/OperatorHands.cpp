#include "bench/replay/OperatorHands.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace Helmsway {
namespace {

/// The item numbers behind the selected entries; empty when a list has no selection.
template <std::size_t Count>
std::optional<std::array<std::int32_t, Count>> Picked(const forms::ISurface& form,
                                                      const std::array<std::string_view, Count>& lists) {
  std::array<std::int32_t, Count> items{};
  for (std::size_t i = 0; i < Count; ++i) {
    const forms::ControlId list = form.Find(lists[i], forms::NoIndex);
    const std::int32_t entry = form.State(list).listIndex;
    if (entry < 0) return std::nullopt;
    items[i] = form.ItemData(list, entry);
  }
  return items;
}

constexpr std::array<std::string_view, 3> RackLists = {"cboPosition", "cboTipRack", "cboTipType"};
constexpr std::array<std::string_view, 2> HeadLists = {"cboNestType", "cboHeadType"};

}  // namespace

void OperatorHands::LoadPickedRack(const forms::ISurface& form, IMachine& machine) {
  const auto picked = Picked(form, RackLists);
  if (!picked || *picked == rack_) return;
  rack_ = *picked;
  machine.LoadRack(std::to_string(rack_[0]), std::to_string(rack_[1]), std::to_string(rack_[2]));
}

void OperatorHands::LoadRequirements(const forms::ISurface& form, IMachine& machine) {
  if (const auto head = Picked(form, HeadLists)) {
    machine.PutInNest(std::to_string((*head)[0]), std::to_string((*head)[1]));
  }
  rack_ = {};
  LoadPickedRack(form, machine);
}

void OperatorHands::EmptyPickedNest(const forms::ISurface& form, IMachine& machine) {
  constexpr std::array<std::string_view, 1> nestList = {"cboNestType"};
  if (const auto nest = Picked(form, nestList)) machine.ClearNest(std::to_string(nest->front()));
}

void OperatorHands::ClearEjectPosition(IMachine& machine) {
  const MachineState state = machine.State();
  const bool hasX = std::any_of(state.axes.begin(), state.axes.end(),
                                [](const MachineState::AxisState& axis) { return axis.name == "X"; });
  machine.ClearStage(hasX ? "STAGE6" : "STAGE2");
}

}  // namespace Helmsway
