#include "bench/host/HostConnection.h"

namespace Helmsway {

using HelmswayCmds::Result;

HostConnection::HostConnection(IHostListener& listener, ICommandSink& sink) : listener_(listener) {
  *link_.Out() = new DeviceLink(listener, sink);
}

Result HostConnection::GetDeviceLink(HelmswayCmds::IDeviceLink** link) noexcept {
  if (link == nullptr) return Result::InvalidPointer;
  if (line_ == Line::Down) {
    listener_.LinkNotReached();
    return Result::Failed;
  }
  *link = OrvelCalibrateS::Ref<HelmswayCmds::IDeviceLink>(link_.Get()).Detach();
  return Result::Ok;
}

}  // namespace Helmsway
