#pragma once

#include <cstddef>
#include <string_view>

namespace Helmsway {

/// The number of bytes that `IsUtf16` looks at.
inline constexpr std::size_t Utf16Sample = 4;

/// Whether a file that begins like this is a UTF-16 file: a byte order mark (FF FE or FE FF), or a NUL in every other
/// byte of its first two characters. A configuration file begins with a bracket, a remark or a line end, which are
/// ASCII in any language. One NUL alone is a byte like any other.
constexpr bool IsUtf16(std::string_view bytes) noexcept {
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) return true;
  if (bytes.size() < Utf16Sample) return false;
  const auto isNul = [bytes](std::size_t place) { return bytes[place] == '\0'; };
  return isNul(0) == isNul(2) && isNul(1) == isNul(3) && isNul(0) != isNul(1);
}

}  // namespace Helmsway
