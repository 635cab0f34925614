#include "bench/replay/TraceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>

#include "bench/replay/Interruption.h"

namespace Helmsway {
namespace {

namespace fs = std::filesystem;

constexpr mode_t AnyMode = 07777;
constexpr mode_t NewFileMode = 0666;

using Status = struct stat;

std::optional<Status> StatusOf(const fs::path& path) {
  Status status{};
  if (stat(path.c_str(), &status) != 0) return std::nullopt;
  return status;
}

bool AreSame(const Status& left, const Status& right) {
  return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

/// The file that `path` leads to, whether it exists or not; with no link in it as far as there are folders.
fs::path WithoutLinks(fs::path path) {
  constexpr int mostLinks = 40;
  std::error_code ignored;
  for (int links = 0; links < mostLinks && fs::is_symlink(path, ignored); ++links) {
    path = path.parent_path() / fs::read_symlink(path, ignored);
  }
  return fs::weakly_canonical(fs::absolute(path, ignored), ignored);
}

/// What is read and what is written can be the same only where nothing is kept: in a device.
bool WouldOverwrite(const fs::path& trace, const fs::path& input) {
  const std::optional<Status> written = StatusOf(trace);
  const std::optional<Status> read = StatusOf(input);
  if (written && read) return AreSame(*written, *read) && !S_ISCHR(written->st_mode);
  return WithoutLinks(trace) == WithoutLinks(input);
}

/// The standard output or error, where it goes to that file; -1 otherwise.
int StandardDescriptorOf(const Status& file) {
  for (const int descriptor : {STDOUT_FILENO, STDERR_FILENO}) {
    Status status{};
    if (fstat(descriptor, &status) == 0 && AreSame(status, file)) return descriptor;
  }
  return -1;
}

mode_t ModeOfNewFiles() {
  const mode_t mask = umask(0);
  umask(mask);
  return NewFileMode & ~mask;
}

[[noreturn]] void RefuseToWrite(const fs::path& file, const std::string& why) {
  throw std::runtime_error("the trace can't be written to " + file.string() + ": " + why);
}

std::string SystemsReason() { return std::generic_category().message(errno); }

}  // namespace

TraceFile::TraceFile(const fs::path& file, const std::vector<fs::path>& inputs)
    : name_(file), target_(WithoutLinks(file)) {
  if (!file.has_filename()) RefuseToWrite(file, "it doesn't name a file");
  for (const fs::path& input : inputs) {
    if (WouldOverwrite(file, input)) RefuseToWrite(file, "it is what the run reads, " + input.string());
  }
  Open();
  out_ = std::make_unique<DescriptorStream>(descriptor_.Get());
}

TraceFile::~TraceFile() {
  out_.reset();
  if (beside_.empty()) return;
  const Interruption::Shield shield;
  std::error_code ignored;
  fs::remove(beside_, ignored);
  Interruption::Forget(beside_);
}

void TraceFile::Open() {
  const std::optional<Status> old = StatusOf(name_);
  if (!old) return OpenBeside(nullptr);
  if (S_ISDIR(old->st_mode)) RefuseToWrite(name_, "it is a folder");
  if (const int standard = StandardDescriptorOf(*old); standard >= 0) {
    descriptor_ = FileDescriptor(dup(standard));
  } else if (S_ISREG(old->st_mode)) {
    // A protected file is not replaced, although its folder might allow it.
    if (access(name_.c_str(), W_OK) != 0) RefuseToWrite(name_, SystemsReason());
    return OpenBeside(&*old);
  } else {
    descriptor_ = FileDescriptor(open(name_.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC));
  }
  if (!descriptor_) RefuseToWrite(name_, SystemsReason());
}

void TraceFile::OpenBeside(const Status* old) {
  // A name of its own and not the target's with an ending, which might be too long.
  std::string pattern = (target_.parent_path() / ".helmsway-trace-XXXXXX").string();
  {
    const Interruption::Shield shield;
    descriptor_ = FileDescriptor(mkostemp(pattern.data(), O_CLOEXEC));
    if (descriptor_) {
      beside_ = pattern;
      Interruption::RemoveAtEnd(beside_);
    }
  }
  if (!descriptor_ && old != nullptr) {
    descriptor_ = FileDescriptor(open(target_.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
  }
  if (!descriptor_) RefuseToWrite(name_, SystemsReason());
  if (beside_.empty()) return;
  // Without the rights to it the file stays ours. Its owner goes first, since a change of it may take bits of the mode.
  const bool owned = old == nullptr || fchown(descriptor_.Get(), old->st_uid, old->st_gid) == 0;
  const mode_t mode = old == nullptr ? ModeOfNewFiles() : old->st_mode & AnyMode;
  fchmod(descriptor_.Get(), owned ? mode : mode & ~static_cast<mode_t>(S_ISUID | S_ISGID));
}

void TraceFile::CopyToTarget() {
  std::ifstream written(beside_, std::ios::binary);
  std::ofstream target(target_, std::ios::binary | std::ios::trunc);
  // Nothing to be copied would count as a failure.
  if (written.peek() != std::ifstream::traits_type::eof()) target << written.rdbuf();
  target.close();
  if (!target || written.bad()) RefuseToWrite(name_, "not all of it arrived");
}

void TraceFile::PutInPlace() {
  if (!out_->flush()) RefuseToWrite(name_, "not all of it arrived");
  if (!descriptor_.Close()) RefuseToWrite(name_, SystemsReason());
  if (beside_.empty()) return;
  const Interruption::Shield shield;
  if (rename(beside_.c_str(), target_.c_str()) == 0) {
    Interruption::Forget(beside_);
    beside_.clear();
    return;
  }
  // A file that may be written but not replaced, such as one that is a mount point, or another's in a sticky folder.
  if (!fs::exists(target_)) RefuseToWrite(name_, SystemsReason());
  CopyToTarget();
}

}  // namespace Helmsway
