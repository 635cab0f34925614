#pragma once

#include <string>
#include <string_view>

#include "bench/host/Durability.h"
#include "bench/host/FileStamp.h"

/// Files read whole and replaced whole. Nobody who opens such a file sees a part of a write, and neither does anybody
/// after a crash. All the system calls behind a save of the configuration stand here, in `TemporaryFile`, `FileStamp`,
/// `FileDescriptor` and `SystemCalls`.
namespace Helmsway {

/// A state of a file.
struct FileContents {
  std::string bytes;
  FileStamp stamp;  ///< of the file as it was while `bytes` were read
  /// True when each change behind this read shows in the file's stamp. File systems stamp with a clock that advances in
  /// steps; while the step of the last change lasts, the next change gets the same stamp.
  bool stampSettled = false;
};

/// `Missing` also when a folder on the way isn't there. `Failed` when there is something that can't be read, or that is
/// no file; then, and when missing, `contents` stays as it was.
FilePresence ReadWholeFile(const std::string& path, FileContents& contents);

enum class Replacement {
  Done,
  Superseded,  ///< another program has changed the file meanwhile
  Failed,
};

/// Puts `bytes` in place of the file's contents, or makes the file. `expected` is the state that the caller has seen;
/// null for no file. But for `Done` the file is as it was and nothing is left behind.
///
/// Mode and owner are kept, the owner where the system lets us. A symbolic link stays one: its target is replaced, or
/// made. The file is a new one to the file system, so a second hard link keeps the old contents. A file that nobody may
/// write is not replaced, whoever we are. When `Done` and to be `Flushed`, the bytes are on the disk, and so is their
/// name as far as the file system flushes folders. The file that has been replaced is looked at once more, and put back
/// if another program has changed it.
///
/// Not kept: access lists and extended attributes; what another program writes later through a descriptor of the old
/// file, which is also the rest of a file that it has truncated and is still writing when we read it; where the file
/// system can't exchange two files, an edit between the last look and the rename right behind it; and an edit in that
/// place when, moreover, this process is killed or a third program writes within the same few system calls.
Replacement ReplaceFile(const std::string& path, std::string_view bytes, const FileContents* expected,
                        Durability durability = Durability::Flushed);

}  // namespace Helmsway
