#include "bench/host/ConfigurationFile.h"

#include <optional>

#include "bench/host/AtomicFile.h"
#include "bench/host/IniEdits.h"

namespace Helmsway {
namespace {

/// `edit` gives the new bytes, or nothing when it can't be done.
template <class Edit>
bool EditFile(const std::string& path, Durability durability, Edit edit) {
  constexpr int mostAttempts = 100;  // another program that edits without pause must not keep us here for ever
  for (int attempt = 0; attempt < mostAttempts; ++attempt) {
    FileContents old;
    const FilePresence presence = ReadWholeFile(path, old);
    if (presence == FilePresence::Failed) return false;
    const std::optional<std::string> bytes = edit(old.bytes);
    if (!bytes) return false;
    if (*bytes == old.bytes) return true;

    const FileContents* const expected = presence == FilePresence::Present ? &old : nullptr;
    const Replacement replacement = ReplaceFile(path, *bytes, expected, durability);
    if (replacement != Replacement::Superseded) return replacement == Replacement::Done;
  }
  return false;
}

}  // namespace

bool SetIniValue(const std::string& path, std::string_view section, std::string_view key, std::string_view value,
                 Durability durability) {
  return EditFile(path, durability, [&](std::string_view bytes) { return WithValue(bytes, section, key, value); });
}

bool RemoveIniValue(const std::string& path, std::string_view section, std::string_view key, Durability durability) {
  return EditFile(path, durability,
                  [&](std::string_view bytes) { return std::optional(WithoutKey(bytes, section, key)); });
}

}  // namespace Helmsway
