#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <string>

namespace Helmsway {

/// What tells one state of a file from another without reading it: which file it is, how long, and when it and its
/// entry were last changed, in nanoseconds. The time of the last change of the entry is the one that no program can
/// set.
struct FileStamp {
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  std::int64_t modified = 0;
  std::int64_t changed = 0;

  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// Whether these are states of one file between which its bytes weren't written, as far as the times say. A rename and
/// a change of the mode don't count.
bool SameContents(const FileStamp& left, const FileStamp& right) noexcept;

/// Whether there is a file behind a path, links followed. `Failed` where that can't be told.
enum class FilePresence { Present, Missing, Failed };

/// One system call. `stamp` is filled in when the file is there.
FilePresence ReadStamp(const std::string& path, FileStamp& stamp) noexcept;

/// The same of a name in a folder.
FilePresence ReadStampAt(int folder, const std::string& name, FileStamp& stamp) noexcept;

FileStamp StampOf(const struct stat& status) noexcept;

/// The clock that file systems stamp with, in nanoseconds. It advances in steps of some milliseconds.
std::int64_t StampClock() noexcept;

/// What the `errno` of a call that was given a path says about the file.
FilePresence PresenceAfter(int error) noexcept;

}  // namespace Helmsway
