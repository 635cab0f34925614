#pragma once

#include "addin/base/Implements.h"
#include "addin/contract/HelmswayCmds.h"
#include "bench/host/CommandSink.h"
#include "bench/host/HostListener.h"

namespace Helmsway {

/// The host's link to the instrument, as the add-in sees it. Listener and sink must outlive it.
class DeviceLink final : public OrvelCalibrateS::Implements<HelmswayCmds::IDeviceLink> {
 public:
  DeviceLink(IHostListener& listener, ICommandSink& sink) : listener_(listener), sink_(sink) {}

  /// What the host's own Stop key does: the flag is True afterwards. The listener hears of the add-in's writes only.
  void RequestStop() { stopRequested_ = true; }
  /// For the host. The listener hears of the add-in's reads only.
  bool StopIsRequested() const { return stopRequested_; }

  HelmswayCmds::Result SendCommand(HelmswayCmds::Text command, HelmswayCmds::ITextTarget& reply, std::int32_t third,
                                   HelmswayCmds::Boolean* ok) noexcept override;
  HelmswayCmds::Result GetStopRequested(HelmswayCmds::Boolean* value) noexcept override;
  HelmswayCmds::Result PutStopRequested(HelmswayCmds::Boolean value) noexcept override;
  HelmswayCmds::Result PutAddInActive(HelmswayCmds::Boolean value) noexcept override;

 private:
  IHostListener& listener_;
  ICommandSink& sink_;
  bool stopRequested_ = false;
};

}  // namespace Helmsway
