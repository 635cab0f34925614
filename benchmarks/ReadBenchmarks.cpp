#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "addin/base/Ref.h"
#include "addin/base/Texts.h"
#include "bench/host/ConfigurationService.h"
#include "bench/host/IniFile.h"
#include "benchmarks/Benchmarks.h"
#include "benchmarks/ItemFile.h"
#include "benchmarks/PeerService.h"
#include "benchmarks/WorkFolder.h"

/// Reads through the contract, as the add-in makes them: item line after item line, each seeing the file as it is now.
namespace Helmsway::Benchmarks {
namespace {

using benchmark::State;
using HelmswayCmds::IIniService;
using HelmswayCmds::Result;
using OrvelCalibrateS::AsText;
using OrvelCalibrateS::Ref;
using Service = Ref<IIniService>;
using MakeService = Service (*)();

constexpr std::size_t WalkSizes[] = {100, 1'000, 10'000};

std::size_t SizeOf(const State& state) { return static_cast<std::size_t>(state.range(0)); }

template <class Object>
Service Adopted(Object* object) {
  Service service;
  *service.Out() = object;
  return service;
}

/// The file of a benchmark, long enough there.
struct Items {
  explicit Items(std::size_t count) : path(folder.Write("Marivane.ini", ItemFile(count))), keys(ItemKeys(count)) {
    LetStampsSettle();
  }
  WorkFolder folder;
  std::string path;
  std::vector<std::string> keys;
};

bool Read(IIniService& service, const std::string& path, const std::string& key, std::string& value) {
  OrvelCalibrateS::StringTarget target(value);
  return service.ReadIni(AsText(ItemSection), AsText(key), AsText(path), {}, target) == Result::Ok && !value.empty();
}

void Walk(State& state, const std::function<Service()>& make) {
  const Items items(SizeOf(state));
  const Service service = make();
  std::string value;
  Read(*service, items.path, items.keys.front(), value);
  for (auto turn : state) {
    for (const std::string& key : items.keys) {
      if (!Read(*service, items.path, key, value)) state.SkipWithError("a read gave nothing");
      benchmark::DoNotOptimize(value.data());
    }
  }
}

/// The floor: asks the system for the file's state and looks the key up in the standard library's table.
void WalkFloor(State& state) {
  const Items items(SizeOf(state));
  const std::string bytes = BytesOf(items.path);
  const IniFile file(bytes);
  std::unordered_map<std::string_view, std::string_view> values;
  for (const std::string& key : items.keys) values.emplace(key, file.Find(ItemSection, key).value());
  std::string value;
  for (auto turn : state) {
    for (const std::string& key : items.keys) {
      struct stat status {};
      benchmark::DoNotOptimize(stat(items.path.c_str(), &status));
      value = values.find(key)->second;
      benchmark::DoNotOptimize(value.data());
    }
  }
}

void WalkStatAlone(State& state) {
  const Items items(SizeOf(state));
  for (auto turn : state) {
    for (std::size_t i = 0; i < items.keys.size(); ++i) {
      struct stat status {};
      benchmark::DoNotOptimize(stat(items.path.c_str(), &status));
    }
  }
}

/// Reads right after another program's change, in rows so short that the stamp can't settle.
void ReadAfterChange(State& state) {
  constexpr std::size_t row = 10;
  const Items items(SizeOf(state));
  const Service service = Adopted(new ConfigurationService);
  std::string value;
  std::size_t reads = 0;
  for (auto turn : state) {
    state.PauseTiming();
    if (utimensat(AT_FDCWD, items.path.c_str(), nullptr, 0) != 0) state.SkipWithError("no stamp can be set");
    state.ResumeTiming();
    for (std::size_t i = 0; i < row; ++i) {
      if (!Read(*service, items.path, items.keys[reads++ % items.keys.size()], value)) {
        state.SkipWithError("a read gave nothing");
      }
    }
  }
  state.counters["row"] = row;
}

/// One read of one key, by somebody who keeps nothing.
void ParsePerRead(State& state) {
  const Items items(SizeOf(state));
  std::string value;
  std::size_t turns = 0;
  for (auto turn : state) {
    const Service service = Adopted(new ConfigurationService);
    if (!Read(*service, items.path, items.keys[turns++ % items.keys.size()], value)) {
      state.SkipWithError("a read gave nothing");
    }
  }
}

void ParsePerReadOf(State& state, const PeerKind& kind) {
  const Items items(SizeOf(state));
  std::string value;
  std::size_t turns = 0;
  for (auto turn : state) {
    const auto peer = kind.make();
    if (kind.keepsParsed) {
      state.PauseTiming();
      peer->Forget(items.path);
      state.ResumeTiming();
    }
    if (!peer->Load(items.path) ||
        !peer->Find(std::string(ItemSection), items.keys[turns++ % items.keys.size()], value)) {
      state.SkipWithError("a read gave nothing");
    }
  }
}

/// Exactly a million bytes that nobody meant to be a configuration file, or sound ones; the last line may be cut short.
std::string Text(std::string_view kind) {
  constexpr std::size_t size = 1'000'000;
  constexpr std::size_t leastLine = 100;
  const std::string sound = ItemFile(size / leastLine).substr(0, size);
  const auto repeated = [&](std::string_view unit) {
    std::string bytes;
    while (bytes.size() < size) bytes += unit;
    bytes.resize(size);
    return bytes;
  };
  const auto filled = [&](std::string_view front, char letter, std::string_view back) {
    return std::string(front) + std::string(size - front.size() - back.size(), letter) + std::string(back);
  };
  if (kind == "NUL bytes") return std::string(size, '\0');
  if (kind == "NUL bytes in lines") {
    std::string bytes = sound;
    for (std::size_t i = 0; i < bytes.size(); i += 7) bytes[i] = '\0';
    return bytes;
  }
  if (kind == "no line ends") return repeated("Item=1,2,3 [S] ");
  if (kind == "blanks alone") return std::string(size, ' ');
  if (kind == "a megabyte in a name") return filled("", 'k', "=1\n");
  if (kind == "a megabyte in a value") return filled("[S]\nk=", 'v', "\nj=1\n");
  if (kind == "a megabyte in a head") return filled("[", 'S', "\nk=1\n");
  if (kind == "invalid UTF-8") return repeated("\xC3\x28\x80=\xFF\xFE\x80\n");
  if (kind == "heads without an end") return repeated("[S\nk=1\n");
  if (kind == "sound, heads and short keys") return repeated("[S]\nk=1\n");
  if (kind == "line ends alone") return std::string(size, '\n');
  if (kind == "one key again and again") return repeated("k=1\n");
  return sound;
}

void Parse(State& state, std::string_view kind) {
  const std::string bytes = Text(kind);
  if (bytes.size() != 1'000'000) state.SkipWithError("the text has another length");
  for (auto turn : state) {
    const IniFile file(bytes);
    benchmark::DoNotOptimize(file.Find("S", "k"));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes.size()) * static_cast<std::int64_t>(state.iterations()));
}

}  // namespace

