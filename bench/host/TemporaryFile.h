#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <string>
#include <string_view>

#include "bench/host/Durability.h"
#include "bench/host/FileDescriptor.h"

namespace Helmsway {

/// What became of a file that was to get the name of another one.
enum class Placement {
  Alone,       ///< it has the name; what had it before is gone
  Exchanged,   ///< it has the name; what had it before has the temporary one
  Superseded,  ///< nothing has changed, since there is no such file, or one where none should be
  Unable,      ///< nothing has changed: the file system can't look and rename in one step
  Barred,      ///< nothing has changed: this name can't be given to another file
  Failed,      ///< nothing has changed
};

/// Gives a file mode and owner of the one that `status` is of. False, with `errno` set, when it can't have the mode. An
/// owner that the system keeps for others is left: the contents count for more. The rights that would go to another
/// owner or group by that are left out.
bool TakeOverRights(int file, const struct stat& status);

/// New contents under a name of their own beside the file that they are for. The file of that name goes with this
/// object. For a holder of the folder's lock.
///
/// A writer that is killed leaves its temporary file. Each save removes those of earlier writers of that file. Among
/// the programs of this computer the folder's lock is enough to tell a leftover from a file in use. Writers on other
/// computers, and in folders that are mounted twice, know each other by a lock on the temporary file itself: it ends
/// with the writer, while the process number in the name may have been given to another program since. Where the file
/// system has no locks, a leftover stays, and does no harm.
class TemporaryFile {
 public:
  /// `folder` must outlive it. Removes what killed writers left, then makes the file. False, with `errno` set, when
  /// it can't be made.
  TemporaryFile(int folder, const std::string& fileName, mode_t mode);
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();

  explicit operator bool() const noexcept { return isThere_; }
  const std::string& Name() const noexcept { return name_; }

  /// As `TakeOverRights`.
  bool TakeOver(const struct stat& status) { return TakeOverRights(descriptor_.Get(), status); }

  /// Writes, marks the file as whole, and waits until the bytes are on the disk if they are to be `Flushed`.
  bool Fill(std::string_view bytes, Durability durability);

  /// Exchanges its name with the file of that name, which is displaced, locked, and open for reading from then on.
  Placement ExchangeWith(const std::string& fileName);

  /// A descriptor of the displaced file; -1 where it can't be opened.
  int DisplacedFile() const noexcept { return displaced_.Get(); }

  /// Undoes the exchange: the displaced file gets its name again. `bytes` are the ones that were to take its place; if
  /// another program has put a third file there, that one stays. True also when another program has removed the file
  /// since. False, with `errno` set, when the displaced file can't be put back; it keeps the temporary name then, and
  /// isn't removed.
  bool PutBack(const std::string& fileName, std::string_view bytes);

  /// Takes a name that no file has.
  Placement TakeName(const std::string& fileName);

  /// Takes the name, whatever file has it.
  Placement ReplaceBlindly(const std::string& fileName);

 private:
  int folder_;
  std::string name_;
  FileDescriptor descriptor_;
  FileDescriptor lock_;
  FileDescriptor displaced_;
  bool isThere_ = false;
};

}  // namespace Helmsway
