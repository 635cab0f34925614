#include "bench/host/TemporaryFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <memory>

#include "bench/host/AtomicFile.h"
#include "bench/host/StillFile.h"
#include "bench/host/SystemCalls.h"

namespace Helmsway {
namespace {

constexpr mode_t ModeBits = 07777;
constexpr std::string_view Suffix = ".new";

std::string Prefix(const std::string& fileName) {
  constexpr std::size_t mostOfName = 200;  // the whole must not become longer than file names may be
  return "." + fileName.substr(0, mostOfName) + ".";
}

/// The time keeps names unique when two containers reuse a process number.
std::string NewName(const std::string& prefix) {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  std::string name = prefix;
  name.append(std::to_string(getpid())).append("-").append(std::to_string(now.tv_sec));
  return name.append(std::to_string(now.tv_nsec)).append(Suffix);
}

bool IsNumber(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool IsTemporaryName(std::string_view name, std::string_view prefix) {
  if (!name.starts_with(prefix) || !name.ends_with(Suffix) || name.size() < prefix.size() + Suffix.size()) return false;
  name.remove_prefix(prefix.size());
  name.remove_suffix(Suffix.size());
  const std::size_t dash = name.find('-');
  return dash != std::string_view::npos && IsNumber(name.substr(0, dash)) && IsNumber(name.substr(dash + 1));
}

bool Lock(const FileDescriptor& file) {
  return Uninterrupted([&] { return flock(file.Get(), LOCK_EX | LOCK_NB); }) == 0;
}

/// Opened for writing, because network folders lock only such files.
void RemoveIfLeft(int folder, const std::string& name) {
  const FileDescriptor file = OpenFile(folder, name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
  if (file && Lock(file)) unlinkat(folder, name.c_str(), 0);
}

Placement PlacementAfter(int error) {
  if (error == ENOENT || error == EEXIST) return Placement::Superseded;
  // A mount point, a folder whose files only their owners may rename, a file in use.
  if (error == EBUSY || error == EACCES || error == EPERM || error == EXDEV || error == ETXTBSY) {
    return Placement::Barred;
  }
  // Network folders, among others, can only rename without looking.
  return error == EINVAL || error == ENOSYS ? Placement::Unable : Placement::Failed;
}

/// A leftover that can't be removed now is there for the next save.
void RemoveLeftovers(int folder, std::string_view prefix) {
  struct Close {
    void operator()(DIR* entries) const { closedir(entries); }
  };
  FileDescriptor descriptor = OpenFile(folder, ".", O_RDONLY | O_DIRECTORY);
  const std::unique_ptr<DIR, Close> entries(descriptor ? fdopendir(descriptor.Get()) : nullptr);
  if (!entries) return;
  descriptor.Release();
  while (const dirent* const entry = readdir(entries.get())) {
    if (IsTemporaryName(entry->d_name, prefix)) RemoveIfLeft(folder, entry->d_name);
  }
}

}  // namespace

TemporaryFile::TemporaryFile(int folder, const std::string& fileName, mode_t mode) : folder_(folder) {
  constexpr int mostNames = 100;
  const std::string prefix = Prefix(fileName);
  RemoveLeftovers(folder_, prefix);
  for (int attempt = 0; attempt < mostNames && !descriptor_; ++attempt) {
    name_ = NewName(prefix);
    descriptor_ = OpenFile(folder_, name_, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
    if (!descriptor_ && errno != EEXIST) return;
  }
  isThere_ = static_cast<bool>(descriptor_);
  // Without its lock the file might be taken for a leftover, which costs one more attempt.
  const int error = errno;
  if (isThere_) Lock(descriptor_);
  errno = error;
}

TemporaryFile::~TemporaryFile() {
  if (isThere_) unlinkat(folder_, name_.c_str(), 0);
}

bool TakeOverRights(int file, const struct stat& status) {
  struct stat own {};
  if (fstat(file, &own) != 0) return false;
  // The owner comes first, because a change of owner takes mode bits away.
  const bool hasGroup = own.st_gid == status.st_gid || fchown(file, static_cast<uid_t>(-1), status.st_gid) == 0;
  const bool hasOwner = own.st_uid == status.st_uid || fchown(file, status.st_uid, static_cast<gid_t>(-1)) == 0;
  mode_t mode = status.st_mode & ModeBits;
  if (!hasOwner) mode &= ~static_cast<mode_t>(S_ISUID);
  // Another group may do what everybody may.
  if (!hasGroup) mode &= ~static_cast<mode_t>(S_ISGID | S_IRWXG) | ((mode & S_IRWXO) << 3);
  return fchmod(file, mode) == 0;
}

bool TemporaryFile::Fill(std::string_view bytes, Durability durability) {
  while (!bytes.empty()) {
    const ssize_t written = Uninterrupted([&] { return write(descriptor_.Get(), bytes.data(), bytes.size()); });
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  MarkAsWhole(descriptor_.Get());
  const bool isFlushed = durability == Durability::Flushed;
  if (isFlushed && Uninterrupted([&] { return fsync(descriptor_.Get()); }) != 0) return false;
  // The descriptor is closed here because some file systems tell only then that the disk is full. The copy keeps the
  // lock.
  lock_ = FileDescriptor(fcntl(descriptor_.Get(), F_DUPFD_CLOEXEC, 0));
  return descriptor_.Close();
}

Placement TemporaryFile::ExchangeWith(const std::string& fileName) {
  if (renameat2(folder_, name_.c_str(), folder_, fileName.c_str(), RENAME_EXCHANGE) != 0) return PlacementAfter(errno);
  // Found by its new name, so that it is the displaced file whatever has happened in between.
  displaced_ = OpenFile(folder_, name_, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
  if (displaced_) Lock(displaced_);
  return Placement::Exchanged;
}

bool TemporaryFile::PutBack(const std::string& fileName, std::string_view bytes) {
  const auto exchange = [&] {
    return renameat2(folder_, name_.c_str(), folder_, fileName.c_str(), RENAME_EXCHANGE) == 0;
  };
  if (!exchange()) {
    const int error = errno;
    struct stat status {};
    const bool isRemoved = error == ENOENT && fstatat(folder_, fileName.c_str(), &status, 0) != 0 && errno == ENOENT;
    if (isRemoved) return true;
    isThere_ = false;
    errno = error == ENOENT ? EBUSY : error;  // another program has taken it away
    return false;
  }
  // What comes out must be the new file. Something newer still goes back where it was.
  const FileDescriptor out = OpenFile(folder_, name_, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
  if (out && !HoldsBytes(out.Get(), bytes) && !exchange()) isThere_ = false;
  return true;
}

Placement TemporaryFile::TakeName(const std::string& fileName) {
  if (renameat2(folder_, name_.c_str(), folder_, fileName.c_str(), RENAME_NOREPLACE) != 0) return PlacementAfter(errno);
  isThere_ = false;
  return Placement::Alone;
}

Placement TemporaryFile::ReplaceBlindly(const std::string& fileName) {
  if (renameat(folder_, name_.c_str(), folder_, fileName.c_str()) != 0) return PlacementAfter(errno);
  isThere_ = false;
  return Placement::Alone;
}

}  // namespace Helmsway
