#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "addin/base/Ref.h"
#include "addin/base/Texts.h"
#include "bench/host/ConfigurationService.h"
#include "benchmarks/BareSave.h"
#include "benchmarks/Benchmarks.h"
#include "benchmarks/ItemFile.h"
#include "benchmarks/WorkFolder.h"
#include "benchmarks/peers/IniPeer.h"

/// One key changed and saved, and all heads of a catalogue.
namespace Helmsway::Benchmarks {
namespace {

using benchmark::State;
using OrvelCalibrateS::AsText;

/// A value of the same length each time, and never the one before.
std::string Changed(std::size_t turn) { return std::string("Head,SERIALDILUTE,") + (turn % 2 == 0 ? "10" : "20"); }

std::size_t SizeOf(const State& state) { return static_cast<std::size_t>(state.range(0)); }

/// The last item: all that stands in front of it has to be passed.
std::string LastKey(const State& state) { return ItemKeys(SizeOf(state)).back(); }

/// `save` is given the path and the number of the turn, and tells whether it did its work.
void Save(State& state, const std::function<bool(const std::string&, std::size_t)>& save) {
  const WorkFolder folder;
  const std::string path = folder.Write("Marivane.ini", ItemFile(SizeOf(state)));
  LetStampsSettle();
  std::size_t turns = 0;
  for (auto turn : state) {
    if (!save(path, turns++)) state.SkipWithError("a save failed");
  }
  state.counters["bytes"] = static_cast<double>(BytesOf(path).size());
}

using Bare = void (*)(const std::string&, std::string_view, Flush);

void SaveBare(State& state, Bare bare, Flush flush) {
  const std::string bytes = ItemFile(SizeOf(state));
  Save(state, [&](const std::string& path, std::size_t) {
    bare(path, bytes, flush);
    return true;
  });
}

/// A new key adds a line of 30 bytes at each turn, which is little beside what the file has.
enum class SavedKey { Existing, New };

void SaveByService(State& state, SavedKey saved) {
  const std::size_t size = SizeOf(state);
  const std::string last = LastKey(state);
  OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service;
  *service.Out() = new ConfigurationService;
  Save(state, [&](const std::string& path, std::size_t turn) {
    const std::string value = Changed(turn);
    const std::string key = saved == SavedKey::New ? "Item" + std::to_string(size + 1 + turn) : last;
    return service->WriteIni(AsText(ItemSection), AsText(key), AsText(path), AsText(value)) == HelmswayCmds::Result::Ok;
  });
}

void SaveByPeer(State& state, const PeerKind& kind) {
  const auto peer = kind.make();
  const std::string key = LastKey(state);
  Save(state, [&](const std::string& path, std::size_t turn) {
    return peer->Save(path, std::string(ItemSection), key, Changed(turn));
  });
}

/// As the add-in saves a calibration: each head is read, and written with its new position.
void SaveHeadsByService(State& state) {
  const std::vector<std::string> heads = ItemKeys(SizeOf(state));
  OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service;
  *service.Out() = new ConfigurationService;
  Save(state, [&](const std::string& path, std::size_t turn) {
    bool isDone = true;
    for (const std::string& head : heads) {
      std::string line;
      OrvelCalibrateS::StringTarget target(line);
      const auto read = service->ReadIni(AsText(ItemSection), AsText(head), AsText(path), {}, target);
      const std::string value = Changed(turn);
      const auto written = service->WriteIni(AsText(ItemSection), AsText(head), AsText(path), AsText(value));
      isDone = isDone && read == HelmswayCmds::Result::Ok && written == HelmswayCmds::Result::Ok && !line.empty();
    }
    return isDone;
  });
}

/// As many bare saves.
void SaveHeadsBare(State& state) {
  const std::string bytes = ItemFile(SizeOf(state));
  Save(state, [&](const std::string& path, std::size_t) {
    for (std::size_t head = 0; head < SizeOf(state); ++head) BareSaveWithRead(path, bytes, Flush::Yes);
    return true;
  });
}

}  // namespace

void RegisterSaveBenchmarks() {
  const auto add = [](const std::string& name, const auto& function) {
    auto* const added = benchmark::RegisterBenchmark(name.c_str(), function)->UseRealTime();
    for (const int size : {100, 1'000, 10'000}) added->Arg(size);
  };
  add("Save/Bare", [](State& state) { SaveBare(state, BareSave, Flush::Yes); });
  add("Save/BareWithRead", [](State& state) { SaveBare(state, BareSaveWithRead, Flush::Yes); });
  add("Save/BareUnflushed", [](State& state) { SaveBare(state, BareSave, Flush::No); });
  add("Save/Helmsway", [](State& state) { SaveByService(state, SavedKey::Existing); });
  add("Save/Helmsway, a new key", [](State& state) { SaveByService(state, SavedKey::New); });
  constexpr int heads = 300;
  benchmark::RegisterBenchmark("SaveHeads/BareWithRead", SaveHeadsBare)->UseRealTime()->Arg(heads);
  benchmark::RegisterBenchmark("SaveHeads/Helmsway", SaveHeadsByService)->UseRealTime()->Arg(heads);
  for (const PeerKind& kind : Peers()) {
    if (!kind.writes) continue;
    add(std::string("Save/") + kind.name, [&kind](State& state) { SaveByPeer(state, kind); });
  }
}

}  // namespace Helmsway::Benchmarks
