#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "bench/host/Durability.h"

namespace Helmsway {

/// What a write in place was about to do, kept on the disk until it is done, so that the next writer or reader can undo
/// a write that was cut off. For a holder of the lock of the file's folder.
///
/// It is a file beside the one that is written, `.Marivane.ini.kept`; where the folder can't be written, one in
/// `/var/tmp`, which outlives a restart of the computer, named after the user and the path. First three lines of text:
/// a mark, the two sizes, the path that the file had; then the old bytes, then the new ones. Beside the file, it has
/// the rights of the file.
class KeptBytes {
 public:
  KeptBytes(int folder, std::string name) : folder_(folder), name_(std::move(name)) {}
  ~KeptBytes() = default;
  KeptBytes(const KeptBytes&) = delete;
  KeptBytes& operator=(const KeptBytes&) = delete;

  struct Record {
    std::string path;        ///< of the file of kept bytes, for people
    bool isReadable = true;  ///< false for one that another user's writer has left, and this user may not read
    bool isWhole = false;    ///< one that isn't was left by a writer that hadn't touched the file yet
    std::string old{};
    std::string now{};
  };
  /// What an earlier writer left. In a sticky folder any user may make such a file, so there only those count that are
  /// of this user, the superuser, the owner of file or folder, or of anyone who may write the file.
  std::optional<Record> Find() const;

  /// False, with `errno` set, when there is no place for them.
  bool Keep(std::string_view old, std::string_view now, Durability durability);

  /// Removes what this writer or an earlier one has kept. False when it can't be removed.
  bool Remove(Durability durability) const;

 private:
  struct Place {
    int folder;
    std::string name;
    std::string path;
  };
  Place Beside() const;
  std::optional<Place> Elsewhere() const;
  std::string WholePath() const;
  bool KeepAt(const Place& place, std::string_view old, std::string_view now, Durability durability) const;
  std::optional<Record> FindAt(const Place& place) const;
  bool IsBesideTrusted() const;

  int folder_;
  std::string name_;
};

}  // namespace Helmsway
