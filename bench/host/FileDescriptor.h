#pragma once

#include <unistd.h>

#include <utility>

namespace Helmsway {

/// Owns what the system's `open` gave; may hold none (-1).
class FileDescriptor {
 public:
  explicit FileDescriptor(int descriptor = -1) noexcept : descriptor_(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() { Close(); }

  int Get() const noexcept { return descriptor_; }
  explicit operator bool() const noexcept { return descriptor_ >= 0; }

  /// For a call that takes the descriptor over.
  int Release() noexcept { return std::exchange(descriptor_, -1); }

  /// False when the system says that what was written may not have arrived. The descriptor is gone all the same.
  bool Close() noexcept {
    const int descriptor = std::exchange(descriptor_, -1);
    return descriptor < 0 || close(descriptor) == 0;
  }

 private:
  int descriptor_;
};

}  // namespace Helmsway
