// The instrument's command language and the simulated instrument. Input: lines. The first names the model; every other
// is a command line, but for those that begin with "!", which say what somebody does meanwhile: with "!" as soon as
// they are read, with "!!" while the command line behind them is under way.
#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "bench/instrument/DescribeMachine.h"
#include "bench/instrument/SimulatedMarivane.h"
#include "tests/fuzz/Demand.h"
#include "tests/fuzz/ProcessorTimeLimit.h"
#include "tests/instrument/BenchModel.h"

namespace Helmsway::Fuzzing {
namespace {

/// Axes as long as a position can say, with steps that have a length and without.
MachineDescription EndlessModel(double mmPerStep) {
  constexpr std::int32_t low = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t high = std::numeric_limits<std::int32_t>::max();
  MachineDescription model = BenchModel();
  for (auto& [axis, description] : model.axes) description = {low, high, 0, 1, mmPerStep};
  return model;
}

MachineDescription WithoutXAxis(MachineDescription model) {
  model.hasSlider = false;
  model.axes.erase(Axis::X);
  return model;
}

MachineDescription ExampleModel() {
  MachineDescription model = DescribeMachine(std::string(HELMSWAY_EXAMPLES) + "/installation/Marivane.ini");
  Demand(model.axes.size() == 6, "the example installation is there");
  model.file.clear();  // what it would read from its file again and again is in the description
  return model;
}

const MachineDescription& ModelNamed(std::string_view name) {
  static const std::map<std::string, MachineDescription, std::less<>> models{
      {"bench", BenchModel()},        {"no-x", WithoutXAxis(BenchModel())}, {"example", ExampleModel()},
      {"endless", EndlessModel(0.1)}, {"no-length", EndlessModel(0)},       {"bare", {}},
  };
  const auto found = models.find(name);
  return (found == models.end() ? models.find("bench") : found)->second;
}

struct Spelling {
  std::string operator()(const HomeAll& /*command*/) const { return "HOME ALL"; }
  std::string operator()(const HomeS& /*command*/) const { return "HOME S"; }
  std::string operator()(const MoveAxis& command) const {
    return "MOVE " + std::string(NameOf(command.axis)) + " " + std::to_string(command.target);
  }
  std::string operator()(const MoveSlider& command) const {
    return command.target == SliderState::Open ? "MOVE SLIDER_OPEN" : "MOVE SLIDER_CLOSED";
  }
  std::string operator()(const SetSpeed& command) const {
    return "SET_SPEED " + std::string(NameOf(command.axis)) + " " + std::to_string(command.speed);
  }
  std::string operator()(const SetZCollisionDetection& command) const {
    return command.detection == CollisionDetection::On ? "HW_Z_COLLISION ON" : "HW_Z_COLLISION OFF";
  }
  std::string operator()(const SetCalibration& command) const {
    return "SET_CALIBRATION " + command.name + " " + command.value;
  }
  std::string operator()(const SaveCalibration& /*command*/) const { return "SET_CALIBRATION SAVE"; }
  std::string operator()(const AskSliderState& /*command*/) const { return "STATUS SLIDER"; }
  std::string operator()(const AskRevision& /*command*/) const { return "REV"; }
};

void CheckReading(std::string_view line) {
  const CommandLine read = ReadCommandLine(line);
  Demand(read.command.has_value() == read.reason.empty(), "a line is a command, or there is a reason");
  if (read.command) Demand(std::visit(Spelling{}, *read.command) == line, "a command has one spelling");
}

bool IsTime(Seconds time) { return std::isfinite(time.count()) && time.count() >= 0; }

/// The instrument and the operator beside it.
class Bench {
 public:
  explicit Bench(const MachineDescription& model) : model_(model), machine_(model) { CheckState(); }

  void Take(const std::string& line) {
    if (line.starts_with("!!")) {
      meanwhile_.push_back(line.substr(2));
    } else if (line.starts_with("!")) {
      Do(line.substr(1));
    } else {
      Execute(line);
    }
    CheckState();
  }

 private:
  void Do(const std::string& deed) {
    std::istringstream words(deed);
    std::string verb, first, second, third;
    words >> verb >> first >> second >> third;
    if (verb == "stall") {
      machine_.Stall();
      mayStall_ = true;
    }
    if (verb == "power-cycle") machine_.PowerCycle();
    if (verb == "local") machine_.SetRemote(false);
    if (verb == "remote") machine_.SetRemote(true);
    if (verb == "pass") machine_.Pass(Seconds(2.5));
    if (verb == "rack") machine_.LoadRack(first, second, third);
    if (verb == "module") machine_.PutOnModule(first);
    if (verb == "nest") machine_.PutInNest(first, second);
    if (verb == "clear-nest") machine_.ClearNest(first);
    if (verb == "clear-stage") machine_.ClearStage(first);
    if (verb == "end") Demand(machine_.End(false).result == Answer::Result::Failed, "no line is under way");
  }

