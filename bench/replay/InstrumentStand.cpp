#include "bench/replay/InstrumentStand.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "bench/instrument/AcceptingInstrument.h"
#include "bench/instrument/DescribeMachine.h"
#include "bench/instrument/SimulatedMarivane.h"
#include "bench/replay/ScriptWords.h"

namespace Helmsway {
namespace {

/// How long a silent instrument is waited for when the script doesn't say.
constexpr Seconds Patience{60};

struct FaultWord {
  std::string_view word;
  FaultKind kind;
};

constexpr auto FaultWords = std::to_array<FaultWord>({
    {"refuse", FaultKind::Refuse},
    {"fail", FaultKind::Fail},
    {"late", FaultKind::Late},
    {"silent", FaultKind::Silent},
    {"link", FaultKind::Link},
    {"garble", FaultKind::Garble},
    {"stall", FaultKind::Stall},
    {"power-cycle", FaultKind::PowerCycle},
});

Fault FaultOf(const Action& action) {
  const auto* const row = std::find_if(FaultWords.begin(), FaultWords.end(),
                                       [&](const FaultWord& known) { return known.word == action.arguments[0]; });
  if (row == FaultWords.end()) throw ScriptMistake("there is no fault " + action.arguments[0]);
  Fault fault{row->kind, action.arguments[1], static_cast<std::size_t>(action.number), Seconds{action.seconds}};
  if (fault.kind == FaultKind::Silent && action.seconds == 0) fault.time = Patience;
  return fault;
}

}  // namespace

InstrumentStand::InstrumentStand(InstrumentKind kind, std::filesystem::path marivaneIni)
    : kind_(kind), marivaneIni_(std::move(marivaneIni)) {}

void InstrumentStand::Make() {
  if (instrument_) return;
  if (kind_ == InstrumentKind::Accepting) {
    instrument_ = std::make_unique<AcceptingInstrument>();
    return;
  }
  auto machine = std::make_unique<SimulatedMarivane>(DescribeMachine(marivaneIni_));
  auto training = std::make_unique<TrainingInstrument>(std::move(machine), DescribeSyringe(marivaneIni_), seed_);
  for (Fault& fault : planned_) training->Plan(std::move(fault));
  planned_.clear();
  training_ = training.get();
  instrument_ = std::move(training);
}

IInstrument& InstrumentStand::Instrument() {
  Make();
  return *instrument_;
}

TrainingInstrument& InstrumentStand::Training() {
  Make();
  if (training_ == nullptr) throw ScriptMistake("this needs the simulated instrument");
  return *training_;
}

const CalibrationValues& InstrumentStand::CalibrationMemory() const {
  static const CalibrationValues Nothing;
  return instrument_ ? instrument_->CalibrationMemory() : Nothing;
}

std::optional<Score> InstrumentStand::CurrentScore() const {
  if (training_ == nullptr) return std::nullopt;
  return training_->CurrentScore();
}

void InstrumentStand::Seed(const Action& action) {
  const bool losesSteps = !action.arguments.empty();
  seed_ = {static_cast<std::uint32_t>(action.number), losesSteps ? LostSteps::Some : LostSteps::None};
  if (training_ == nullptr || training_->Reseed(seed_)) return;
  throw ScriptMistake("the seed comes too late: a line has reached the instrument already");
}

void InstrumentStand::Remember(const Action& action) {
  if (Training().Remember(action.arguments[0], action.arguments[1])) return;
  throw ScriptMistake("the memory comes too late: a line has reached the instrument already");
}

void InstrumentStand::PlanFault(const Action& action) {
  Fault fault = FaultOf(action);
  if (training_ == nullptr) return planned_.push_back(std::move(fault));
  if (training_->Plan(std::move(fault))) return;
  throw ScriptMistake("the fault comes too late: line " + action.arguments[1] + " has reached the instrument already");
}

}  // namespace Helmsway
