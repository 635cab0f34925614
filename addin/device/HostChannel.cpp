#include "addin/device/HostChannel.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "addin/base/HostObjects.h"
#include "addin/base/Texts.h"

namespace OrvelCalibrateS {
namespace {

constexpr HelmswayCmds::Boolean AsBoolean(bool value) { return value ? HelmswayCmds::True : HelmswayCmds::False; }

}  // namespace

Ref<HelmswayCmds::IDeviceLink> HostChannel::DeviceLink() const {
  const auto connection = Held(ParentConnection);
  auto link = Given<HelmswayCmds::IDeviceLink>(
      [&](HelmswayCmds::IDeviceLink** given) { return connection->GetDeviceLink(given); });
  // The host may have ended the form during the call: an ended form sends and writes nothing more.
  Require(static_cast<bool>(ParentConnection));
  return link;
}

bool HostChannel::StopRequested() const {
  HelmswayCmds::Boolean value = HelmswayCmds::False;
  Require(DeviceLink()->GetStopRequested(&value));
  return value != HelmswayCmds::False;
}

void HostChannel::WriteStopRequested(bool value) const { Require(DeviceLink()->PutStopRequested(AsBoolean(value))); }

void HostChannel::WriteAddInActive(bool value) const { Require(DeviceLink()->PutAddInActive(AsBoolean(value))); }

void HostChannel::WriteStatus(std::string_view text) const { Require(Held(StatusPanel)->PutText(AsText(text))); }

void HostChannel::WriteChanged(bool value) const { Require(Held(FormParent)->PutChanged(AsBoolean(value))); }

void HostChannel::SetFocus() const { Require(Held(FormParent)->SetFocus()); }

bool HostChannel::SendDeviceCommand(std::string_view line, std::string& reply) {
  reply.clear();
  Skip([&] { WriteStopRequested(false); });
  Skip([&] { WriteAddInActive(true); });
  bool wentThrough = false;
  Skip([&] {
    const auto link = DeviceLink();
    HelmswayCmds::Boolean ok = HelmswayCmds::False;
    std::string answer;
    StringTarget answerTarget(answer);
    const bool outer = std::exchange(sending_.LineUnderWay, true);
    const HelmswayCmds::Result result = link->SendCommand(AsText(line), answerTarget, 0, &ok);
    sending_.LineUnderWay = outer;
    // The out values count only after this check.
    Require(result);
    wentThrough = ok != HelmswayCmds::False;
    reply = std::move(answer);
  });
  return wentThrough;
}

bool HostChannel::SendDeviceCommand(std::string_view line) {
  std::string reply;
  return SendDeviceCommand(line, reply);
}

bool HostChannel::RunCommandText(std::string_view text, FailureMode mode) {
  bool stopRequested = false;
  return RunCommandText(text, mode, stopRequested);
}

bool HostChannel::RunCommandText(std::string_view text, FailureMode mode, bool& stopRequested) {
  stopRequested = false;
  SplitResult lines;
  Run(mode, [&] { lines = files_.SplitText("\r\n", text); });
  // If the count exceeds the number of pieces, each further index is a step that fails. One such round does the same as
  // all of them.
  const auto count = static_cast<std::size_t>(std::max(lines.count, 0));
  const std::size_t rounds = std::min(count, lines.parts.size() + 1);
  for (std::size_t i = 0; i < rounds; ++i) {
    Run(mode, [&] { stopRequested = StopRequested(); });
    if (stopRequested) continue;
    bool wentThrough = true;
    Run(mode, [&] { wentThrough = SendDeviceCommand(lines.Place(i)); });
    if (!wentThrough) return false;
  }
  return true;
}

}  // namespace OrvelCalibrateS
