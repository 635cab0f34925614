#include "bench/instrument/TrainingInstrument.h"

#include <algorithm>
#include <utility>

#include "bench/instrument/CommandLine.h"

namespace Helmsway {
namespace {

constexpr Seconds VainTry{1};
constexpr std::size_t LeastNoise = 6;

Answer Refused(std::string reason) { return {Answer::Result::Refused, {}, std::move(reason)}; }
Answer Failed(std::string reason) { return {Answer::Result::Failed, {}, std::move(reason)}; }

/// Where the machine takes its S axis to be.
std::optional<std::int32_t> PositionOfS(const MachineState& state) {
  const auto axis = std::find_if(state.axes.begin(), state.axes.end(),
                                 [](const MachineState::AxisState& row) { return row.name == NameOf(Axis::S); });
  return axis == state.axes.end() ? std::nullopt : axis->position;
}

bool HomesS(std::string_view line) {
  const std::optional<Command> command = ReadCommandLine(line).command;
  return command && (std::holds_alternative<HomeAll>(*command) || std::holds_alternative<HomeS>(*command));
}

bool SavesCalibration(std::string_view line) {
  const std::optional<Command> command = ReadCommandLine(line).command;
  return command && std::holds_alternative<SaveCalibration>(*command);
}

}  // namespace

TrainingInstrument::TrainingInstrument(std::unique_ptr<IMachine> machine, SyringeDescription syringe,
                                       const TrainingSeed& seed)
    : machine_(std::move(machine)),
      syringe_(std::move(syringe)),
      seed_(seed),
      truth_(syringe_, seed),
      garbling_(seed.number, SeededNumbers::Purpose::GarbledReplies) {}

bool TrainingInstrument::Reseed(const TrainingSeed& seed) {
  if (linesBegun_ > 0) return false;
  seed_ = seed;
  truth_ = SyringeTruth(syringe_, seed);
  garbling_ = SeededNumbers(seed.number, SeededNumbers::Purpose::GarbledReplies);
  return true;
}

bool TrainingInstrument::Remember(const std::string& name, const std::string& value) {
  if (linesBegun_ > 0) return false;
  CalibrationValues values = machine_->CalibrationMemory();
  values.insert_or_assign(name, value);
  machine_->Remember(values);
  return true;
}

bool TrainingInstrument::Plan(Fault fault) {
  if (fault.number != 0 && fault.number <= linesBegun_) return false;
  faults_.Add(std::move(fault));
  return true;
}

bool TrainingInstrument::LineArrives() const {
  if (!fault_) return true;
  return fault_->kind != FaultKind::Refuse && fault_->kind != FaultKind::Fail && fault_->kind != FaultKind::Silent;
}

void TrainingInstrument::Begin(std::string_view line) {
  line_ = line;
  carriedOut_ = false;
  switchedOff_ = false;
  fault_ = faults_.Take(line, ++linesBegun_);
  if (!LineArrives()) return;
  machine_->Begin(line);
  if (!fault_) return;
  if (fault_->kind == FaultKind::Stall) machine_->Stall();
  if (fault_->kind == FaultKind::PowerCycle) PowerCycle();
}

Seconds TrainingInstrument::TimeToEnd(bool stopRequested) const {
  if (line_.empty()) return Seconds{0};
  const Seconds machine = LineArrives() ? machine_->TimeToEnd(stopRequested) : Seconds{0};
  if (!fault_) return machine;
  if (fault_->kind == FaultKind::Late) return machine + fault_->time;
  if (fault_->kind == FaultKind::Silent && !stopRequested && !switchedOff_) return fault_->time;
  return machine;
}

Answer TrainingInstrument::End(bool stopRequested) {
  Answer answer = AnswerOf(stopRequested);
  Follow();
  saved_ = saved_ || (carriedOut_ && SavesCalibration(line_));
  tally_.LineEnded(line_, answer.result);
  if (fault_ && fault_->kind == FaultKind::Link) linkLostFor_ = fault_->time;
  fault_.reset();
  line_.clear();
  return answer;
}

Answer TrainingInstrument::AnswerOf(bool stopRequested) {
  Answer answer;
  if (LineArrives()) answer = machine_->End(stopRequested);
  carriedOut_ = LineArrives() && answer.result == Answer::Result::Ok;
  if (switchedOff_ && answer.result == Answer::Result::Failed && answer.reason.empty()) {
    answer.reason = "the instrument was switched off before the line had ended";
  }
  if (!fault_) return answer;
  switch (fault_->kind) {
    case FaultKind::Refuse:
      return Refused("planned fault: the line is refused");
    case FaultKind::Fail:
      return Failed("planned fault: the sending fails");
    case FaultKind::Silent:
      if (switchedOff_) return Failed("planned fault: no answer before the instrument was switched off");
      if (stopRequested) return Failed("planned fault: no answer before Stop");
      machine_->Pass(fault_->time);
      return Failed("planned fault: no answer within " + TimeText(fault_->time));
    case FaultKind::Link:
      return Failed("planned fault: the link was lost before the answer came");
    case FaultKind::Garble:
      return Garbled(std::move(answer));
    case FaultKind::Late:
      machine_->Pass(fault_->time);
      return answer;
    case FaultKind::Stall:
    case FaultKind::PowerCycle:
      return answer;
  }
  return answer;
}

Answer TrainingInstrument::Garbled(Answer answer) {
  if (answer.result != Answer::Result::Ok) return answer;
  // No capital letters, so that no word of the instrument's language is left.
  constexpr std::string_view Noise = "0123456789#%&*+-/<=>?@~abcdefghijklmnopqrstuvwxyz";
  answer.reply.resize(std::max(answer.reply.size(), LeastNoise));
  for (char& character : answer.reply) {
    character = Noise[static_cast<std::size_t>(garbling_.Whole(0, static_cast<std::int32_t>(Noise.size()) - 1))];
  }
  return answer;
}

void TrainingInstrument::Follow() {
  const auto position = PositionOfS(machine_->State());
  if (!position) return truth_.PositionLost();
  if (carriedOut_ && HomesS(line_)) return truth_.Homed(*position);
  truth_.MovedTo(*position);
}

bool TrainingInstrument::TryLink() {
  if (fault_ && fault_->kind == FaultKind::Link) return false;
  if (linkLostFor_ <= Seconds{0}) return true;
  linkLostFor_ -= VainTry;
  machine_->Pass(VainTry);
  return false;
}

void TrainingInstrument::PowerCycle() {
  machine_->PowerCycle();
  truth_.PositionLost();
  tally_.PositionsLost();
  switchedOff_ = true;
}

std::vector<Travel> TrainingInstrument::Travels() const {
  // A line that a fault keeps from the machine moves nothing.
  return line_.empty() || !LineArrives() ? std::vector<Travel>() : machine_->Travels();
}

InstrumentView TrainingInstrument::Look() const {
  InstrumentView view{machine_->State(), std::nullopt};
  const bool toolIsOn = !syringe_.toolName.empty() && view.machine.head == syringe_.toolName;
  if (toolIsOn && PositionOfS(view.machine)) view.edge = truth_.Edge();
  return view;
}

Score TrainingInstrument::CurrentScore() const {
  const MachineState state = machine_->State();
  Score score;
  score.seed = seed_;
  score.reference = truth_.Reference();
  // What the instrument remembers of earlier runs says nothing of this one.
  if (saved_) score.saved = ErrorOf(state.memory, syringe_, truth_.Reference());
  score.pending = ErrorOf(state.pending, syringe_, truth_.Reference());
  score.damage = state.damage;
  score.time = state.time;
  tally_.Tell(score);
  return score;
}

}  // namespace Helmsway
