#include "bench/host/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <optional>
#include <utility>

#include "bench/host/FileDescriptor.h"

namespace Helmsway {
namespace {

constexpr std::int64_t Second = 1'000'000'000;
constexpr mode_t ModeBits = 07777;
constexpr mode_t WriteBits = S_IWUSR | S_IWGRP | S_IWOTH;

/// Runs a system call again for as long as a signal interrupts it.
template <class Call>
auto Uninterrupted(Call call) {
  while (true) {
    const auto result = call();
    if (result != -1 || errno != EINTR) return result;
  }
}

FileDescriptor Open(int folder, const std::string& path, int flags, mode_t mode = 0) {
  return FileDescriptor(Uninterrupted([&] { return openat(folder, path.c_str(), flags | O_CLOEXEC, mode); }));
}

/// The clock that file systems stamp with.
std::int64_t StampClock() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME_COARSE, &now);
  return static_cast<std::int64_t>(now.tv_sec) * Second + now.tv_nsec;
}

/// Whether a change at `now` or later gets another time than the stamp has. Steps of the clock are 10 ms at most; file
/// systems that count in whole seconds, or in pairs of them, give themselves away. A time far ahead is that of a clock
/// that has been put back since: it doesn't come again for as long as that.
bool IsSettled(const FileStamp& stamp, std::int64_t now) {
  const std::int64_t step = stamp.changed % Second == 0 ? 2 * Second : Second / 50;
  return now > stamp.changed + step || now < stamp.changed - step;
}

bool ReadToEnd(int descriptor, off_t expectedSize, std::string& bytes) {
  constexpr std::size_t smallestRoom = 4096;
  // One byte of room behind the expected end: the file is at its end when it stays unused.
  bytes.resize(static_cast<std::size_t>(expectedSize) + 1);
  std::size_t size = 0;
  while (true) {
    if (size == bytes.size()) bytes.resize(size * 2 + smallestRoom);
    const ssize_t got = Uninterrupted([&] { return read(descriptor, bytes.data() + size, bytes.size() - size); });
    if (got < 0) return false;
    if (got == 0) break;
    size += static_cast<std::size_t>(got);
  }
  bytes.resize(size);
  return true;
}

bool WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = Uninterrupted([&] { return write(descriptor, bytes.data(), bytes.size()); });
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

/// Folder and name of a path; the folder ends in its separator, and is "./" for a bare name.
struct PathParts {
  std::string folder;
  std::string name;
};

PathParts Parts(const std::string& path) {
  const std::size_t separator = path.rfind('/');
  if (separator == std::string::npos) return {"./", path};
  return {path.substr(0, separator + 1), path.substr(separator + 1)};
}

/// Follows symbolic links at the path's end; the last one may point at no file yet. Empty when they go round in circles
/// or can't be read.
std::optional<std::string> WithoutLinks(std::string path) {
  constexpr int mostLinks = 40;
  constexpr std::size_t longestTarget = 4096;
  for (int followed = 0; followed < mostLinks; ++followed) {
    std::string target(longestTarget, '\0');
    const ssize_t size = readlink(path.c_str(), target.data(), target.size());
    if (size < 0 && (errno == EINVAL || errno == ENOENT)) return path;
    if (size <= 0 || static_cast<std::size_t>(size) == longestTarget) return std::nullopt;
    target.resize(static_cast<std::size_t>(size));
    if (target.front() != '/') target.insert(0, Parts(path).folder);
    path = std::move(target);
  }
  return std::nullopt;
}

