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
#include "bench/host/SystemCalls.h"
#include "bench/host/TargetPath.h"
#include "bench/host/TemporaryFile.h"

namespace Helmsway {
namespace {

constexpr std::int64_t Second = 1'000'000'000;
constexpr mode_t WriteBits = S_IWUSR | S_IWGRP | S_IWOTH;

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

bool MayBeReplaced(const struct stat& status) { return S_ISREG(status.st_mode) && (status.st_mode & WriteBits) != 0; }

bool Holds(const std::string& path, std::string_view bytes) {
  FileContents contents;
  return ReadWholeFile(path, contents) == FilePresence::Present && contents.bytes == bytes;
}

/// As far as the stamp tells.
bool SeemsUnchanged(const std::string& path, const FileContents* expected) {
  FileStamp stamp;
  const FilePresence presence = ReadStamp(path, stamp);
  if (expected == nullptr) return presence == FilePresence::Missing;
  return presence == FilePresence::Present && stamp == expected->stamp;
}

bool IsUnchanged(const std::string& path, const FileContents* expected) {
  if (!SeemsUnchanged(path, expected)) return false;
  return expected == nullptr || expected->stampSettled || Holds(path, expected->bytes);
}

/// Puts the displaced file, which another program has changed, into its place again. False when that isn't possible; it
/// stays under its temporary name then.
bool PutBack(TemporaryFile& temporary, const std::string& folderPath, const std::string& name, std::string_view bytes) {
  if (!temporary.ExchangeAgain(name)) {
    if (errno == ENOENT) return true;  // removed by now, by somebody who has seen the new file
    temporary.Keep();
    return false;
  }
  // What comes out must be the new file. Something newer still goes back where it was.
  if (!Holds(folderPath + temporary.Name(), bytes)) temporary.ExchangeAgain(name);
  return true;
}

}  // namespace

FilePresence ReadWholeFile(const std::string& path, FileContents& contents) {
  constexpr int mostAttempts = 5;
  // Not blocking: something that isn't a file, a pipe for one, must not hold us up.
  const FileDescriptor file = OpenFile(AT_FDCWD, path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
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

Replacement ReplaceFile(const std::string& path, std::string_view bytes, const FileContents* expected,
                        Durability durability) {
  const std::optional<TargetPath> target = TargetOf(path);
  if (!target) return Replacement::Failed;
  const auto& [folderPath, name] = *target;
  const FileDescriptor folder = OpenFile(AT_FDCWD, folderPath, O_RDONLY | O_DIRECTORY);
  if (!folder) return Replacement::Failed;

  struct stat status {};
  const bool isThere = fstatat(folder.Get(), name.c_str(), &status, 0) == 0;
  if (isThere != (expected != nullptr)) return Replacement::Superseded;
  if (isThere && !MayBeReplaced(status)) return Replacement::Failed;
  if (isThere && faccessat(folder.Get(), name.c_str(), W_OK, AT_EACCESS) != 0) {
    return errno == ENOENT ? Replacement::Superseded : Replacement::Failed;
  }

  // Until the mode of the old file is on it, nobody else sees what the old one may have kept from them.
  constexpr mode_t privateMode = S_IRUSR | S_IWUSR;
  constexpr mode_t newFileMode = privateMode | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
  TemporaryFile temporary(folder.Get(), name, isThere ? privateMode : newFileMode);
  if (!temporary || (isThere && !temporary.TakeOver(status))) return Replacement::Failed;
  if (!temporary.Fill(bytes, durability)) return Replacement::Failed;

  // Flushing takes the time of a save. An edit that fell into it has to be read first.
  if (!SeemsUnchanged(target->Whole(), expected)) return Replacement::Superseded;
  Placement placement = expected != nullptr ? temporary.ExchangeWith(name) : temporary.TakeName(name);
  if (placement == Placement::Unable) {
    if (!IsUnchanged(target->Whole(), expected)) return Replacement::Superseded;
    placement = temporary.ReplaceBlindly(name);
  }
  if (placement == Placement::Superseded) return Replacement::Superseded;
  if (placement == Placement::Failed || placement == Placement::Unable) return Replacement::Failed;
  // An edit that slipped in has come out with the file that has been displaced.
  if (expected != nullptr && placement == Placement::Exchanged &&
      !Holds(folderPath + temporary.Name(), expected->bytes)) {
    return PutBack(temporary, folderPath, name, bytes) ? Replacement::Superseded : Replacement::Failed;
  }

  // The file is the new one to everybody now, so this is no failure any more: after a crash it is the new or the old
  // one, whole either way. Some file systems can't flush a folder at all. The displaced file goes behind this, so that
  // one of the two is on the disk at any time.
  if (durability == Durability::Flushed) Uninterrupted([&] { return fsync(folder.Get()); });
  return Replacement::Done;
}

}  // namespace Helmsway
