#pragma once

#include <string>
#include <string_view>

#include "bench/host/Durability.h"

/// Edits of a configuration file on the disk, each of a state that is read afresh, so that no edit of another program
/// is lost. False when an edit couldn't be done; the file is then as it was.
namespace Helmsway {

/// As `WithValue` says. Makes a file that is missing; leaves one alone that says so already.
bool SetIniValue(const std::string& path, std::string_view section, std::string_view key, std::string_view value,
                 Durability durability = Durability::Flushed);

/// As `WithoutKey` says. A missing file has no such key.
bool RemoveIniValue(const std::string& path, std::string_view section, std::string_view key,
                    Durability durability = Durability::Flushed);

}  // namespace Helmsway
