#pragma once

#include <cstddef>
#include <string_view>

namespace Helmsway {

/// One line of a configuration file. Name and value lie in the file's bytes, without the blanks and tabs around them.
struct IniLine {
  enum class Kind {
    SaysNothing,  ///< a comment, a blank line, a line without `=`, or one without a name ahead of it
    SectionHead,  ///< one without its `]` reaches to the end of the line, so that no key below joins the section above
    Key,
  };

  Kind kind = Kind::SaysNothing;
  std::string_view name;   ///< of the section or the key; empty in a line that says nothing
  std::string_view value;  ///< of a key; an empty one lies at the end of the line, where its text would go
  std::size_t begin = 0;   ///< offset of the line's first byte
  std::size_t next = 0;    ///< offset behind the line end
};

inline constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

/// Walks over the lines of a configuration file. A line ends in LF or CR LF; a CR elsewhere is a byte like any other.
/// Each byte is looked at a fixed number of times, whatever the file holds.
class IniLines {
 public:
  /// The bytes must outlive the walk and the lines it gives.
  explicit IniLines(std::string_view bytes) noexcept;

  /// False behind the last line, which leaves `line` as it was.
  bool Next(IniLine& line) noexcept;

 private:
  std::string_view bytes_;
  std::size_t next_ = 0;
};

/// Without the blanks and tabs at both ends.
std::string_view WithoutBlanks(std::string_view text) noexcept;

}  // namespace Helmsway
