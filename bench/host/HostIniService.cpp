#include "bench/host/HostIniService.h"

#include <utility>

#include "addin/base/Texts.h"

namespace Helmsway {

using HelmswayCmds::Result;
using HelmswayCmds::Text;
using OrvelCalibrateS::AsView;

HostIniService::HostIniService(IHostListener& listener, OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service)
    : listener_(listener), service_(std::move(service)) {}

Result HostIniService::ReadIni(Text section, Text key, Text filePath, Text defaultValue,
                               HelmswayCmds::ITextTarget& value) noexcept {
  if (reads_ == Access::Fails) return Result::Failed;
  return service_->ReadIni(section, key, filePath, defaultValue, value);
}

Result HostIniService::WriteIni(Text section, Text key, Text filePath, Text value) noexcept {
  if (writes_ == Access::Fails) return Result::Failed;
  const Result written = service_->WriteIni(section, key, filePath, value);
  if (written == Result::Ok) listener_.IniWritten(AsView(section), AsView(key), AsView(value));
  return written;
}

Result HostIniService::SplitText(HelmswayCmds::ITextListTarget& parts, Text separator, Text text,
                                 std::int32_t* count) noexcept {
  return service_->SplitText(parts, separator, text, count);
}

}  // namespace Helmsway
