#include "bench/replay/JsonText.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <utility>

#include "bench/host/PrintableText.h"

namespace Helmsway {
namespace {

using Json = nlohmann::ordered_json;

void AppendUtf8(std::string_view text, std::string& line) {
  const std::string quoted = Json(text).dump();
  line.append(quoted, 1, quoted.size() - 2);
}

void AppendByte(char byte, std::string& line) {
  std::array<char, 8> escape{};
  std::snprintf(escape.data(), escape.size(), "\\udc%02x", static_cast<unsigned>(static_cast<std::uint8_t>(byte)));
  line += escape.data();
}

void AppendText(std::string_view text, std::string& line) {
  line += '"';
  std::size_t begin = 0;  // of the UTF-8 that hasn't been appended yet
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = Utf8SequenceLength(text.substr(i));
    if (length == 0) {
      AppendUtf8(text.substr(begin, i - begin), line);
      AppendByte(text[i], line);
      begin = i + 1;
    }
    i += length == 0 ? 1 : length;
  }
  AppendUtf8(text.substr(begin), line);
  line += '"';
}

void Append(const Json& json, std::string& line) {
  if (json.is_string()) return AppendText(json.get_ref<const std::string&>(), line);
  if (!json.is_structured()) {
    line += json.dump();
    return;
  }
  line += json.is_object() ? '{' : '[';
  bool first = true;
  for (const auto& [name, value] : json.items()) {
    if (!first) line += ',';
    first = false;
    if (json.is_object()) {
      AppendText(name, line);
      line += ':';
    }
    Append(value, line);
  }
  line += json.is_object() ? '}' : ']';
}

/// The line with DEL and U+0080 to U+009F as escapes, which the library leaves as they are: a terminal obeys some of
/// them. They occur in texts alone, so the line means the same.
std::string WithoutControls(std::string line) {
  constexpr char del = '\x7F';
  constexpr char lead = '\xC2';  // of U+0080 to U+00BF
  const auto isControl = [&](std::size_t at) {
    return line[at] == del ||
           (line[at] == lead && at + 1 < line.size() && static_cast<unsigned char>(line[at + 1]) < 0xA0);
  };
  std::string shown;
  std::size_t begin = 0;
  for (std::size_t at = line.find_first_of("\x7F\xC2"); at != std::string::npos;
       at = line.find_first_of("\x7F\xC2", at + 1)) {
    if (!isControl(at)) continue;
    shown.append(line, begin, at - begin);
    const auto code = static_cast<unsigned>(static_cast<unsigned char>(line[at] == del ? del : line[at + 1]));
    std::array<char, 8> escape{};
    std::snprintf(escape.data(), escape.size(), "\\u%04x", code);
    shown += escape.data();
    begin = at + (line[at] == del ? 1 : 2);
  }
  if (begin == 0) return line;
  return shown.append(line, begin);
}

}  // namespace

std::string JsonText(const Json& json) {
  try {
    return WithoutControls(json.dump());
  } catch (const Json::type_error&) {
    // Not UTF-8. The library writes much faster, so only these lines are written here.
    std::string line;
    Append(json, line);
    return WithoutControls(std::move(line));
  }
}

}  // namespace Helmsway
