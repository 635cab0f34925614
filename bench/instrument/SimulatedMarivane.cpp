#include "bench/instrument/SimulatedMarivane.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace Helmsway {
namespace {

Answer Refused(std::string reason) { return {Answer::Result::Refused, {}, std::move(reason)}; }

Answer Accepted(std::string reply) { return {Answer::Result::Ok, std::move(reply), {}}; }

Answer Failed() { return {Answer::Result::Failed, {}, {}}; }

std::string Called(Axis axis) { return "axis " + std::string(NameOf(axis)); }

bool IsSideways(Axis axis) { return axis != Axis::Z && axis != Axis::S; }

/// What the instrument answers in local mode too.
bool IsQuestion(const Command& command) {
  return std::holds_alternative<AskRevision>(command) || std::holds_alternative<AskSliderState>(command);
}

}  // namespace

SimulatedMarivane::SimulatedMarivane(MachineDescription description)
    : description_(std::move(description)),
      heights_(description_),
      world_(StartOf(description_)),
      safety_(description_, heights_, world_),
      syringe_(description_, heights_, world_) {}

void SimulatedMarivane::Begin(std::string_view line) {
  line_.emplace();
  auto read = ReadCommandLine(line);
  std::string reason = read.command ? WhyNot(*read.command) : std::move(read.reason);
  if (reason.empty()) {
    line_->command = std::move(read.command);
  } else {
    line_->answer = Refused(std::move(reason));
  }
}

Seconds SimulatedMarivane::TimeToEnd(bool /*stopRequested*/) const {
  if (!line_ || !line_->command) return Seconds{0};
  const Command& command = *line_->command;
  if (!WillStall()) return DurationOf(command);
  const auto* const move = std::get_if<MoveAxis>(&command);
  return move == nullptr ? DurationOf(command) / 2 : world_.motion.TimeTo(move->axis, HalfWay(*move));
}

Answer SimulatedMarivane::End(bool stopRequested) {
  if (!line_) return Failed();
  now_ += TimeToEnd(stopRequested);
  const bool stalls = WillStall();
  const Line line = *std::exchange(line_, std::nullopt);
  if (!line.command) return line.answer;
  if (stalls) {
    stallNext_ = false;
    return Refused(StallIn(*line.command));
  }
  return Accepted(std::visit([this](const auto& command) { return Perform(command); }, *line.command));
}

std::string SimulatedMarivane::WhyNot(const Command& command) const {
  if (!remote_ && !IsQuestion(command)) return "the instrument is not in remote mode";
  return std::visit([this](const auto& known) { return WhyNot(known); }, command);
}

std::string SimulatedMarivane::WhyAxisLacks(Axis axis) const {
  return world_.motion.Has(axis) ? "" : "this model has no " + Called(axis);
}

std::string SimulatedMarivane::WhySliderLacks() const {
  return description_.hasSlider ? "" : "this model has no slider";
}

std::string SimulatedMarivane::WhyNot(const HomeS& /*command*/) const { return WhyAxisLacks(Axis::S); }

std::string SimulatedMarivane::WhyNot(const MoveAxis& command) const {
  const auto [axis, target] = command;
  auto lacks = WhyAxisLacks(axis);
  if (!lacks.empty()) return lacks;
  if (!world_.motion.Homed(axis)) return Called(axis) + " is not homed";
  const auto& limits = description_.axes.at(axis);
  if (target < limits.low || target > limits.high) {
    return Called(axis) + " can't go to " + std::to_string(target) + ", its limits are " + std::to_string(limits.low) +
           " and " + std::to_string(limits.high);
  }
  if (target == world_.motion.At(axis)) return {};
  if (IsSideways(axis)) return safety_.WhyNotSideways(axis, target);
  if (axis == Axis::S) return syringe_.WhyNotRelease(target);
  const std::string hit = safety_.RunsInto(target);
  if (hit.empty() || world_.zCollisionDetection == CollisionDetection::Off) return {};
  return Called(axis) + " can't go to " + std::to_string(target) + ": it would run " + hit;
}

