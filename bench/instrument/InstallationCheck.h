#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Helmsway {

/// Why a save would find no head whose S position it could write; empty when it would find one. In words, to go after
/// "Not saved: ".
std::string WhyNoHeads(const std::filesystem::path& marivaneIni);

/// What a person should know of the file before they work with it, a sentence each without a full stop; empty when
/// nothing speaks against it. Writes nothing.
std::vector<std::string> InstallationProblems(const std::filesystem::path& marivaneIni);

}  // namespace Helmsway
