#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace Helmsway::Fuzzing {

/// What a configuration file says, read anew and as plainly as can be: no index, no offsets, a copy of everything.
struct PlainIniReading {
  using Name = std::pair<std::string, std::string>;  ///< section and key, in small letters

  std::map<Name, std::string> values;  ///< of a name that repeats, the first
  std::set<std::string> sections;      ///< in small letters; "" is always among them

  explicit PlainIniReading(std::string text) : sections{""} {
    if (IsUtf16(text)) return;
    if (text.rfind("\xEF\xBB\xBF", 0) == 0) text.erase(0, 3);
    std::string section;
    while (!text.empty()) {
      const std::size_t end = text.find('\n');
      std::string line = text.substr(0, end);
      text = end == std::string::npos ? "" : text.substr(end + 1);
      if (end != std::string::npos && !line.empty() && line.back() == '\r') line.pop_back();
      line = Trimmed(line);
      if (line.empty() || line[0] == ';' || line[0] == '#') continue;
      if (line[0] == '[') {
        section = Small(Trimmed(line.substr(1, line.find(']') - 1)));
        sections.insert(section);
        continue;
      }
      const std::size_t sign = line.find('=');
      if (sign == std::string::npos) continue;
      const std::string key = Small(Trimmed(line.substr(0, sign)));
      if (!key.empty()) values.emplace(Name{section, key}, Trimmed(line.substr(sign + 1)));
    }
  }

  static bool IsUtf16(const std::string& text) {
    const std::string mark = text.substr(0, 2);
    if (mark == "\xFF\xFE" || mark == "\xFE\xFF") return true;
    std::string pattern;
    for (const char letter : text.substr(0, 4)) pattern += letter == '\0' ? '0' : 'x';
    return pattern == "0x0x" || pattern == "x0x0";
  }

  static std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
  }

  static std::string Small(std::string text) {
    for (char& letter : text) {
      if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter + ('a' - 'A'));
    }
    return text;
  }
};

}  // namespace Helmsway::Fuzzing
