#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "addin/config/Conversions.h"
#include "addin/config/IniFiles.h"
#include "tests/support/FakeHost.h"

namespace OrvelCalibrateS::Testing {

/// A configuration service over keys in memory. Has one file for each file name, whatever its folder, and can fail.
class FakeIniService final : public Implements<HelmswayCmds::IIniService> {
 public:
  using Key = std::pair<std::string, std::string>;  ///< section and key, in capitals

  std::map<Key, std::string> Marivane;
  std::map<Key, std::string> Helmsway;
  bool ReadsFail = false;
  bool WritesFail = false;
  bool SplitsFail = false;
  std::int32_t ExcessCount = 0;     ///< added by `SplitText` to the number of its pieces
  std::string UnsplitText;          ///< only splits of texts that contain this one fail
  std::function<void()> Meanwhile;  ///< runs during each read and write
  Lines Reads;                      ///< "Section/Key", in order
  Lines Writes;                     ///< "Section/Key=value", in order

  /// Sets keys of Marivane.ini.
  void Set(std::string_view section, const std::vector<std::pair<std::string_view, std::string_view>>& values) {
    for (const auto& [key, value] : values) Marivane[Name(section, key)] = value;
  }

  Result ReadIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                 HelmswayCmds::Text defaultValue, HelmswayCmds::ITextTarget& value) noexcept override {
    if (ReadsFail) return Result::Failed;
    if (Meanwhile) Meanwhile();
    Reads.push_back(std::string(AsView(section)) + "/" + std::string(AsView(key)));
    const auto& file = FileOf(filePath);
    const auto found = file.find(Name(AsView(section), AsView(key)));
    return value.Assign(found == file.end() ? defaultValue : AsText(found->second));
  }

  Result WriteIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                  HelmswayCmds::Text value) noexcept override {
    if (WritesFail) return Result::Failed;
    if (Meanwhile) Meanwhile();
    FileOf(filePath)[Name(AsView(section), AsView(key))] = AsView(value);
    Writes.push_back(std::string(AsView(section)) + "/" + std::string(AsView(key)) + "=" + std::string(AsView(value)));
    return Result::Ok;
  }

  Result SplitText(HelmswayCmds::ITextListTarget& parts, HelmswayCmds::Text separator, HelmswayCmds::Text text,
                   std::int32_t* count) noexcept override {
    if (SplitsFail || (!UnsplitText.empty() && AsView(text).find(UnsplitText) != std::string_view::npos))
      return Result::Failed;
    std::vector<HelmswayCmds::Text> pieces;
    const std::string_view mark = AsView(separator);
    std::string_view rest = AsView(text);
    *count = 0;
    if (rest.empty()) return parts.Assign(nullptr, 0);
    for (std::size_t at = rest.find(mark); at != std::string_view::npos; at = rest.find(mark)) {
      pieces.push_back(AsText(rest.substr(0, at)));
      rest.remove_prefix(at + mark.size());
    }
    pieces.push_back(AsText(rest));
    *count = static_cast<std::int32_t>(pieces.size()) - (rest.empty() ? 1 : 0) + ExcessCount;
    return parts.Assign(pieces.data(), pieces.size());
  }

 private:
  static Key Name(std::string_view section, std::string_view key) { return {UpperCased(section), UpperCased(key)}; }
  std::map<Key, std::string>& FileOf(HelmswayCmds::Text path) {
    return AsView(path).ends_with("Helmsway.ini") ? Helmsway : Marivane;
  }
};

/// The two files over a fake service, and the service itself, to set up and to inspect.
struct FakeFiles {
  FakeIniService* Service = new FakeIniService();
  Ref<HelmswayCmds::IIniService> Held = Adopt<HelmswayCmds::IIniService>(Service);
  IniFiles Files{[this] { return Held; }, "/addin"};
};

}  // namespace OrvelCalibrateS::Testing
