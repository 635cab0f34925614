#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Helmsway {

/// The bytes of a configuration file and an index of its keys. Any bytes will do; what can't be understood says
/// nothing, which is all of a UTF-16 file.
class IniFile {
 public:
  IniFile() = default;
  /// Throws `std::length_error` from 4 GiB on.
  explicit IniFile(std::string bytes);

  /// Text of the first key of that name in the first section of that name that has it. Letter case doesn't count. The
  /// keys ahead of the first section head are those of the section "". Costs no memory, and the same in a file of any
  /// size. The text lives as long as the file and until it is assigned to.
  std::optional<std::string_view> Find(std::string_view section, std::string_view key) const noexcept;

  const std::string& Bytes() const noexcept { return bytes_; }

 private:
  /// Offsets and not views, because the bytes of a short file move with the object, and because they are half as large:
  /// most of what parsing takes is the memory of the entries.
  struct Range {
    std::uint32_t begin = 0;
    std::uint32_t size = 0;
  };
  /// A key of a section, or, with an empty key, the section itself.
  struct Entry {
    Range section;
    Range key;
    Range value;
  };
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t number = 0;  ///< of the entry, counted from 1; 0 for a slot that is free
  };

  void CollectEntries();
  void LinkEntries();
  /// Number of the first entry of those names: the one given, or the earlier one that it repeats.
  std::uint32_t Link(std::uint32_t number, std::uint64_t hash);

  Range RangeOf(std::string_view part) const noexcept;
  std::string_view TextOf(Range range) const noexcept {
    return std::string_view(bytes_).substr(range.begin, range.size);
  }
  Entry& Numbered(std::uint32_t number) noexcept { return entries_[number - 1]; }

  std::string bytes_;
  std::vector<Entry> entries_;  ///< in the order of the file
  std::vector<Slot> slots_;     ///< open addressing; a power of two, at least twice the entries; empty with no entries
};

}  // namespace Helmsway
