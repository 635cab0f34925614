#include "bench/host/OverlaidIniService.h"

#include <utility>

#include "addin/base/Texts.h"
#include "bench/host/StillFile.h"
#include "bench/host/WriteObstacle.h"

namespace Helmsway {

namespace fs = std::filesystem;
using HelmswayCmds::Result;
using HelmswayCmds::Text;
using OrvelCalibrateS::AsText;
using OrvelCalibrateS::AsView;

OverlaidIniService::OverlaidIniService(OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service, fs::path folder)
    : service_(std::move(service)), folder_(std::move(folder)) {}

Result OverlaidIniService::ReadIni(Text section, Text key, Text filePath, Text defaultValue,
                                   HelmswayCmds::ITextTarget& value) noexcept {
  const auto copy = copies_.find(AsView(filePath));
  return service_->ReadIni(section, key, copy == copies_.end() ? filePath : AsText(copy->second), defaultValue, value);
}

Result OverlaidIniService::WriteIni(Text section, Text key, Text filePath, Text value) noexcept {
  try {
    const std::string_view path = AsView(filePath);
    obstacle_ = {};
    auto copy = copies_.find(path);
    if (copy == copies_.end()) {
      // A look at a file that is held takes a while, and a save has many values.
      FileProblem& obstacle = obstacles_[std::string(path)];
      if (!obstacle) obstacle = WriteObstacle(std::string(path));
      obstacle_ = obstacle;
      if (obstacle_) return Result::Failed;
      const fs::path own = folder_ / fs::path(path).filename();
      if (fs::exists(path)) {
        fs::copy_file(path, own, fs::copy_options::overwrite_existing);
        fs::permissions(own, fs::perms::owner_write, fs::perm_options::add);
        MarkAsWhole(own.string());
      }
      copy = copies_.emplace(path, own.string()).first;
    }
    return service_->WriteIni(section, key, AsText(copy->second), value);
  } catch (const std::exception&) {
    return Result::Failed;
  }
}

Result OverlaidIniService::SplitText(HelmswayCmds::ITextListTarget& parts, Text separator, Text text,
                                     std::int32_t* count) noexcept {
  return service_->SplitText(parts, separator, text, count);
}

}  // namespace Helmsway
