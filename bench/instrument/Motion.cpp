#include "bench/instrument/Motion.h"

#include <algorithm>
#include <cmath>

namespace Helmsway {

Motion::Motion(const MachineDescription& machine) : machine_(machine) {
  for (const auto& [axis, description] : machine.axes) Home(axis);
  Forget();
}

std::int32_t Motion::At(Axis axis) const {
  const auto found = axes_.find(axis);
  return found == axes_.end() ? 0 : found->second.at;
}

Target Motion::Where() const { return {At(Axis::X), At(Axis::Y), At(Axis::SdX), At(Axis::SdY)}; }

Seconds Motion::TimeTo(Axis axis, std::int32_t target) const {
  const double distance = std::abs(static_cast<double>(target) - At(axis));
  return Seconds(distance / axes_.at(axis).speed);
}

std::int32_t Motion::HomeOf(Axis axis) const {
  const auto& limits = machine_.axes.at(axis);
  return std::max(limits.low, std::min(limits.high, 0));
}

void Motion::Home(Axis axis) {
  AxisState& state = axes_[axis];
  state.at = HomeOf(axis);
  state.homed = true;
}

void Motion::HomeAll() {
  for (const auto& [axis, description] : machine_.axes) Home(axis);
}

void Motion::Forget() {
  for (auto& [axis, state] : axes_) {
    state.homed = false;
    state.speed = machine_.axes.at(axis).speed;
  }
}

}  // namespace Helmsway
