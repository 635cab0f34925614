#include "bench/host/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <thread>

#include "bench/host/SystemCalls.h"

namespace Helmsway {

FolderLock::FolderLock(const std::string& folder, std::chrono::milliseconds patience, bool (*isGivenUp)() noexcept)
    : folder_(OpenFile(AT_FDCWD, folder, O_RDONLY | O_DIRECTORY)) {
  using Clock = std::chrono::steady_clock;
  if (!folder_) {
    error_ = errno;
    return;
  }
  // The system has no wait with a time limit. Looks that are close together give each waiter its
  // chance between two writes of one that saves again and again.
  constexpr std::chrono::microseconds shortest{200};
  constexpr std::chrono::microseconds longest{800};
  const auto end = Clock::now() + patience;
  for (auto pause = shortest;; pause = std::min(pause * 2, longest)) {
    error_ = Uninterrupted([&] { return flock(folder_.Get(), LOCK_EX | LOCK_NB); }) == 0 ? 0 : errno;
    if (error_ != EWOULDBLOCK || Clock::now() >= end) return;
    if (isGivenUp != nullptr && isGivenUp()) return;
    std::this_thread::sleep_for(pause);
  }
}

}  // namespace Helmsway
