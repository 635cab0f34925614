#pragma once

#include <utility>

#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/contract/HelmswayCmds.h"
#include "bench/replay/Interruption.h"

namespace Helmsway {

/// Passes each call on to another service. A signal that asks the program to end lets a write come to its end first,
/// so the other service must give up its waits for other programs when `Interruption::Requested`.
class ShieldedIniService final : public OrvelCalibrateS::Implements<HelmswayCmds::IIniService> {
 public:
  explicit ShieldedIniService(OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service) : service_(std::move(service)) {}

  HelmswayCmds::Result ReadIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                               HelmswayCmds::Text defaultValue, HelmswayCmds::ITextTarget& value) noexcept override {
    return service_->ReadIni(section, key, filePath, defaultValue, value);
  }

  HelmswayCmds::Result WriteIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                                HelmswayCmds::Text value) noexcept override {
    const Interruption::Shield shield;
    return service_->WriteIni(section, key, filePath, value);
  }

  HelmswayCmds::Result SplitText(HelmswayCmds::ITextListTarget& parts, HelmswayCmds::Text separator,
                                 HelmswayCmds::Text text, std::int32_t* count) noexcept override {
    return service_->SplitText(parts, separator, text, count);
  }

 private:
  OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service_;
};

}  // namespace Helmsway
