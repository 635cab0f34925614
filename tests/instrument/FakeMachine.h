#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/instrument/CommandLine.h"
#include "bench/instrument/Machine.h"

namespace Helmsway {

/// A machine with an S axis and nothing else, which does at once what it is told and notes how it is treated. Each line
/// takes a second.
class FakeMachine final : public IMachine {
 public:
  explicit FakeMachine(std::string head) {
    state_.axes = {{"S", std::nullopt, 100, 0}};
    state_.head = std::move(head);
  }

  void Begin(std::string_view line) override {
    Notes.push_back("begin " + std::string(line));
    line_ = line;
    off_ = false;
  }

  Answer End(bool stopRequested) override {
    state_.time += TimeToEnd(stopRequested);
    if (off_) return {Answer::Result::Failed, "", "off"};
    const auto command = ReadCommandLine(line_).command;
    if (!command) return {Answer::Result::Refused, "", "unknown"};
    std::optional<std::int32_t>& s = state_.axes.front().position;
    if (std::holds_alternative<HomeAll>(*command) || std::holds_alternative<HomeS>(*command)) s = 0;
    const auto* const move = std::get_if<MoveAxis>(&*command);
    if (move != nullptr && move->axis == Axis::S) s = std::exchange(stalled_, false) ? move->target / 2 : move->target;
    if (const auto* const set = std::get_if<SetCalibration>(&*command)) state_.pending[set->name] = set->value;
    if (std::holds_alternative<SaveCalibration>(*command)) state_.memory.merge(std::exchange(state_.pending, {}));
    return {Answer::Result::Ok, std::holds_alternative<AskSliderState>(*command) ? "SLIDER CLOSED" : "", ""};
  }

  Seconds TimeToEnd(bool /*stopRequested*/) const override { return off_ ? Seconds{0} : Seconds{1}; }
  std::vector<Travel> Travels() const override { return {}; }
  const CalibrationValues& CalibrationMemory() const override { return state_.memory; }
  MachineState State() const override { return state_; }
  Seconds Now() const override { return state_.time; }
  void Pass(Seconds time) override { state_.time += time; }
  void Stall() override { stalled_ = true; }
  void PowerCycle() override {
    off_ = true;
    state_.pending.clear();
    state_.axes.front().position.reset();
  }
  void Remember(const CalibrationValues& values) override { state_.memory = values; }
  void SetRemote(bool remote) override { state_.remote = remote; }
  void LoadRack(const std::string& position, const std::string& plate, const std::string& tip) override {
    Notes.push_back("rack " + position + " " + plate + " " + tip);
  }
  void PutOnModule(const std::string& headItem) override { Notes.push_back("module " + headItem); }
  void PutInNest(const std::string& nest, const std::string& head) override {
    Notes.push_back("nest " + nest + " " + head);
  }
  void ClearNest(const std::string& nest) override { Notes.push_back("empty nest " + nest); }
  void ClearStage(const std::string& position) override { Notes.push_back("clear " + position); }

  std::vector<std::string> Notes;

 private:
  MachineState state_;
  std::string line_;
  bool off_ = false;
  bool stalled_ = false;
};

}  // namespace Helmsway
