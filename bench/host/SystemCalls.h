#pragma once

#include <fcntl.h>
#include <sys/types.h>

#include <cerrno>
#include <string>

#include "bench/host/FileDescriptor.h"

namespace Helmsway {

/// Runs a system call again for as long as a signal interrupts it.
template <class Call>
auto Uninterrupted(Call call) {
  while (true) {
    const auto result = call();
    if (result != -1 || errno != EINTR) return result;
  }
}

/// Relative paths lead from `folder`. Holds none, with `errno` set, where the file can't be opened.
inline FileDescriptor OpenFile(int folder, const std::string& path, int flags, mode_t mode = 0) {
  return FileDescriptor(Uninterrupted([&] { return openat(folder, path.c_str(), flags | O_CLOEXEC, mode); }));
}

}  // namespace Helmsway
