#pragma once

#include <string>
#include <string_view>

#include "bench/host/Durability.h"
#include "bench/host/FileProblem.h"

/// Edits of a configuration file on the disk, each of a state that is read afresh, so that no edit of another program
/// is lost. Each gives the problem that kept the edit from being done; the file is then as it was.
namespace Helmsway {

/// As `WithValue` says. Makes a file that is missing; leaves one alone that says so already.
FileProblem SetIniValue(const std::string& path, std::string_view section, std::string_view key, std::string_view value,
                        Durability durability = Durability::Flushed);

/// As `WithoutKey` says. A missing file has no such key.
FileProblem RemoveIniValue(const std::string& path, std::string_view section, std::string_view key,
                           Durability durability = Durability::Flushed);

}  // namespace Helmsway
