#pragma once

#include <chrono>
#include <string>

#include "bench/host/FileDescriptor.h"

namespace Helmsway {

/// One writer at a time in a folder: programs, threads and services wait for each other. The lock is the system's
/// `flock` on the folder itself. It leaves no file, needs no right to write, and ends with its holder, also with one
/// that is killed. A folder of a network is locked among the programs of one computer only.
class FolderLock {
 public:
  /// Waits for at most `patience`, and no longer than until `isGivenUp`, if there is one, says so.
  FolderLock(const std::string& folder, std::chrono::milliseconds patience, bool (*isGivenUp)() noexcept = nullptr);

  /// False when the folder can't be opened or locked.
  explicit operator bool() const noexcept { return error_ == 0; }
  /// `errno` of what failed; `EWOULDBLOCK` when another writer kept the lock. Such a folder isn't written in.
  int Error() const noexcept { return error_; }

  int Folder() const noexcept { return folder_.Get(); }

 private:
  FileDescriptor folder_;
  int error_ = 0;
};

}  // namespace Helmsway
