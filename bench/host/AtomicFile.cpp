#include "bench/host/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "bench/host/FileDescriptor.h"
#include "bench/host/StillFile.h"
#include "bench/host/SystemCalls.h"
#include "bench/host/TemporaryFile.h"

namespace Helmsway {
namespace {

using Kind = Replacement::Kind;

constexpr std::int64_t Second = 1'000'000'000;

/// Whether a change at `now` or later gets another time than that one. Steps of the clock are 10 ms at most; file
/// systems that count in whole seconds, or in pairs of them, show it in their times. A time far ahead is that of a
/// clock that has been put back since: it doesn't come again for as long as that.
bool IsSettled(std::int64_t time, std::int64_t now) {
  const std::int64_t step = time % Second == 0 ? 2 * Second : Second / 50;
  return now > time + step || now < time - step;
}

bool ReadToEnd(int descriptor, off_t expectedSize, std::string& bytes) {
  constexpr std::size_t smallestRoom = 4096;
  // One byte of room after the expected end: the file is at its end when it stays unused.
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

bool IsUnchanged(int folder, const std::string& name, const FileContents* expected) {
  FileStamp stamp;
  const FilePresence presence = ReadStampAt(folder, name, stamp);
  if (expected == nullptr) return presence == FilePresence::Missing;
  if (presence != FilePresence::Present || stamp != expected->stamp) return false;
  if (expected->stampSettled) return true;
  const FileDescriptor file = OpenFile(folder, name, O_RDONLY | O_NONBLOCK | O_NOCTTY);
  return file && HoldsBytes(file.Get(), expected->bytes);
}

Replacement After(Placement placement, int error) {
  switch (placement) {
    case Placement::Superseded:
      return {Kind::Superseded, error};
    case Placement::Barred:
      return {Kind::Barred, error};
    default:
      return {Kind::Failed, error};
  }
}

bool IsBar(int error) { return error == EACCES || error == EPERM || error == EROFS; }

/// What the displaced file says of other programs. Only a file that is as it was expected may go.
enum class Displaced { AsExpected, Changed, Held };

Displaced LookAtDisplaced(const TemporaryFile& temporary, const FileContents& expected) {
  // The contents come last: a program that has just closed the file has written by then.
  const bool isOpen = IsOpenForWriting(temporary.DisplacedFile());
  struct stat status {};
  if (fstat(temporary.DisplacedFile(), &status) != 0) return Displaced::Changed;
  if (!SameContents(StampOf(status), expected.stamp)) return Displaced::Changed;
  if (!expected.contentsSettled && !HoldsBytes(temporary.DisplacedFile(), expected.bytes)) return Displaced::Changed;
  return isOpen ? Displaced::Held : Displaced::AsExpected;
}

}  // namespace

FilePresence ReadWholeFile(const std::string& path, FileContents& contents) {
  return ReadWholeFileAt(AT_FDCWD, path, contents);
}

FilePresence ReadWholeFileAt(int folder, const std::string& name, FileContents& contents) {
  constexpr int mostAttempts = 5;
  // Not blocking: something that isn't a file, a pipe for one, must not hold us up.
  const FileDescriptor file = OpenFile(folder, name, O_RDONLY | O_NONBLOCK | O_NOCTTY);
  if (!file) return PresenceAfter(errno);
  struct stat status {};
  if (fstat(file.Get(), &status) != 0) return FilePresence::Failed;
  if (!S_ISREG(status.st_mode)) {
    errno = EISDIR;
    return FilePresence::Failed;
  }

  FileContents read;
  for (int attempt = 1;; ++attempt) {
    const std::int64_t start = StampClock();
    read.stamp = StampOf(status);
    if (lseek(file.Get(), 0, SEEK_SET) != 0 || !ReadToEnd(file.Get(), status.st_size, read.bytes) ||
        fstat(file.Get(), &status) != 0) {
      return FilePresence::Failed;
    }
    read.sameThroughout = StampOf(status) == read.stamp;
    read.stampSettled = read.sameThroughout && IsSettled(read.stamp.changed, start);
    read.contentsSettled = read.sameThroughout && IsSettled(read.stamp.modified, start);
    // A file that never holds still is read as it is, and read again at the next use.
    if (read.sameThroughout || attempt == mostAttempts) break;
  }
  contents = std::move(read);
  return FilePresence::Present;
}

bool HoldsBytes(int descriptor, std::string_view bytes) {
  constexpr std::size_t most = 65'536;
  std::string part(std::min(most, bytes.size() + 1), '\0');
  if (lseek(descriptor, 0, SEEK_SET) != 0) return false;
  while (true) {
    const ssize_t got = Uninterrupted([&] { return read(descriptor, part.data(), part.size()); });
    if (got <= 0) return got == 0 && bytes.empty();
    const auto size = static_cast<std::size_t>(got);
    if (bytes.substr(0, size) != std::string_view(part).substr(0, size)) return false;
    bytes.remove_prefix(size);
  }
}

Replacement ReplaceFile(int folder, const std::string& name, std::string_view bytes, const FileContents* expected,
                        Durability durability) {
  struct stat status {};
  const bool isThere = fstatat(folder, name.c_str(), &status, 0) == 0;
  if (isThere != (expected != nullptr)) return {Kind::Superseded};

  // Private until it has the old file's mode, so that its contents don't leak meanwhile.
  constexpr mode_t privateMode = S_IRUSR | S_IWUSR;
  constexpr mode_t newFileMode = privateMode | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
  TemporaryFile temporary(folder, name, isThere ? privateMode : newFileMode);
  if (!temporary) return {IsBar(errno) ? Kind::Barred : Kind::Failed, errno};
  if (isThere && !temporary.TakeOver(status)) return {IsBar(errno) ? Kind::Barred : Kind::Failed, errno};
  if (!temporary.Fill(bytes, durability)) return {Kind::Failed, errno};

  // Flushing takes the time of a save. An edit of another program that fell into it has to be read first.
  FileStamp stamp;
  const FilePresence now = ReadStampAt(folder, name, stamp);
  const bool seemsUnchanged =
      expected != nullptr ? now == FilePresence::Present && stamp == expected->stamp : now == FilePresence::Missing;
  if (!seemsUnchanged) return {Kind::Superseded};

  Placement placement = isThere ? temporary.ExchangeWith(name) : temporary.TakeName(name);
  if (placement == Placement::Unable) {
    if (!IsUnchanged(folder, name, expected)) return {Kind::Superseded};
    placement = temporary.ReplaceBlindly(name);
  }
  if (placement != Placement::Alone && placement != Placement::Exchanged) return After(placement, errno);

  // The file is the new one to everybody now, so a folder that can't be flushed is no failure any more: after a crash
  // the file is the new or the old one, whole either way. The displaced file is removed after this, so that one of the
  // two is on the disk at any time.
  const auto flushFolder = [&] {
    if (durability == Durability::Flushed) Uninterrupted([&] { return fsync(folder); });
  };
  if (placement == Placement::Alone || expected == nullptr) {
    flushFolder();
    return {Kind::Done};
  }
  // An edit that slipped in has come out with the displaced file. One look right away, which keeps the time short in
  // which other programs see a file without it, and one at the last moment.
  Displaced displaced = LookAtDisplaced(temporary, *expected);
  if (displaced == Displaced::AsExpected) {
    flushFolder();
    displaced = LookAtDisplaced(temporary, *expected);
  }
  if (displaced == Displaced::AsExpected) return {Kind::Done};
  const bool isBack = temporary.PutBack(name, bytes);
  flushFolder();
  if (!isBack) return {Kind::Failed, errno};
  return {displaced == Displaced::Held ? Kind::Held : Kind::Superseded};
}

}  // namespace Helmsway
