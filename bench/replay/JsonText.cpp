#include "bench/replay/JsonText.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <string_view>

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

}  // namespace

std::string JsonText(const Json& json) {
  try {
    return json.dump();
  } catch (const Json::type_error&) {
    // Not UTF-8. The library writes much faster, so only these lines are written here.
    std::string line;
    Append(json, line);
    return line;
  }
}

}  // namespace Helmsway
