#pragma once

#include <filesystem>
#include <sstream>
#include <string>

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
  ReplayRun run;
  run.status = Replay(options, in, out, err);
  run.output = out.str();
  run.complaints = err.str();
  return run;
}

}  // namespace Helmsway
