#include "bench/host/IniLines.h"

namespace Helmsway {
namespace {

bool IsBlank(char letter) noexcept { return letter == ' ' || letter == '\t'; }

void ReadHead(std::string_view text, IniLine& line) noexcept {
  text.remove_prefix(1);
  line.kind = IniLine::Kind::SectionHead;
  line.name = WithoutBlanks(text.substr(0, text.find(']')));
}

void ReadKey(std::string_view text, IniLine& line) noexcept {
  const std::size_t equalsSign = text.find('=');
  if (equalsSign == std::string_view::npos) return;
  const std::string_view name = WithoutBlanks(text.substr(0, equalsSign));
  if (name.empty()) return;
  line.kind = IniLine::Kind::Key;
  line.name = name;
  line.value = WithoutBlanks(text.substr(equalsSign + 1));
}

}  // namespace

std::string_view WithoutBlanks(std::string_view text) noexcept {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

IniLines::IniLines(std::string_view bytes) noexcept
    : bytes_(bytes), next_(bytes.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0) {}

bool IniLines::Next(IniLine& line) noexcept {
  if (next_ == bytes_.size()) return false;
  line = IniLine();
  line.begin = next_;

  const std::size_t lineFeed = bytes_.find('\n', next_);
  std::string_view text = bytes_.substr(next_, lineFeed == std::string_view::npos ? lineFeed : lineFeed - next_);
  next_ = lineFeed == std::string_view::npos ? bytes_.size() : lineFeed + 1;
  line.next = next_;
  if (lineFeed != std::string_view::npos && text.ends_with('\r')) text.remove_suffix(1);

  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  if (text.empty() || text.front() == ';' || text.front() == '#') return true;
  if (text.front() == '[') {
    ReadHead(text, line);
  } else {
    ReadKey(text, line);
  }
  return true;
}

}  // namespace Helmsway
