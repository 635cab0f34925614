#pragma once

#include <filesystem>
#include <istream>
#include <optional>
#include <ostream>
#include <string>

#include "bench/replay/ExitStatus.h"
#include "bench/replay/InstrumentKind.h"
#include "bench/replay/RunFolder.h"

namespace Helmsway {

enum class OutputFormat {
  JsonLines,  ///< the trace, for programs
  Text,       ///< an account, for people
};

struct ReplayOptions {
  std::filesystem::path configuration;  ///< the folder with the configuration files
  WorkOn workOn = WorkOn::Copies;
  InstrumentKind instrument = InstrumentKind::Simulated;
  std::optional<std::filesystem::path> trace;  ///< empty for the standard output
  OutputFormat format = OutputFormat::JsonLines;
  std::filesystem::path addIn;        ///< the add-in library's file
  std::optional<std::string> locale;  ///< that the program is to run under; empty for the decimal point
  std::string script;                 ///< path, or "-" for the standard input
};

/// Performs one run and writes it to `out`, or to the file that the options name. Errors go to `err`. The locale is
/// left to the caller.
ExitStatus Replay(const ReplayOptions& options, std::istream& in, std::ostream& out, std::ostream& err);

}  // namespace Helmsway
