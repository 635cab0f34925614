#include "bench/host/PrintableText.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace Helmsway {
namespace {

std::uint8_t ByteAt(std::string_view text, std::size_t position) {
  return position < text.size() ? static_cast<std::uint8_t>(text[position]) : 0;
}

/// The code point of a well-formed sequence of that length.
std::uint32_t CodePoint(std::string_view sequence) {
  constexpr std::array<std::uint8_t, 5> leadBits = {0, 0x7f, 0x1f, 0x0f, 0x07};
  std::uint32_t code = ByteAt(sequence, 0) & leadBits[sequence.size()];
  for (std::size_t i = 1; i < sequence.size(); ++i) code = code << 6 | (ByteAt(sequence, i) & 0x3fU);
  return code;
}

/// C1 controls, line and paragraph separators, and the marks that change the direction of writing.
bool IsHidden(std::uint32_t code) {
  return (code >= 0x80 && code < 0xa0) || code == 0x061c || code == 0x200e || code == 0x200f ||
         (code >= 0x2028 && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
}

std::string Hexadecimal(const char* format, std::uint32_t number) {
  std::array<char, 16> digits{};
  const int size = std::snprintf(digits.data(), digits.size(), format, static_cast<unsigned>(number));
  return {digits.data(), static_cast<std::size_t>(size)};
}

std::string Escaped(char character) {
  switch (character) {
    case '\t':
      return "\\t";
    case '\r':
      return "\\r";
    case '\n':
      return "\\n";
    default:
      return Hexadecimal("\\x%02x", static_cast<std::uint8_t>(character));
  }
}

}  // namespace

std::size_t Utf8SequenceLength(std::string_view text) noexcept {
  const std::uint8_t lead = ByteAt(text, 0);
  if (text.empty()) return 0;
  if (lead < 0x80) return 1;
  // The second byte's range leaves out longer forms of short sequences, surrogates, and what is above U+10FFFF.
  std::uint8_t least = 0x80;
  std::uint8_t most = 0xbf;
  std::size_t length = 0;
  if (lead >= 0xc2 && lead <= 0xdf) {
    length = 2;
  } else if (lead >= 0xe0 && lead <= 0xef) {
    length = 3;
    if (lead == 0xe0) least = 0xa0;
    if (lead == 0xed) most = 0x9f;
  } else if (lead >= 0xf0 && lead <= 0xf4) {
    length = 4;
    if (lead == 0xf0) least = 0x90;
    if (lead == 0xf4) most = 0x8f;
  }
  if (length == 0 || ByteAt(text, 1) < least || ByteAt(text, 1) > most) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if ((ByteAt(text, i) & 0xc0) != 0x80) return 0;
  }
  return length;
}

std::string Printable(std::string_view text) {
  std::string printable;
  while (!text.empty()) {
    const std::size_t length = Utf8SequenceLength(text);
    const auto first = static_cast<std::uint8_t>(text.front());
    if (length == 0 || (length == 1 && (first < 0x20 || first == 0x7f))) {
      printable += Escaped(text.front());
    } else if (const std::uint32_t code = CodePoint(text.substr(0, length)); IsHidden(code)) {
      printable += Hexadecimal("\\u{%x}", code);
    } else {
      printable += text.substr(0, length);
    }
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return printable;
}

std::string Shortened(std::string_view text, std::size_t most) {
  if (text.size() <= most) return std::string(text);
  std::size_t end = most;
  while (end > 0 && (ByteAt(text, end) & 0xc0) == 0x80) --end;
  return std::string(text.substr(0, end)) + " ... (" + std::to_string(text.size() - end) + " more bytes)";
}

PrintableStream::PrintableStream(std::ostream& target) : std::ostream(nullptr), buffer_(target) { rdbuf(&buffer_); }

PrintableStream::~PrintableStream() { flush(); }

void PrintableStream::Buffer::Put(char character) {
  if (character != '\n') {
    line_ += character;
    return;
  }
  target_ << Printable(line_) << '\n';
  line_.clear();
}

PrintableStream::Buffer::int_type PrintableStream::Buffer::overflow(int_type character) {
  if (!traits_type::eq_int_type(character, traits_type::eof())) Put(traits_type::to_char_type(character));
  return target_ ? traits_type::not_eof(character) : traits_type::eof();
}

std::streamsize PrintableStream::Buffer::xsputn(const char* text, std::streamsize size) {
  for (const char character : std::string_view(text, static_cast<std::size_t>(size))) Put(character);
  return target_ ? size : 0;
}

int PrintableStream::Buffer::sync() {
  target_ << Printable(line_);
  line_.clear();
  target_.flush();
  return target_ ? 0 : -1;
}

}  // namespace Helmsway
