#include "bench/host/FileStamp.h"

#include <cerrno>

namespace Helmsway {
namespace {

std::int64_t Nanoseconds(const timespec& time) noexcept {
  return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

}  // namespace

FilePresence ReadStamp(const std::string& path, FileStamp& stamp) noexcept {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return PresenceAfter(errno);
  stamp = StampOf(status);
  return FilePresence::Present;
}

FileStamp StampOf(const struct stat& status) noexcept {
  return {status.st_dev, status.st_ino, status.st_size, Nanoseconds(status.st_mtim), Nanoseconds(status.st_ctim)};
}

FilePresence PresenceAfter(int error) noexcept {
  return error == ENOENT || error == ENOTDIR ? FilePresence::Missing : FilePresence::Failed;
}

}  // namespace Helmsway
