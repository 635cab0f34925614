#pragma once

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tests/host/TemporaryFolder.h"

namespace Helmsway {

/// A file that is edited through a shared mapping: the first edit gives it a new stamp, those that follow at once none.
/// So it stands for edits within one step of the clock on every file system, however fine its own clock is.
class UnstampedEdits {
 public:
  UnstampedEdits(const TemporaryFolder& folder, std::string_view name, std::string_view bytes)
      : path_(folder.Write(name, bytes)), size_(bytes.size()) {
    const int descriptor = open(path_.c_str(), O_RDWR);
    void* const mapping = mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    close(descriptor);
    if (mapping == MAP_FAILED) throw std::runtime_error("mmap");
    bytes_ = static_cast<char*>(mapping);
    start_ = std::chrono::steady_clock::now();
  }
  UnstampedEdits(const UnstampedEdits&) = delete;
  UnstampedEdits& operator=(const UnstampedEdits&) = delete;
  ~UnstampedEdits() { munmap(bytes_, size_); }

  const std::string& Path() const { return path_; }
  void Put(std::size_t offset, char letter) { bytes_[offset] = letter; }

  /// Whether it all has happened so fast that the file's stamp can't have been relied on.
  bool IsYoung() const { return std::chrono::steady_clock::now() - start_ < std::chrono::milliseconds(10); }

 private:
  std::string path_;
  std::size_t size_;
  char* bytes_ = nullptr;
  std::chrono::steady_clock::time_point start_;
};

}  // namespace Helmsway
