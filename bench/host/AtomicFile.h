#pragma once

#include <string>
#include <string_view>

#include "bench/host/Durability.h"
#include "bench/host/FileStamp.h"

/// Files read whole and replaced whole. No program that opens such a file sees a part of a write, also after a crash.
namespace Helmsway {

/// A state of a file.
struct FileContents {
  std::string bytes;
  FileStamp stamp;  ///< of the file as it was while `bytes` were read
  /// True when each change after this read shows in the file's stamp. File systems stamp with a clock that advances in
  /// steps; while the step of the last change lasts, the next change gets the same stamp.
  bool stampSettled = false;
  /// The same of changes of the bytes alone, which show in the time of the last change of the contents.
  bool contentsSettled = false;
  bool sameThroughout = false;  ///< false for a file that was changed again and again while it was read
};

/// `Missing` also when a folder on the way isn't there. `Failed`, with `errno` set, when there is something that can't
/// be read, or that is no file (`EISDIR`); then, and when missing, `contents` stays as it was.
FilePresence ReadWholeFile(const std::string& path, FileContents& contents);

/// The same of a name in a folder.
FilePresence ReadWholeFileAt(int folder, const std::string& name, FileContents& contents);

/// Whether the file holds these bytes now. Takes no memory for them. False when it can't be read.
bool HoldsBytes(int descriptor, std::string_view bytes);

struct Replacement {
  enum class Kind {
    Done,
    Superseded,  ///< another program has changed the file meanwhile
    Held,        ///< another program has the file open, and what it writes next would be lost
    Barred,      ///< the folder or the file system doesn't let this file be replaced by another one
    Failed,
  };

  Kind kind = Kind::Failed;
  int error = 0;  ///< `errno` of what barred it or failed
};

/// Puts `bytes` in place of the contents of a file in a folder that is locked, or makes the file. `expected` is the
/// state that the caller has seen; null for no file. But for `Done` the file is as it was.
///
/// Mode and owner are kept, the owner where the system lets us. The file is a new one to the file system, so a second
/// hard link keeps the old contents. When `Done` and to be `Flushed`, the bytes are on the disk, and so is their name
/// as far as the file system flushes folders. The displaced file is looked at twice, right after the exchange and right
/// before it is removed, and put back if another program has changed it or has it open for writing.
///
/// Not kept:
/// - access lists and extended attributes;
/// - what another program writes later through a descriptor of the old file, where the system doesn't tell who has a
///   file open (network folders, files of other users);
/// - where the file system can't exchange two files, an edit between the last look and the rename right after it;
/// - an edit in the moment of the exchange when, moreover, this process is killed before the look that follows.
Replacement ReplaceFile(int folder, const std::string& name, std::string_view bytes, const FileContents* expected,
                        Durability durability = Durability::Flushed);

}  // namespace Helmsway