void RegisterReadBenchmarks() {
  const auto add = [](const std::string& name, const auto& function) {
    auto* const added = benchmark::RegisterBenchmark(name.c_str(), function)->UseRealTime();
    for (const std::size_t size : WalkSizes) added->Arg(static_cast<std::int64_t>(size));
  };
  add("Walk/StatAlone", WalkStatAlone);
  add("Walk/Floor", WalkFloor);
  add("Walk/Helmsway", [](State& state) { Walk(state, [] { return Adopted(new ConfigurationService); }); });
  add("ParsePerRead/Helmsway", ParsePerRead);
  add("ReadAfterChange/Helmsway", ReadAfterChange);
  for (const PeerKind& kind : Peers()) {
    add(std::string("Walk/") + kind.name,
        [&kind](State& state) { Walk(state, [&] { return Adopted(new PeerService(kind.make())); }); });
    add(std::string("ParsePerRead/") + kind.name, [&kind](State& state) { ParsePerReadOf(state, kind); });
  }
  for (const char* kind : {"sound", "sound, heads and short keys", "NUL bytes", "NUL bytes in lines", "no line ends",
                           "blanks alone", "a megabyte in a name", "a megabyte in a value", "a megabyte in a head",
                           "invalid UTF-8", "heads without an end", "line ends alone", "one key again and again"}) {
    benchmark::RegisterBenchmark((std::string("Parse/") + kind).c_str(), [kind](State& state) { Parse(state, kind); });
  }
}

}  // namespace Helmsway::Benchmarks
