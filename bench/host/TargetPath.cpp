#include "bench/host/TargetPath.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <utility>

namespace Helmsway {
namespace {

TargetPath Parts(const std::string& path) {
  const std::size_t separator = path.rfind('/');
  if (separator == std::string::npos) return {"./", path};
  return {path.substr(0, separator + 1), path.substr(separator + 1)};
}

}  // namespace

std::optional<TargetPath> TargetOf(std::string path) {
  constexpr int mostLinks = 40;
  constexpr std::size_t longestTarget = 4096;
  for (int followed = 0; followed < mostLinks; ++followed) {
    std::string target(longestTarget, '\0');
    const ssize_t size = readlink(path.c_str(), target.data(), target.size());
    if (size < 0 && (errno == EINVAL || errno == ENOENT || errno == ENOTDIR)) return Parts(path);
    if (size < 0) return std::nullopt;
    if (size == 0 || static_cast<std::size_t>(size) == longestTarget) {
      errno = ENAMETOOLONG;
      return std::nullopt;
    }
    target.resize(static_cast<std::size_t>(size));
    if (target.front() != '/') target.insert(0, Parts(path).folder);
    path = std::move(target);
  }
  errno = ELOOP;
  return std::nullopt;
}

}  // namespace Helmsway
