#include "bench/replay/InstrumentSnapshot.h"

#include <cmath>
#include <optional>

namespace Helmsway {
namespace {

using Json = nlohmann::ordered_json;

Json Values(const CalibrationValues& values) {
  Json object = Json::object();
  for (const auto& [name, value] : values) object[name] = value;
  return object;
}

Json Axes(const MachineState& machine) {
  Json axes = Json::object();
  for (const MachineState::AxisState& axis : machine.axes) {
    const Json position = axis.position ? Json(*axis.position) : Json();
    axes[axis.name] = {{"position", position}, {"speed", axis.speed}};
  }
  return axes;
}

Json ErrorSnapshot(const std::optional<Score::Error>& error) {
  if (!error) return nullptr;
  return {{"position", error->position}, {"steps", Thousandths(error->steps)}, {"mm", Thousandths(error->mm)}};
}

}  // namespace

double Thousandths(double value) { return std::round(value * 1000) / 1000 + 0.0; }

Json InstrumentSnapshot(const InstrumentView& view, const std::vector<MemoryDifference>& differences) {
  const MachineState& machine = view.machine;
  Json snapshot;
  snapshot["time"] = Thousandths(machine.time.count());
  snapshot["remote"] = machine.remote;
  snapshot["axes"] = Axes(machine);
  snapshot["slider"] = machine.slider;
  snapshot["collision"] = machine.zCollisionDetection;
  snapshot["head"] = machine.head;
  snapshot["tip"] = machine.tip;
  snapshot["places"] = Json::object();
  for (const MachineState::Place& place : machine.places) snapshot["places"][place.name] = place.contents;
  snapshot["pending"] = Values(machine.pending);
  snapshot["memory"] = Values(machine.memory);
  snapshot["differences"] = Json::array();
  for (const MemoryDifference& difference : differences) {
    const Json memory = difference.memory.empty() ? Json() : Json(difference.memory);
    snapshot["differences"].push_back({{"name", difference.name}, {"file", difference.file}, {"memory", memory}});
  }
  snapshot["damage"] = machine.damage;
  snapshot["edge"] = view.edge ? Json(Thousandths(*view.edge)) : Json();
  return snapshot;
}

Json ScoreSnapshot(const Score& score) {
  Json snapshot;
  snapshot["seed"] = score.seed.number;
  snapshot["lostSteps"] = score.seed.lostSteps == LostSteps::Some;
  snapshot["reference"] = Thousandths(score.reference);
  snapshot["saved"] = ErrorSnapshot(score.saved);
  snapshot["pending"] = ErrorSnapshot(score.pending);
  snapshot["jogs"] = score.jogs;
  snapshot["lines"] = score.lines;
  snapshot["refused"] = score.refused;
  snapshot["failed"] = score.failed;
  snapshot["damage"] = score.damage;
  snapshot["time"] = Thousandths(score.time.count());
  return snapshot;
}

}  // namespace Helmsway
