#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <memory>
#include <ostream>
#include <vector>

#include "bench/host/FileDescriptor.h"
#include "bench/replay/DescriptorStream.h"

namespace Helmsway {

/// The file that a run's output goes to. It is written beside its place, and put in place at the end: until then, and
/// if that doesn't come, what was there before stays. A link stays one: its target is replaced. Mode and, where the
/// system allows it, owner are kept.
///
/// Written directly are: what is no regular file, such as a pipe, a terminal or `/dev/null`; what the standard output
/// or error goes to as well; and a file in a folder in which no other can be made.
class TraceFile {
 public:
  /// Throws `std::runtime_error` when the file can't be written, or is one of `inputs` (by whatever name), which need
  /// not exist yet. It waits for a reader where `file` is a named pipe.
  TraceFile(const std::filesystem::path& file, const std::vector<std::filesystem::path>& inputs);
  TraceFile(const TraceFile&) = delete;
  TraceFile& operator=(const TraceFile&) = delete;
  /// What was not put in place is removed.
  ~TraceFile();

  std::ostream& Out() { return *out_; }

  /// Throws `std::runtime_error` when not all has been written.
  void PutInPlace();

 private:
  void Open();
  void OpenBeside(const struct ::stat* old);
  void CopyToTarget();

  std::filesystem::path name_;    // as the user calls it
  std::filesystem::path target_;  // without links
  std::filesystem::path beside_;  // empty when the target is written directly
  FileDescriptor descriptor_;
  std::unique_ptr<DescriptorStream> out_;
};

}  // namespace Helmsway
