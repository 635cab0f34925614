#pragma once

#include <optional>
#include <string>

namespace Helmsway {

/// Folder and name of a file. The folder ends in its separator, and is "./" for a bare name.
struct TargetPath {
  std::string folder;
  std::string name;

  std::string Whole() const { return folder + name; }
};

/// Follows symbolic links at the path's end; the last one may point at no file yet. Nothing when they go round in
/// circles or can't be read; `errno` says which.
std::optional<TargetPath> TargetOf(std::string path);

}  // namespace Helmsway
