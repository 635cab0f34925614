#include "bench/host/WriteObstacle.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <optional>
#include <string_view>

#include "bench/host/FileDescriptor.h"
#include "bench/host/FolderLock.h"
#include "bench/host/InPlaceFile.h"
#include "bench/host/SystemCalls.h"
#include "bench/host/TargetPath.h"
#include "bench/host/Utf16.h"

namespace Helmsway {
namespace {

constexpr mode_t WriteBits = S_IWUSR | S_IWGRP | S_IWOTH;

/// Of a file that is there.
FileProblem ContentsProblem(int folder, const TargetPath& target) {
  const FileDescriptor file = OpenFile(folder, target.name, O_RDONLY | O_NONBLOCK | O_NOCTTY);
  if (!file) return ProblemAfter(errno, target.name);
  std::array<char, Utf16Sample> beginning{};
  const ssize_t got = Uninterrupted([&] { return read(file.Get(), beginning.data(), beginning.size()); });
  if (got < 0) return ProblemAfter(errno, target.name);
  const bool isUtf16 = IsUtf16(std::string_view(beginning.data(), static_cast<std::size_t>(got)));
  return isUtf16 ? Utf16Problem(target.name) : FileProblem();
}

FileProblem AccessProblem(int folder, const std::string& name, const FileProblem& notAllowed) {
  if (faccessat(folder, name.c_str(), W_OK, AT_EACCESS) == 0 || errno == ENOENT) return {};
  return errno == EACCES || errno == EPERM ? notAllowed : ProblemAfter(errno, name);
}

enum class Use { Read, Write };

FileProblem Obstacle(const std::string& path, Use use) {
  const std::optional<TargetPath> target = TargetOf(path);
  if (!target) return ProblemAfter(errno, path);
  const std::string& name = target->name;
  if (name.empty()) return use == Use::Read && path.empty() ? FileProblem() : NotAFileProblem(path);
  const FileDescriptor folder = OpenFile(AT_FDCWD, target->folder, O_RDONLY | O_DIRECTORY);
  const bool hasNoFolder = !folder && (errno == ENOENT || errno == ENOTDIR);
  if (hasNoFolder && use == Use::Read) return {};
  if (!folder) return ProblemAfter(errno, target->folder);

  struct stat status {};
  if (fstatat(folder.Get(), name.c_str(), &status, 0) != 0) {
    if (errno != ENOENT) return ProblemAfter(errno, name);
    return use == Use::Read ? FileProblem() : AccessProblem(folder.Get(), ".", ReadOnlyFolderProblem(name));
  }
  if (!S_ISREG(status.st_mode)) return NotAFileProblem(name);
  if (FileProblem problem = ContentsProblem(folder.Get(), *target)) return problem;
  return use == Use::Read ? FileProblem() : WriteAccessProblem(folder.Get(), name);
}

/// Another writer that has the folder for longer than a write takes, or one that was cut off.
FileProblem WriterProblem(const std::string& path) {
  constexpr std::chrono::milliseconds longWrite{300};
  const std::optional<TargetPath> target = TargetOf(path);
  if (!target) return ProblemAfter(errno, path);
  const FolderLock lock(target->folder, longWrite);
  if (!lock) return ProblemAfter(lock.Error(), path);
  return InterruptedWriteObstacle(lock.Folder(), target->name);
}

}  // namespace

FileProblem WriteAccessProblem(int folder, const std::string& name) {
  struct stat status {};
  if (fstatat(folder, name.c_str(), &status, 0) != 0)
    return errno == ENOENT ? FileProblem() : ProblemAfter(errno, name);
  if (!S_ISREG(status.st_mode)) return NotAFileProblem(name);
  if ((status.st_mode & WriteBits) == 0) return ReadOnlyFileProblem(name);
  return AccessProblem(folder, name, ReadOnlyFileProblem(name));
}

FileProblem WriteObstacle(const std::string& path) {
  FileProblem problem = Obstacle(path, Use::Write);
  return problem ? problem : WriterProblem(path);
}

FileProblem ReadObstacle(const std::string& path) { return Obstacle(path, Use::Read); }

}  // namespace Helmsway