std::string SimulatedMarivane::WhyNot(const MoveSlider& command) const {
  auto lacks = WhySliderLacks();
  return lacks.empty() ? safety_.WhyNotSlider(command.target) : lacks;
}

std::string SimulatedMarivane::WhyNot(const SetSpeed& command) const { return WhyAxisLacks(command.axis); }

std::string SimulatedMarivane::WhyNot(const SetZCollisionDetection& /*command*/) const { return WhyAxisLacks(Axis::Z); }

std::string SimulatedMarivane::WhyNot(const AskSliderState& /*command*/) const { return WhySliderLacks(); }

std::string SimulatedMarivane::Perform(const HomeAll& /*command*/) {
  world_.motion.HomeAll();
  return {};
}

std::string SimulatedMarivane::Perform(const HomeS& /*command*/) {
  world_.motion.Home(Axis::S);
  return {};
}

std::string SimulatedMarivane::Perform(const MoveAxis& command) {
  const auto [axis, target] = command;
  if (axis == Axis::S) {
    const auto release = syringe_.ReleaseAt(target);
    const bool blocked = !syringe_.WhyNotRelease(target).empty();
    world_.motion.Go(axis, target);
    if (!blocked) LetGo(release);
    return {};
  }
  const bool down = axis == Axis::Z && heights_.ModuleAt(target) < heights_.ModuleAt(world_.motion.At(Axis::Z));
  if (down) {
    const std::string hit = safety_.RunsInto(target);
    if (!hit.empty()) world_.damage.push_back("MOVE Z " + std::to_string(target) + " ran " + hit);
  }
  world_.motion.Go(axis, target);
  if (down) TakeUp();
  return {};
}

void SimulatedMarivane::TakeUp() {
  const Surroundings around(description_, heights_, world_);
  const double module = heights_.ModuleAt(world_.motion.At(Axis::Z));
  Module& hanging = world_.module;
  if (hanging.head == nullptr) {
    const auto slot = around.SlotBelow();
    const HeadType* const head = slot ? world_.stage.HeadIn(*slot) : nullptr;
    if (head == nullptr) return;
    const double seat = heights_.SeatToCollect(description_.slots.at(*slot), *head);
    if (module > seat + Heights::SeatTolerance) return;
    world_.stage.TakeAway(*head);
    hanging.head = head;
    return;
  }
  const auto* const place = around.RackBelow();
  if (hanging.tip != nullptr || place == nullptr) return;
  const Rack& rack = *world_.stage.RackOn(place->name);
  if (rack.tip == nullptr || rack.tip->Kind != hanging.head->Kind) return;
  const double collecting = heights_.Stage(place->lower) + rack.plate->PlateHeight - rack.tip->CollectDepth;
  if (module - heights_.HeadDepth(*hanging.head) <= collecting + Heights::SeatTolerance) hanging.tip = rack.tip;
}

void SimulatedMarivane::LetGo(Syringe::Release release) {
  const Surroundings around(description_, heights_, world_);
  switch (release) {
    case Syringe::Release::Nothing:
      return;
    case Syringe::Release::Tip:
      world_.module.tip = nullptr;
      return;
    case Syringe::Release::HeadInSlot:
      world_.stage.Put(around.SlotBelow().value(), *world_.module.head);
      break;
    case Syringe::Release::HeadOnStage:
      world_.stage.Drop(*world_.module.head);
      break;
  }
  world_.module = {};
}

std::string SimulatedMarivane::Perform(const MoveSlider& command) {
  world_.slider = command.target;
  return {};
}

std::string SimulatedMarivane::Perform(const SetSpeed& command) {
  world_.motion.SetSpeed(command.axis, command.speed);
  return {};
}

std::string SimulatedMarivane::Perform(const SetZCollisionDetection& command) {
  world_.zCollisionDetection = command.detection;
  return {};
}

std::string SimulatedMarivane::Perform(const SetCalibration& command) {
  pending_.insert_or_assign(command.name, command.value);
  return {};
}

