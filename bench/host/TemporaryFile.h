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
  Failed,      ///< nothing has changed
};

/// New contents under a name of their own beside the file that they are for. What has that name goes with this object.
///
/// A writer that is killed leaves its temporary file behind. Each save removes those of earlier writers of that file.
/// Whether a writer still lives is told by a lock on its file, which ends with the writer: the process number in the
/// name may be that of a program in another container or on another computer of a network folder, or have been given
/// to another program since. Where the file system has no locks, a leftover stays, and does no harm. A file that is
/// removed between its making and its lock costs its writer one more attempt.
class TemporaryFile {
 public:
  /// `folder` must outlive it. Removes what killed writers left, then makes the file.
  TemporaryFile(int folder, const std::string& fileName, mode_t mode);
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();

  explicit operator bool() const noexcept { return isThere_; }
  const std::string& Name() const noexcept { return name_; }

  /// Mode and owner of that file. An owner that the system keeps for others is left: the contents count for more. The
  /// rights that would go to another owner or group by that are left out.
  bool TakeOver(const struct stat& status);

  /// Writes, and waits until the bytes are on the disk if they are to be `Flushed`.
  bool Fill(std::string_view bytes, Durability durability);

  /// Exchanges its name with the file of that name, which counts as in use from then on: another writer doesn't take it
  /// for a leftover.
  Placement ExchangeWith(const std::string& fileName);

  /// Takes a name that no file has.
  Placement TakeName(const std::string& fileName);

  /// Takes the name, whoever has it.
  Placement ReplaceBlindly(const std::string& fileName);

  /// Undoes an exchange, or does it again. `errno` tells why it failed.
  bool ExchangeAgain(const std::string& fileName);

  /// What has the temporary name stays.
  void Keep() noexcept { isThere_ = false; }

 private:
  int folder_;
  std::string name_;
  FileDescriptor descriptor_;
  FileDescriptor lock_;
  FileDescriptor displacedLock_;
  bool isThere_ = false;
};

}  // namespace Helmsway