  void Execute(const std::string& line) {
    CheckReading(line);
    MachineState before = machine_.State();
    machine_.Begin(line);
    Demand(machine_.State() == before, "a line that begins changes nothing");
    CheckTravels();
    for (const std::string& deed : meanwhile_) {
      if (deed.starts_with("end")) continue;
      Do(deed);
      CheckTravels();
    }
    meanwhile_.clear();
    before = machine_.State();
    const Seconds duration = machine_.TimeToEnd(false);
    Demand(IsTime(duration), "a line takes a time");
    const auto travels = machine_.Travels();
    const Answer answer = machine_.End(false);
    Demand(machine_.Now() == before.time + duration, "the clock advances by the time that was told");
    CheckAnswer(answer, before, travels);
  }

  void CheckAnswer(const Answer& answer, MachineState& before, const std::vector<Travel>& travels) {
    MachineState after = machine_.State();
    if (answer.result == Answer::Result::Ok) {
      Demand(answer.reason.empty(), "nothing is wrong with what was carried out");
      for (const Travel& travel : travels)
        Demand(AxisIn(after, travel.axis).at == travel.to, "an axis is where it went");
      return;
    }
    Demand(answer.reply.empty(), "only a line that is carried out has a reply");
    Demand(!answer.reason.empty() || answer.result == Answer::Result::Failed, "a refusal has a reason");
    const bool hasStalled = answer.result == Answer::Result::Refused && mayStall_ && after.axes != before.axes;
    after.time = before.time;
    if (hasStalled) {
      for (const Travel& travel : travels) {
        Demand(AxisIn(after, travel.axis).at == travel.to, "an axis that stalled is where it was to stall");
      }
      after.axes = before.axes;
    }
    Demand(after == before, "a line that isn't carried out changes nothing");
  }

  void CheckTravels() {
    Demand(IsTime(machine_.TimeToEnd(false)), "a line takes a time");
    const MachineState state = machine_.State();
    for (const Travel& travel : machine_.Travels()) {
      Demand(travel.from == AxisIn(state, travel.axis).at, "a travel begins where the axis stands");
      CheckPosition(travel.axis, travel.to);
    }
  }

  void CheckState() {
    const MachineState state = machine_.State();
    Demand(machine_.State() == state && machine_.Now() == state.time, "looking changes nothing");
    Demand(IsTime(state.time), "the clock shows a time");
    Demand(state.axes.size() == model_.axes.size(), "each axis is shown");
    for (const auto& axis : state.axes) {
      CheckPosition(axis.name, axis.at);
      Demand(!axis.position || axis.position == axis.at, "an axis that is homed knows where it is");
      Demand(axis.speed > 0, "a speed is above 0");
    }
    Demand(state.memory == machine_.CalibrationMemory(), "the memory is what is shown");
    CheckHeads(state);
  }

  /// A head is in one place only. Heads of one name are told apart by nothing that is shown.
  static void CheckHeads(const MachineState& state) {
    std::vector<std::string> seen;
    if (!state.head.empty()) seen.push_back(state.head);
    for (const auto& place : state.places) {
      if (place.contents != "empty" && place.name.find("slot") != std::string::npos) seen.push_back(place.contents);
    }
    std::sort(seen.begin(), seen.end());
    Demand(std::adjacent_find(seen.begin(), seen.end()) == seen.end(), "a head is in one place");
    Demand(state.tip.empty() || !state.head.empty(), "a tip is on a head");
  }

  void CheckPosition(const std::string& name, std::int32_t position) {
    const auto axis = std::find_if(model_.axes.begin(), model_.axes.end(),
                                   [&](const auto& entry) { return NameOf(entry.first) == name; });
    Demand(axis != model_.axes.end(), "only axes that are there move");
    Demand(position >= axis->second.low && position <= axis->second.high, "positions stay in their limits");
  }

  static MachineState::AxisState AxisIn(const MachineState& state, const std::string& name) {
    const auto found =
        std::find_if(state.axes.begin(), state.axes.end(), [&](const auto& axis) { return axis.name == name; });
    Demand(found != state.axes.end(), "an axis that travels is shown");
    return *found;
  }

  const MachineDescription& model_;
  SimulatedMarivane machine_;
  std::vector<std::string> meanwhile_;
  bool mayStall_ = false;
};

}  // namespace
}  // namespace Helmsway::Fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Helmsway::Fuzzing;
  const ProcessorTimeLimit limit;
  std::istringstream lines(std::string(reinterpret_cast<const char*>(data), size));
  std::string line;
  std::getline(lines, line);
  Bench bench(ModelNamed(line));
  while (std::getline(lines, line)) bench.Take(line);
  return 0;
}