std::string SimulatedMarivane::Perform(const SaveCalibration& /*command*/) {
  for (const auto& [name, value] : pending_) calibrationMemory_.insert_or_assign(name, value);
  pending_.clear();
  return {};
}

std::string SimulatedMarivane::Perform(const AskSliderState& /*command*/) const {
  return world_.slider == SliderState::Closed ? "SLIDER CLOSED" : "SLIDER OPEN";
}

std::string SimulatedMarivane::Perform(const AskRevision& /*command*/) const {
  return description_.firmware.empty() ? "MARIVANE" : "MARIVANE " + description_.firmware;
}

bool SimulatedMarivane::ReallyMoves(const Command& command) const {
  if (const auto* const move = std::get_if<MoveAxis>(&command)) return world_.motion.At(move->axis) != move->target;
  if (const auto* const slide = std::get_if<MoveSlider>(&command)) return world_.slider != slide->target;
  return std::holds_alternative<HomeAll>(command) || std::holds_alternative<HomeS>(command);
}

Seconds SimulatedMarivane::DurationOf(const Command& command) const {
  if (!ReallyMoves(command)) return Seconds{0};
  if (const auto* const move = std::get_if<MoveAxis>(&command)) return world_.motion.TimeTo(move->axis, move->target);
  if (std::holds_alternative<MoveSlider>(command)) return Motion::SliderTime;
  return std::holds_alternative<HomeS>(command) ? Motion::HomeSTime : Motion::HomeAllTime;
}

bool SimulatedMarivane::WillStall() const {
  return stallNext_ && line_ && line_->command && ReallyMoves(*line_->command);
}

std::int32_t SimulatedMarivane::HalfWay(const MoveAxis& command) const {
  return static_cast<std::int32_t>((std::int64_t{world_.motion.At(command.axis)} + command.target) / 2);
}

std::vector<Travel> SimulatedMarivane::Travels() const {
  if (!line_ || !line_->command) return {};
  const Motion& motion = world_.motion;
  const auto travel = [&](Axis axis, std::int32_t to) {
    return Travel{std::string(NameOf(axis)), motion.At(axis), to};
  };
  if (const auto* const move = std::get_if<MoveAxis>(&*line_->command)) {
    return {travel(move->axis, WillStall() ? HalfWay(*move) : move->target)};
  }
  // A homing that stalls leaves the axes where they were.
  if (WillStall()) return {};
  if (std::holds_alternative<HomeS>(*line_->command)) return {travel(Axis::S, motion.HomeOf(Axis::S))};
  if (!std::holds_alternative<HomeAll>(*line_->command)) return {};
  std::vector<Travel> travels;
  for (const auto& [axis, state] : motion.Axes()) travels.push_back(travel(axis, motion.HomeOf(axis)));
  return travels;
}

std::string SimulatedMarivane::StallIn(const Command& command) {
  Motion& motion = world_.motion;
  if (const auto* const move = std::get_if<MoveAxis>(&command)) {
    const auto from = motion.At(move->axis);
    motion.Go(move->axis, HalfWay(*move));
    motion.Lose(move->axis);
    return Called(move->axis) + " stalled half-way from " + std::to_string(from) + " to " +
           std::to_string(move->target) + ", and must be homed";
  }
  if (std::holds_alternative<MoveSlider>(command)) return "the slider stalled half-way and went back";
  if (std::holds_alternative<HomeS>(command)) {
    motion.Lose(Axis::S);
    return "axis S stalled on its way home";
  }
  for (const auto& [axis, description] : description_.axes) motion.Lose(axis);
  return "the axes stalled on their way home";
}

void SimulatedMarivane::Stall() { stallNext_ = true; }

void SimulatedMarivane::PowerCycle() {
  if (line_) *line_ = {std::nullopt, Failed()};
  world_.motion.Forget();
  world_.zCollisionDetection = CollisionDetection::On;
  pending_.clear();
  stallNext_ = false;
}

}  // namespace Helmsway
