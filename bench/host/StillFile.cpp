#include "bench/host/StillFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <mutex>
#include <thread>
#include <utility>

#include "bench/host/FileDescriptor.h"
#include "bench/host/SystemCalls.h"

namespace Helmsway {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::int64_t Second = 1'000'000'000;

/// The state that the last write of this process left, for files whose times don't say so: those of other users, and
/// those on file systems that count in seconds.
class LastWrite {
 public:
  void Remember(const FileStamp& stamp) {
    const std::lock_guard guard(mutex_);
    stamp_ = stamp;
  }
  bool Left(const FileStamp& stamp) {
    const std::lock_guard guard(mutex_);
    return SameContents(stamp, stamp_);
  }

 private:
  std::mutex mutex_;
  FileStamp stamp_;
};

LastWrite& LastWriteOfThisProcess() {
  static LastWrite last;
  return last;
}

bool IsLongSince(std::int64_t changed) {
  const std::int64_t age = StampClock() - changed;
  return age >= std::chrono::nanoseconds(Stillness).count();
}

bool IsWhole(const FileStamp& stamp) {
  return stamp.modified != stamp.changed || IsLongSince(stamp.changed) || LastWriteOfThisProcess().Left(stamp);
}

/// Whether no name in the folder has come or gone for a while. Also where the folder can't be asked.
bool IsStillFolder(int folder) {
  struct stat status {};
  return fstat(folder, &status) != 0 || IsLongSince(StampOf(status).changed);
}

}  // namespace

Reading ReadStillFile(int folder, const std::string& name, std::chrono::milliseconds patience, FileContents& contents,
                      bool (*isGivenUp)() noexcept) {
  constexpr std::chrono::milliseconds pause{5};
  const auto end = Clock::now() + patience;
  FileStamp seen;
  bool wasMissing = false;
  auto since = Clock::now();
  while (true) {
    FileStamp stamp;
    const FilePresence presence = ReadStampAt(folder, name, stamp);
    if (presence == FilePresence::Failed) return Reading::Failed;
    const bool isMissing = presence == FilePresence::Missing;
    if (isMissing != wasMissing || stamp != seen) {
      wasMissing = isMissing;
      seen = stamp;
      since = Clock::now();
    }
    const bool isOldNews = Clock::now() - since >= Stillness;
    // An editor may rename the old file away before it writes the new one.
    if (isMissing && (IsStillFolder(folder) || isOldNews)) return Reading::Missing;
    // The clock of a network folder may be another one, so what is seen for long enough counts too.
    if (!isMissing && (IsWhole(stamp) || isOldNews)) {
      FileContents read;
      const FilePresence now = ReadWholeFileAt(folder, name, read);
      if (now == FilePresence::Failed) return Reading::Failed;
      if (now == FilePresence::Present && read.stamp == stamp && read.sameThroughout) {
        contents = std::move(read);
        return Reading::Present;
      }
    }
    if (Clock::now() >= end || (isGivenUp != nullptr && isGivenUp())) return Reading::Restless;
    std::this_thread::sleep_for(pause);
  }
}

void MarkAsWhole(int descriptor) {
  constexpr std::int64_t earlier = Second / 33;
  const std::int64_t time = StampClock() - earlier;
  const std::array<timespec, 2> times = {
      timespec{0, UTIME_OMIT}, timespec{static_cast<time_t>(time / Second), static_cast<long>(time % Second)}};
  futimens(descriptor, times.data());
  struct stat status {};
  if (fstat(descriptor, &status) == 0) LastWriteOfThisProcess().Remember(StampOf(status));
}

void MarkAsWhole(const std::string& path) {
  const FileDescriptor file = OpenFile(AT_FDCWD, path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
  if (file) MarkAsWhole(file.Get());
}

bool IsOpenForWriting(int descriptor) {
  // A lease for reading is refused while any descriptor for writing is open. It is given back at once; a program that
  // opens the file in between waits that long, and the signal that tells us of it must be one that does nothing.
  if (fcntl(descriptor, F_SETSIG, SIGURG) != 0) return false;
  if (fcntl(descriptor, F_SETLEASE, F_RDLCK) != 0) return errno == EAGAIN;
  fcntl(descriptor, F_SETLEASE, F_UNLCK);
  return false;
}

}  // namespace Helmsway
