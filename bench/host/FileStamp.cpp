#include "bench/host/FileStamp.h"

#include <cerrno>
#include <ctime>

namespace Helmsway {
namespace {

std::int64_t Nanoseconds(const timespec& time) noexcept {
  return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

}  // namespace

bool SameContents(const FileStamp& left, const FileStamp& right) noexcept {
  return left.device == right.device && left.inode == right.inode && left.size == right.size &&
         left.modified == right.modified;
}

FilePresence ReadStamp(const std::string& path, FileStamp& stamp) noexcept {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return PresenceAfter(errno);
  stamp = StampOf(status);
  return FilePresence::Present;
}

FilePresence ReadStampAt(int folder, const std::string& name, FileStamp& stamp) noexcept {
  struct stat status {};
  if (fstatat(folder, name.c_str(), &status, 0) != 0) return PresenceAfter(errno);
  stamp = StampOf(status);
  return FilePresence::Present;
}

FileStamp StampOf(const struct stat& status) noexcept {
  return {status.st_dev, status.st_ino, status.st_size, Nanoseconds(status.st_mtim), Nanoseconds(status.st_ctim)};
}

std::int64_t StampClock() noexcept {
  timespec now{};
  clock_gettime(CLOCK_REALTIME_COARSE, &now);
  return Nanoseconds(now);
}

FilePresence PresenceAfter(int error) noexcept {
  return error == ENOENT || error == ENOTDIR ? FilePresence::Missing : FilePresence::Failed;
}

}  // namespace Helmsway