/// The new contents under a name of their own beside the file; gone with this object unless they have taken its place.
class TemporaryFile {
 public:
  TemporaryFile(int folder, const std::string& fileName, mode_t mode) : folder_(folder) {
    constexpr int mostNames = 100;
    constexpr std::size_t mostOfName = 200;  // the whole must not become longer than file names may be
    std::string prefix = ".";
    prefix.append(fileName, 0, mostOfName).append(".").append(std::to_string(getpid())).append("-");
    for (int attempt = 0; attempt < mostNames && !descriptor_; ++attempt) {
      name_ = prefix;
      name_.append(std::to_string(attempt)).append(".new");
      descriptor_ = Open(folder_, name_, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
      if (!descriptor_ && errno != EEXIST) return;
    }
    isThere_ = static_cast<bool>(descriptor_);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (isThere_) unlinkat(folder_, name_.c_str(), 0);
  }

  explicit operator bool() const { return isThere_; }

  /// The owner comes first, because a change of owner takes mode bits away. An owner that the system keeps for others
  /// is left: the contents count for more.
  bool TakeOver(const struct stat& status) {
    struct stat own {};
    if (fstat(descriptor_.Get(), &own) != 0) return false;
    if (own.st_gid != status.st_gid) Ignore(fchown(descriptor_.Get(), static_cast<uid_t>(-1), status.st_gid));
    if (own.st_uid != status.st_uid) Ignore(fchown(descriptor_.Get(), status.st_uid, static_cast<gid_t>(-1)));
    return fchmod(descriptor_.Get(), status.st_mode & ModeBits) == 0;
  }

  bool Fill(std::string_view bytes) {
    return WriteAll(descriptor_.Get(), bytes) && Uninterrupted([&] { return fsync(descriptor_.Get()); }) == 0 &&
           descriptor_.Close();
  }

  bool MoveTo(const std::string& fileName) {
    if (renameat(folder_, name_.c_str(), folder_, fileName.c_str()) != 0) return false;
    isThere_ = false;
    return true;
  }

 private:
  static void Ignore(int /*result*/) {}

  int folder_;
  std::string name_;
  FileDescriptor descriptor_;
  bool isThere_ = false;
};

bool MayBeReplaced(int folder, const std::string& name, const struct stat& status) {
  if (!S_ISREG(status.st_mode) || (status.st_mode & WriteBits) == 0) return false;
  return faccessat(folder, name.c_str(), W_OK, AT_EACCESS) == 0;
}

bool IsUnchanged(const std::string& path, const FileContents* expected) {
  FileStamp stamp;
  const FilePresence presence = ReadStamp(path, stamp);
  if (expected == nullptr) return presence == FilePresence::Missing;
  if (presence != FilePresence::Present || stamp != expected->stamp) return false;
  if (expected->stampSettled) return true;
  FileContents now;
  return ReadWholeFile(path, now) == FilePresence::Present && now.bytes == expected->bytes;
}

}  // namespace

FilePresence ReadWholeFile(const std::string& path, FileContents& contents) {
  constexpr int mostAttempts = 5;
  // Not blocking: something that isn't a file, a pipe for one, must not hold us up.
  const FileDescriptor file = Open(AT_FDCWD, path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
  if (!file) return PresenceAfter(errno);
  struct stat status {};
  if (fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return FilePresence::Failed;

  FileContents read;
  for (int attempt = 1;; ++attempt) {
    const std::int64_t start = StampClock();
    read.stamp = StampOf(status);
    if (lseek(file.Get(), 0, SEEK_SET) != 0 || !ReadToEnd(file.Get(), status.st_size, read.bytes) ||
        fstat(file.Get(), &status) != 0) {
      return FilePresence::Failed;
    }
    const bool sameThroughout = StampOf(status) == read.stamp;
    read.stampSettled = sameThroughout && IsSettled(read.stamp, start);
    // A file that never holds still is read as it is, and read again at the next use.
    if (sameThroughout || attempt == mostAttempts) break;
  }
  contents = std::move(read);
  return FilePresence::Present;
}

Replacement ReplaceFile(const std::string& path, std::string_view bytes, const FileContents* expected) {
  const std::optional<std::string> target = WithoutLinks(path);
  if (!target) return Replacement::Failed;
  const auto [folderPath, name] = Parts(*target);
  const FileDescriptor folder = Open(AT_FDCWD, folderPath, O_RDONLY | O_DIRECTORY);
  if (!folder) return Replacement::Failed;

  struct stat status {};
  const bool isThere = fstatat(folder.Get(), name.c_str(), &status, 0) == 0;
  if (isThere != (expected != nullptr)) return Replacement::Superseded;
  if (isThere && !MayBeReplaced(folder.Get(), name, status)) return Replacement::Failed;

  // Until the mode of the old file is on it, nobody else sees what the old one may have kept from them.
  constexpr mode_t privateMode = S_IRUSR | S_IWUSR;
  constexpr mode_t newFileMode = privateMode | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
  TemporaryFile temporary(folder.Get(), name, isThere ? privateMode : newFileMode);
  if (!temporary || (isThere && !temporary.TakeOver(status)) || !temporary.Fill(bytes)) return Replacement::Failed;

  // Flushing takes the time of a save. An edit that fell into it has to be read first.
  if (!IsUnchanged(*target, expected)) return Replacement::Superseded;
  if (!temporary.MoveTo(name)) return Replacement::Failed;

  // The file is the new one to everybody now, so this is no failure any more: after a crash it is the new or the old
  // one, whole either way. Some file systems can't flush a folder at all.
  Uninterrupted([&] { return fsync(folder.Get()); });
  return Replacement::Done;
}

}  // namespace Helmsway
