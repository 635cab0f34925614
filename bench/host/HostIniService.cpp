#include "bench/host/HostIniService.h"

#include <utility>

#include "addin/base/Texts.h"

namespace Helmsway {

using HelmswayCmds::Result;
using HelmswayCmds::Text;
using OrvelCalibrateS::AsView;

HostIniService::HostIniService(IHostListener& listener, OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service)
    : listener_(listener), service_(std::move(service)) {}

std::string HostIniService::WhyFailed(Access access) const {
  if (access == Access::Fails) return "the host's configuration service doesn't work";
  return explain_ ? explain_() : std::string();
}

Result HostIniService::ReadIni(Text section, Text key, Text filePath, Text defaultValue,
                               HelmswayCmds::ITextTarget& value) noexcept {
  const Result read =
      reads_ == Access::Fails ? Result::Failed : service_->ReadIni(section, key, filePath, defaultValue, value);
  if (read != Result::Ok) listener_.IniReadFailed(AsView(section), AsView(key), WhyFailed(reads_));
  return read;
}

Result HostIniService::WriteIni(Text section, Text key, Text filePath, Text value) noexcept {
  const Result written = writes_ == Access::Fails ? Result::Failed : service_->WriteIni(section, key, filePath, value);
  if (written == Result::Ok) {
    listener_.IniWritten(AsView(section), AsView(key), AsView(value));
  } else {
    listener_.IniWriteFailed(AsView(section), AsView(key), AsView(value), WhyFailed(writes_));
  }
  return written;
}

Result HostIniService::SplitText(HelmswayCmds::ITextListTarget& parts, Text separator, Text text,
                                 std::int32_t* count) noexcept {
  return service_->SplitText(parts, separator, text, count);
}

}  // namespace Helmsway
