#pragma once

#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/contract/HelmswayCmds.h"
#include "bench/host/DeviceLink.h"

namespace Helmsway {

/// The host's connection, which gives its one device link for as long as the line is up.
class HostConnection final : public OrvelCalibrateS::Implements<HelmswayCmds::IParentConnection> {
 public:
  HostConnection(IHostListener& listener, ICommandSink& sink);

  enum class Line { Up, Down };

  /// While the line is down, every read of the link fails. References that were given out before go on working.
  void SetLine(Line line) { line_ = line; }

  /// The link itself, for the host, whether the line is up or down.
  DeviceLink& Link() { return *link_; }

  HelmswayCmds::Result GetDeviceLink(HelmswayCmds::IDeviceLink** link) noexcept override;

 private:
  IHostListener& listener_;
  OrvelCalibrateS::Ref<DeviceLink> link_;
  Line line_ = Line::Up;
};

}  // namespace Helmsway
