#include "bench/host/ConfigurationFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

#include "bench/host/AtomicFile.h"
#include "bench/host/FolderLock.h"
#include "bench/host/InPlaceFile.h"
#include "bench/host/IniEdits.h"
#include "bench/host/KeptBytes.h"
#include "bench/host/StillFile.h"
#include "bench/host/SystemCalls.h"
#include "bench/host/TargetPath.h"
#include "bench/host/Utf16.h"
#include "bench/host/WriteObstacle.h"

namespace Helmsway {
namespace {

using Kind = Replacement::Kind;

FileProblem RestlessProblem() { return BusyProblem("another program keeps changing the file"); }

/// A file that another program goes on writing would lose that if it were replaced. The same counts for an empty one:
/// nearly always a program has just opened it and is about to fill it.
bool IsToBeWrittenInPlace(int folder, const std::string& name, const FileContents& old) {
  if (old.bytes.empty()) return true;
  const FileDescriptor file = OpenFile(folder, name, O_RDONLY | O_NONBLOCK | O_NOCTTY);
  return file && IsOpenForWriting(file.Get());
}

/// One attempt at putting `bytes` into the file, by replacing it if that can be done.
Replacement Put(int folder, const std::string& name, std::string_view bytes, const FileContents* old,
                Durability durability) {
  if (old != nullptr && IsToBeWrittenInPlace(folder, name, *old)) {
    return WriteInPlace(folder, name, bytes, *old, durability);
  }
  const Replacement replacement = ReplaceFile(folder, name, bytes, old, durability);
  const bool isBarred = replacement.kind == Kind::Barred && old != nullptr;
  return isBarred ? WriteInPlace(folder, name, bytes, *old, durability) : replacement;
}

FileProblem ProblemOf(const Replacement& replacement, const std::string& name, bool isThere) {
  const int error = replacement.error;
  if (error == EACCES || error == EPERM) return isThere ? ReadOnlyFileProblem(name) : ReadOnlyFolderProblem(name);
  return ProblemAfter(error, name);
}

/// `edit` gives the new bytes, or nothing when it can't be done.
template <class Edit>
FileProblem EditFile(const std::string& path, const WriteTerms& terms, Edit edit) {
  const std::optional<TargetPath> target = TargetOf(path);
  if (!target) return ProblemAfter(errno, path);
  const std::string& name = target->name;
  if (name.empty()) return NotAFileProblem(path);
  const FolderLock lock(target->folder, terms.patience, terms.isGivenUp);
  if (!lock) return ProblemAfter(lock.Error(), name);
  const int folder = lock.Folder();
  if (FileProblem problem = UndoInterruptedWrite(folder, name, terms.durability)) return problem;

  constexpr int mostAttempts = 100;  // another program that edits without pause must not keep us here for ever
  const auto end = std::chrono::steady_clock::now() + terms.patience;
  for (int attempt = 0; attempt < mostAttempts; ++attempt) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    FileContents old;
    const Reading reading = ReadStillFile(folder, name, left, old, terms.isGivenUp);
    if (reading == Reading::Failed) return ProblemAfter(errno, name);
    if (reading == Reading::Restless) return RestlessProblem();
    if (IsUtf16(old.bytes)) return Utf16Problem(name);
    const std::optional<std::string> bytes = edit(old.bytes);
    if (!bytes) return BadTextProblem("a name or the value is one that a line of the file can't hold");
    if (*bytes == old.bytes) return {};

    const bool isThere = reading == Reading::Present;
    if (isThere) {
      if (FileProblem problem = WriteAccessProblem(folder, name)) return problem;
    }
    const Replacement replacement = Put(folder, name, *bytes, isThere ? &old : nullptr, terms.durability);
    if (replacement.kind == Kind::Done) return {};
    const bool isFinal = replacement.kind == Kind::Failed || replacement.kind == Kind::Barred;
    if (isFinal) return ProblemOf(replacement, name, isThere);
  }
  return RestlessProblem();
}

}  // namespace

FileProblem SetIniValue(const std::string& path, std::string_view section, std::string_view key, std::string_view value,
                        const WriteTerms& terms) {
  return EditFile(path, terms, [&](std::string_view bytes) { return WithValue(bytes, section, key, value); });
}

FileProblem RemoveIniValue(const std::string& path, std::string_view section, std::string_view key,
                           const WriteTerms& terms) {
  return EditFile(path, terms, [&](std::string_view bytes) { return std::optional(WithoutKey(bytes, section, key)); });
}

void UndoInterruptedWrites(const std::string& path, Durability durability) {
  const std::optional<TargetPath> target = TargetOf(path);
  if (!target || target->name.empty()) return;
  {
    const FileDescriptor folder = OpenFile(AT_FDCWD, target->folder, O_RDONLY | O_DIRECTORY);
    if (!folder || !KeptBytes(folder.Get(), target->name).Find()) return;
  }
  const FolderLock lock(target->folder, std::chrono::milliseconds(0));
  // A problem is shown by the next write; reads give what the file holds.
  if (lock) static_cast<void>(UndoInterruptedWrite(lock.Folder(), target->name, durability));
}

}  // namespace Helmsway
