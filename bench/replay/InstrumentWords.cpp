#include "bench/replay/InstrumentWords.h"

#include <cmath>
#include <optional>
#include <string_view>

#include "bench/replay/InstrumentSnapshot.h"

namespace Helmsway {
namespace {

std::string Number(double value) { return nlohmann::json(Thousandths(value)).dump(); }

std::string Time(Seconds time) { return TimeText(Seconds{Thousandths(time.count())}); }

std::string OrNone(const std::string& text) { return text.empty() ? "none" : text; }

std::string Axes(const MachineState& machine) {
  std::string text;
  for (const MachineState::AxisState& axis : machine.axes) {
    text.append(text.empty() ? "" : ", ").append(axis.name).append(" ");
    text += axis.position ? std::to_string(*axis.position) : "not homed";
  }
  return OrNone(text);
}

std::string Edge(const std::optional<double>& edge) {
  if (!edge) return "not to be seen";
  const std::string distance = Number(std::abs(*edge)) + " mm ";
  return distance + (*edge < 0 ? "below" : "above") + " the ring";
}

std::string ErrorText(const std::optional<Score::Error>& error, std::string_view otherwise) {
  if (!error) return std::string(otherwise);
  return "position " + std::to_string(error->position) + ", off by " + Number(error->steps) + " steps, " +
         Number(error->mm) + " mm";
}

void AddDamage(std::vector<std::string>& lines, const std::vector<std::string>& damage) {
  if (damage.empty()) lines.emplace_back("damage: none");
  for (const std::string& what : damage) lines.push_back("damage: " + what);
}

std::string ValueLine(const char* state, const std::string& name, const std::string& value) {
  return std::string(state).append(name).append(" = ").append(value);
}

}  // namespace

std::vector<std::string> InWords(const InstrumentView& view) {
  const MachineState& machine = view.machine;
  std::vector<std::string> lines;
  lines.push_back("instrument: after " + Time(machine.time) + ", " + (machine.remote ? "remote" : "local") +
                  " mode, Z collision detection " + (machine.zCollisionDetection ? "on" : "off"));
  lines.push_back("axes: " + Axes(machine));
  lines.push_back("slider: " + machine.slider);
  lines.push_back("head: " + OrNone(machine.head) + ", tip: " + OrNone(machine.tip));
  for (const MachineState::Place& place : machine.places) lines.push_back(place.name + ": " + place.contents);
  for (const auto& [name, value] : machine.pending) lines.push_back(ValueLine("not saved yet: ", name, value));
  for (const auto& [name, value] : machine.memory) lines.push_back(ValueLine("saved: ", name, value));
  AddDamage(lines, machine.damage);
  lines.push_back("edge of the teach tool: " + Edge(view.edge));
  return lines;
}

std::vector<std::string> InWords(const std::vector<MemoryDifference>& differences) {
  if (differences.empty()) return {"file and memory agree"};
  std::vector<std::string> lines{"file and memory differ:"};
  std::size_t missing = 0;
  for (const MemoryDifference& difference : differences) {
    if (difference.memory.empty()) {
      ++missing;
    } else {
      lines.push_back("  " + difference.name + ": file " + difference.file + ", memory " + difference.memory);
    }
  }
  if (missing > 0) lines.push_back("  the memory lacks " + std::to_string(missing) + " of the file's values");
  return lines;
}

std::vector<std::string> InWords(const Score& score) {
  std::vector<std::string> lines;
  const char* const losses = score.seed.lostSteps == LostSteps::Some ? ", with lost steps" : "";
  lines.push_back("seed " + std::to_string(score.seed.number) + losses + ": the reference is at " +
                  Number(score.reference));
  lines.push_back("saved value: " + ErrorText(score.saved, "none"));
  if (score.pending) lines.push_back("value not saved yet: " + ErrorText(score.pending, ""));
  lines.push_back("jogs: " + std::to_string(score.jogs) + ", lines: " + std::to_string(score.lines) +
                  ", refused: " + std::to_string(score.refused) + ", failed: " + std::to_string(score.failed));
  AddDamage(lines, score.damage);
  lines.push_back("time: " + Time(score.time));
  return lines;
}

}  // namespace Helmsway
