#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "bench/replay/Replay.h"

namespace Helmsway {

/// One run of a script, from its text to what it gives.
struct ReplayRun {
  ExitStatus status = ExitStatus::Failed;
  std::string output;
  std::string complaints;
};

/// Options for the script on the standard input and the library beside the test program, with the accepting instrument.
inline ReplayOptions OptionsFor(const std::filesystem::path& configuration) {
  ReplayOptions options;
  options.configuration = configuration;
  options.instrument = InstrumentKind::Accepting;
  options.addIn = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "libOrvelCalibrateS.so";
  options.script = "-";
  return options;
}

inline ReplayRun RunScript(const ReplayOptions& options, const std::string& script) {
  std::istringstream in(script);
  std::ostringstream out;
  std::ostringstream err;
  const ExitStatus status = Replay(options, in, out, err);
  return {status, out.str(), err.str()};
}

struct TraceEvent {
  std::string kind;
  std::string text;  ///< kind and values in the order of the trace, but for empty ones; an action's own words alone
  nlohmann::ordered_json members;
};

/// The events of a trace. Left out of `text` are a message's own text, and most of what a `show` tells.
inline std::vector<TraceEvent> EventsOf(const std::string& trace) {
  std::vector<TraceEvent> events;
  std::istringstream lines(trace);
  for (std::string line; std::getline(lines, line);) {
    TraceEvent event{"", "", nlohmann::ordered_json::parse(line)};
    event.kind = event.members["event"];
    for (const auto& [name, value] : event.members.items()) {
      if (event.kind == "message" && name == "text") continue;
      if (event.kind == "action" && name == "event") continue;
      if (event.kind == "form" && name != "event" && name != "visible" && name != "status") continue;
      const std::string word = value.is_string() ? value.get<std::string>() : value.dump();
      event.text += (event.text.empty() || word.empty() ? "" : " ") + word;
    }
    events.push_back(std::move(event));
  }
  return events;
}

}  // namespace Helmsway
