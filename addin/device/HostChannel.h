#pragma once

#include <string>
#include <string_view>

#include "addin/base/Ref.h"
#include "addin/base/Steps.h"
#include "addin/config/IniFiles.h"
#include "addin/contract/HelmswayCmds.h"
#include "addin/device/CommandText.h"

namespace OrvelCalibrateS {

/// What the add-in has taken from the host, and everything it does with it. The add-in ends none of these objects.
///
/// Every operation but the two of the send is a step: it fails when the object isn't set or the host's call fails. The
/// device link is fetched from the connection for each single use and released at once.
class HostChannel {
 public:
  explicit HostChannel(const IniFiles& files) : files_(files) {}

  Ref<HelmswayCmds::IParentConnection> ParentConnection;
  Ref<HelmswayCmds::IHostWindow> FormParent;
  Ref<HelmswayCmds::IStatusPanel> StatusPanel;

  bool StopRequested() const;
  void WriteStopRequested(bool value) const;
  void WriteAddInActive(bool value) const;
  void WriteStatus(std::string_view text) const;
  void WriteChanged(bool value) const;
  void SetFocus() const;

  /// Sends one command line and waits for the instrument. True when it went through, False when it was refused or
  /// failed; `reply` is what the instrument handed back, else empty. Clears `StopRequested` first. In skip mode.
  bool SendDeviceCommand(std::string_view line, std::string& reply);
  bool SendDeviceCommand(std::string_view line);

  /// Sends the lines one by one for as long as `StopRequested` is False; once it is True, all further lines are
  /// skipped, which counts as having run through. False when a send gave False: then the lines behind it have not been
  /// sent.
  bool RunCommandText(std::string_view text, FailureMode mode);

  /// Whether a `SendCommand` is waiting for the instrument: what runs now then runs nested in it.
  bool LineUnderWay() const { return lineUnderWay_; }

 private:
  Ref<HelmswayCmds::IDeviceLink> DeviceLink() const;

  const IniFiles& files_;
  bool lineUnderWay_ = false;
};

}  // namespace OrvelCalibrateS
