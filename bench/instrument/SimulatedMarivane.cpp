#include "bench/instrument/SimulatedMarivane.h"

#include <utility>
#include <variant>

namespace Helmsway {
namespace {

Answer Refused(std::string reason) { return {Answer::Result::Refused, {}, std::move(reason)}; }

Answer Accepted(std::string reply) { return {Answer::Result::Ok, std::move(reply), {}}; }

SimulatedMarivane::WorkingState PowerOnState(const MachineDescription& description) {
  SimulatedMarivane::WorkingState state;
  for (const auto& [axis, limits] : description.axes) state.axes.try_emplace(axis);
  return state;
}

/// Where an axis stands once it is homed: at 0, or as near to it as it comes.
std::int32_t HomePosition(const MachineDescription::Limits& limits) {
  if (limits.low > 0) return limits.low;
  if (limits.high < 0) return limits.high;
  return 0;
}

std::string Called(Axis axis) { return "axis " + std::string(NameOf(axis)); }

}  // namespace

SimulatedMarivane::SimulatedMarivane(MachineDescription description)
    : description_(std::move(description)), state_(PowerOnState(description_)) {}

Answer SimulatedMarivane::Execute(std::string_view line) {
  const auto read = ReadCommandLine(line);
  if (!read.command) return Refused(read.reason);
  const auto execute = [this](const auto& command) {
    auto reason = WhyNot(command);
    return reason.empty() ? Accepted(Perform(command)) : Refused(std::move(reason));
  };
  return std::visit(execute, *read.command);
}

const CalibrationValues& SimulatedMarivane::CalibrationMemory() const { return calibrationMemory_; }

void SimulatedMarivane::PowerCycle() { state_ = PowerOnState(description_); }

const SimulatedMarivane::WorkingState& SimulatedMarivane::State() const { return state_; }

std::string SimulatedMarivane::WhyAxisLacks(Axis axis) const {
  return description_.axes.contains(axis) ? "" : "this model has no " + Called(axis);
}

std::string SimulatedMarivane::WhySliderLacks() const {
  return description_.hasSlider ? "" : "this model has no slider";
}

std::string SimulatedMarivane::WhyNot(const HomeS& /*command*/) const { return WhyAxisLacks(Axis::S); }

std::string SimulatedMarivane::WhyNot(const MoveAxis& command) const {
  auto lacks = WhyAxisLacks(command.axis);
  if (!lacks.empty()) return lacks;
  if (!state_.axes.at(command.axis).position) return Called(command.axis) + " is not homed";
  const auto& limits = description_.axes.at(command.axis);
  if (command.target >= limits.low && command.target <= limits.high) return {};
  return Called(command.axis) + " can't go to " + std::to_string(command.target) + ", its limits are " +
         std::to_string(limits.low) + " and " + std::to_string(limits.high);
}

std::string SimulatedMarivane::WhyNot(const MoveSlider& /*command*/) const { return WhySliderLacks(); }

std::string SimulatedMarivane::WhyNot(const SetSpeed& command) const { return WhyAxisLacks(command.axis); }

std::string SimulatedMarivane::WhyNot(const SetZCollisionDetection& /*command*/) const { return WhyAxisLacks(Axis::Z); }

std::string SimulatedMarivane::WhyNot(const AskSliderState& /*command*/) const { return WhySliderLacks(); }

void SimulatedMarivane::Home(Axis axis) { state_.axes.at(axis).position = HomePosition(description_.axes.at(axis)); }

std::string SimulatedMarivane::Perform(const HomeAll& /*command*/) {
  for (const auto& [axis, limits] : description_.axes) Home(axis);
  return {};
}

std::string SimulatedMarivane::Perform(const HomeS& /*command*/) {
  Home(Axis::S);
  return {};
}

std::string SimulatedMarivane::Perform(const MoveAxis& command) {
  state_.axes.at(command.axis).position = command.target;
  return {};
}

std::string SimulatedMarivane::Perform(const MoveSlider& command) {
  state_.slider = command.target;
  return {};
}

std::string SimulatedMarivane::Perform(const SetSpeed& command) {
  state_.axes.at(command.axis).speed = command.speed;
  return {};
}

std::string SimulatedMarivane::Perform(const SetZCollisionDetection& command) {
  state_.zCollisionDetection = command.detection;
  return {};
}

std::string SimulatedMarivane::Perform(const SetCalibration& command) {
  state_.pendingCalibration.insert_or_assign(command.name, command.value);
  return {};
}

std::string SimulatedMarivane::Perform(const SaveCalibration& /*command*/) {
  for (const auto& [name, value] : state_.pendingCalibration) calibrationMemory_.insert_or_assign(name, value);
  state_.pendingCalibration.clear();
  return {};
}

std::string SimulatedMarivane::Perform(const AskSliderState& /*command*/) const {
  return state_.slider == SliderState::Closed ? "SLIDER CLOSED" : "SLIDER OPEN";
}

std::string SimulatedMarivane::Perform(const AskRevision& /*command*/) const {
  return description_.firmware.empty() ? "MARIVANE" : "MARIVANE " + description_.firmware;
}

}  // namespace Helmsway
