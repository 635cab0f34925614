#include "bench/host/ConfigurationFile.h"

#include <optional>

#include "bench/host/AtomicFile.h"
#include "bench/host/IniEdits.h"
#include "bench/host/Utf16.h"
#include "bench/host/WriteObstacle.h"

namespace Helmsway {
namespace {

FileProblem FailureOf(const std::string& path) {
  FileProblem problem = WriteObstacle(path);
  return problem ? problem : FileProblem{FileProblem::Kind::System, "the system refused the write"};
}

/// `edit` gives the new bytes, or nothing when it can't be done.
template <class Edit>
FileProblem EditFile(const std::string& path, Durability durability, Edit edit) {
  if (path.empty() || path.back() == '/') return NotAFileProblem(path);
  constexpr int mostAttempts = 100;  // another program that edits without pause must not keep us here for ever
  for (int attempt = 0; attempt < mostAttempts; ++attempt) {
    FileContents old;
    const FilePresence presence = ReadWholeFile(path, old);
    if (presence == FilePresence::Failed) return FailureOf(path);
    if (IsUtf16(old.bytes)) return Utf16Problem(path);
    const std::optional<std::string> bytes = edit(old.bytes);
    if (!bytes) return BadTextProblem("a name or the value is one that a line of the file can't hold");
    if (*bytes == old.bytes) return {};

    const FileContents* const expected = presence == FilePresence::Present ? &old : nullptr;
    const Replacement replacement = ReplaceFile(path, *bytes, expected, durability);
    if (replacement == Replacement::Done) return {};
    if (replacement == Replacement::Failed) return FailureOf(path);
  }
  return {FileProblem::Kind::Busy, "another program keeps changing the file"};
}

}  // namespace

FileProblem SetIniValue(const std::string& path, std::string_view section, std::string_view key, std::string_view value,
                        Durability durability) {
  return EditFile(path, durability, [&](std::string_view bytes) { return WithValue(bytes, section, key, value); });
}

FileProblem RemoveIniValue(const std::string& path, std::string_view section, std::string_view key,
                           Durability durability) {
  return EditFile(path, durability,
                  [&](std::string_view bytes) { return std::optional(WithoutKey(bytes, section, key)); });
}

}  // namespace Helmsway
