#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Edits of a configuration file as functions from its bytes to its new bytes. Every byte that isn't said to change
/// stays as it was and where it was among the others.
namespace Helmsway {

/// The key that `IniFile` finds holds `value`, in place of its old text. A key that isn't there is added behind the
/// last key of the first section of that name, or behind its head; a section that isn't there, at the end of the file.
/// Added lines end as the first line does, in CR LF where it has no end. Blanks and tabs around `value` aren't written.
/// Nothing when the file couldn't give it back: a line end in a name or in the value, an empty key, `]` in the section,
/// `=` in the key or a first letter that makes another kind of line of it, a blank or tab at the ends of a name.
/// Nothing for a UTF-16 file either, or where the edit would make the file look like one.
std::optional<std::string> WithValue(std::string_view bytes, std::string_view section, std::string_view key,
                                     std::string_view value);

/// Without any line of that key in any section of that name. A blank line stays in place of the first lines of the file
/// when what follows them would be taken for a byte order mark. A UTF-16 file stays as it is.
std::string WithoutKey(std::string_view bytes, std::string_view section, std::string_view key);

}  // namespace Helmsway
