#pragma once

#include <functional>
#include <string>
#include <utility>

#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/contract/HelmswayCmds.h"
#include "bench/host/HostListener.h"

namespace Helmsway {

/// The configuration service as a host serves it to the add-in: passes each call on to the service behind it, tells a
/// listener of the writes and of every failure, and can be made to fail. The listener must outlive it.
class HostIniService final : public OrvelCalibrateS::Implements<HelmswayCmds::IIniService> {
 public:
  HostIniService(IHostListener& listener, OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service);

  enum class Access { Works, Fails };

  using Service = OrvelCalibrateS::Ref<HelmswayCmds::IIniService>;

  /// The service behind this one. Another can take its place for a while.
  const Service& Behind() const { return service_; }
  void SetBehind(Service service) { service_ = std::move(service); }

  /// `explain` gives the reason for the failure of the service's last call; it mustn't throw. Without it, failures have
  /// no reason.
  void ExplainFailures(std::function<std::string()> explain) { explain_ = std::move(explain); }

  void SetReads(Access access) { reads_ = access; }
  void SetWrites(Access access) { writes_ = access; }

  HelmswayCmds::Result ReadIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                               HelmswayCmds::Text defaultValue, HelmswayCmds::ITextTarget& value) noexcept override;
  HelmswayCmds::Result WriteIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                                HelmswayCmds::Text value) noexcept override;
  HelmswayCmds::Result SplitText(HelmswayCmds::ITextListTarget& parts, HelmswayCmds::Text separator,
                                 HelmswayCmds::Text text, std::int32_t* count) noexcept override;

 private:
  std::string WhyFailed(Access access) const;

  IHostListener& listener_;
  OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service_;
  std::function<std::string()> explain_;
  Access reads_ = Access::Works;
  Access writes_ = Access::Works;
};

}  // namespace Helmsway
