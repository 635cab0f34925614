#include "addin/device/HostChannel.h"

#include <utility>

#include "addin/base/Texts.h"

namespace OrvelCalibrateS {
namespace {

constexpr HelmswayCmds::Boolean AsBoolean(bool value) { return value ? HelmswayCmds::True : HelmswayCmds::False; }

/// The object, as a step that fails when it isn't set.
template <class Interface>
Interface& Held(const Ref<Interface>& reference) {
  Require(static_cast<bool>(reference));
  return *reference;
}

}  // namespace

Ref<HelmswayCmds::IDeviceLink> HostChannel::DeviceLink() const {
  Ref<HelmswayCmds::IDeviceLink> link;
  Require(Held(ParentConnection).GetDeviceLink(link.Out()));
  Held(link);
  return link;
}

bool HostChannel::StopRequested() const {
  HelmswayCmds::Boolean value = HelmswayCmds::False;
  Require(DeviceLink()->GetStopRequested(&value));
  return value != HelmswayCmds::False;
}

void HostChannel::WriteStopRequested(bool value) const { Require(DeviceLink()->PutStopRequested(AsBoolean(value))); }

void HostChannel::WriteAddInActive(bool value) const { Require(DeviceLink()->PutAddInActive(AsBoolean(value))); }

void HostChannel::WriteStatus(std::string_view text) const { Require(Held(StatusPanel).PutText(AsText(text))); }

void HostChannel::WriteChanged(bool value) const { Require(Held(FormParent).PutChanged(AsBoolean(value))); }

void HostChannel::SetFocus() const { Require(Held(FormParent).SetFocus()); }

bool HostChannel::SendDeviceCommand(std::string_view line, std::string& reply) {
  reply.clear();
  Skip([&] { WriteStopRequested(false); });
  Skip([&] { WriteAddInActive(true); });
  HelmswayCmds::Boolean ok = HelmswayCmds::False;
  Skip([&] {
    const auto link = DeviceLink();
    StringTarget replyTarget(reply);
    const bool outer = std::exchange(lineUnderWay_, true);
    const HelmswayCmds::Result result = link->SendCommand(AsText(line), replyTarget, 0, &ok);
    lineUnderWay_ = outer;
    Require(result);
  });
  return ok != HelmswayCmds::False;
}

bool HostChannel::SendDeviceCommand(std::string_view line) {
  std::string reply;
  return SendDeviceCommand(line, reply);
}

bool HostChannel::RunCommandText(std::string_view text, FailureMode mode) {
  SplitResult lines;
  Run(mode, [&] { lines = files_.SplitText("\r\n", text); });
  for (std::int32_t i = 0; i < lines.count; ++i) {
    bool stopRequested = false;
    Run(mode, [&] { stopRequested = StopRequested(); });
    if (stopRequested) continue;
    if (!SendDeviceCommand(lines.Place(static_cast<std::size_t>(i)))) return false;
  }
  return true;
}

}  // namespace OrvelCalibrateS
