#include "bench/host/DeviceLink.h"

#include <string>

#include "addin/base/Texts.h"

namespace Helmsway {

using HelmswayCmds::Boolean;
using HelmswayCmds::False;
using HelmswayCmds::Result;
using HelmswayCmds::True;

Result DeviceLink::SendCommand(HelmswayCmds::Text command, HelmswayCmds::ITextTarget& reply, std::int32_t /*third*/,
                               Boolean* ok) noexcept {
  if (ok == nullptr) return Result::InvalidPointer;
  std::string replyText;
  bool accepted = false;
  const Result sent = sink_.Send(OrvelCalibrateS::AsView(command), replyText, accepted);
  if (sent != Result::Ok) return sent;
  const Result assigned = reply.Assign(OrvelCalibrateS::AsText(replyText));
  if (assigned != Result::Ok) return assigned;
  *ok = accepted ? True : False;
  return Result::Ok;
}

Result DeviceLink::GetStopRequested(Boolean* value) noexcept {
  if (value == nullptr) return Result::InvalidPointer;
  *value = stopRequested_ ? True : False;
  if (stopRequested_) listener_.StopFound();
  return Result::Ok;
}

Result DeviceLink::PutStopRequested(Boolean value) noexcept {
  stopRequested_ = value != False;
  listener_.StopRequestedWritten(stopRequested_);
  return Result::Ok;
}

Result DeviceLink::PutAddInActive(Boolean value) noexcept {
  listener_.AddInActiveWritten(value != False);
  return Result::Ok;
}

}  // namespace Helmsway
