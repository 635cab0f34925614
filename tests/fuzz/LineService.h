#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/base/Texts.h"
#include "bench/host/ConfigurationService.h"
#include "bench/host/IniFile.h"

namespace Helmsway::Fuzzing {

/// A configuration of one line, which is each entry of the numbers 1 to 3, and of keys that every section has. Lines
/// are taken apart by the real service.
class LineService final : public OrvelCalibrateS::Implements<HelmswayCmds::IIniService> {
 public:
  std::string line;
  std::string written;  ///< by the last write

  LineService(std::string itemLine, std::string keys) : line(std::move(itemLine)), keys_(std::move(keys)) {
    *splitter_.Out() = new ConfigurationService();
  }

  void FailEveryThirdRead() { readsFail_ = true; }

  HelmswayCmds::Result ReadIni(HelmswayCmds::Text /*section*/, HelmswayCmds::Text key, HelmswayCmds::Text /*filePath*/,
                               HelmswayCmds::Text defaultValue, HelmswayCmds::ITextTarget& value) noexcept override {
    if (readsFail_ && ++reads_ % 3 == 0) return HelmswayCmds::Result::Failed;
    const std::string_view name = OrvelCalibrateS::AsView(key);
    for (const char* entry : {"Item1", "Item2", "Item3", "Axis1", "Axis2", "Axis3"}) {
      if (name == entry) return value.Assign(OrvelCalibrateS::AsText(line));
    }
    const auto found = keys_.Find("", name);
    return value.Assign(found ? OrvelCalibrateS::AsText(*found) : defaultValue);
  }

  HelmswayCmds::Result WriteIni(HelmswayCmds::Text /*section*/, HelmswayCmds::Text /*key*/,
                                HelmswayCmds::Text /*filePath*/, HelmswayCmds::Text value) noexcept override {
    written = OrvelCalibrateS::AsView(value);
    return HelmswayCmds::Result::Ok;
  }

  HelmswayCmds::Result SplitText(HelmswayCmds::ITextListTarget& parts, HelmswayCmds::Text separator,
                                 HelmswayCmds::Text text, std::int32_t* count) noexcept override {
    return splitter_->SplitText(parts, separator, text, count);
  }

 private:
  IniFile keys_;
  OrvelCalibrateS::Ref<HelmswayCmds::IIniService> splitter_;
  bool readsFail_ = false;
  int reads_ = 0;
};

}  // namespace Helmsway::Fuzzing
