#pragma once

#include <string>
#include <string_view>

#include "addin/base/Ref.h"
#include "addin/base/Steps.h"
#include "addin/config/IniFiles.h"
#include "addin/contract/HelmswayCmds.h"
#include "addin/device/CommandText.h"

namespace OrvelCalibrateS {

/// The state of the whole library, whichever form sends: a line outlives the form that sent it when the host ends that
/// form while the line is under way.
struct SendState {
  /// A `SendCommand` is waiting for the instrument: all code that runs now is nested in it.
  bool LineUnderWay = false;
};

/// The host's objects that the add-in holds, and every use of them. The add-in ends none of these objects.
///
/// Every operation that doesn't send is a step: it fails when the object isn't set or the host's call fails. The device
/// link is fetched from the connection for each single use and released at once.
class HostChannel {
 public:
  /// `files` and `sending` must outlive it.
  HostChannel(const IniFiles& files, SendState& sending) : files_(files), sending_(sending) {}

  Ref<HelmswayCmds::IParentConnection> ParentConnection;
  Ref<HelmswayCmds::IHostWindow> FormParent;
  Ref<HelmswayCmds::IStatusPanel> StatusPanel;

  bool StopRequested() const;
  void WriteStopRequested(bool value) const;
  void WriteAddInActive(bool value) const;
  void WriteStatus(std::string_view text) const;
  void WriteChanged(bool value) const;
  void SetFocus() const;

  /// Sends one command line and waits for the instrument. Returns true when the line was accepted, false when it was
  /// refused or failed. `reply` is the instrument's reply; it is empty when the call failed, even if the call had
  /// written one. Clears `StopRequested` first. In skip mode.
  bool SendDeviceCommand(std::string_view line, std::string& reply);
  bool SendDeviceCommand(std::string_view line);

  /// Sends the lines one by one for as long as `StopRequested` is False; once it is True, all further lines are
  /// skipped, which counts as success. Returns false when a send returned false; the lines after it have then not been
  /// sent.
  bool RunCommandText(std::string_view text, FailureMode mode);
  /// The same. `stopRequested` is the run's flag: false at the start, then the value that was read before each line; a
  /// failed read leaves it unchanged.
  bool RunCommandText(std::string_view text, FailureMode mode, bool& stopRequested);

  /// Whether the library has a line under way, of this form or of one that the host has ended meanwhile.
  bool LineUnderWay() const { return sending_.LineUnderWay; }

 private:
  Ref<HelmswayCmds::IDeviceLink> DeviceLink() const;

  const IniFiles& files_;
  SendState& sending_;
};

}  // namespace OrvelCalibrateS
