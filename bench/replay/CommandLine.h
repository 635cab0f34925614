#pragma once

#include <filesystem>
#include <optional>
#include <ostream>

#include "bench/replay/ExitStatus.h"
#include "bench/replay/Replay.h"

namespace Helmsway {

/// What the command line asks for. `programFolder` is where the program lies; the defaults are found from there.
/// Empty when the program is to end at once, help or a complaint having been told; then `status` is what to end with.
std::optional<ReplayOptions> ParseCommandLine(int argc, const char* const* argv,
                                              const std::filesystem::path& programFolder, std::ostream& out,
                                              std::ostream& err, ExitStatus& status);

}  // namespace Helmsway
