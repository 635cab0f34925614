#pragma once

#include <string>
#include <string_view>

#include "addin/base/Ref.h"
#include "addin/base/Steps.h"
#include "addin/config/IniFiles.h"
#include "addin/contract/HelmswayCmds.h"
#include "addin/device/CommandText.h"

namespace OrvelCalibrateS {

/// What holds for the whole library, whichever form sends: a line outlives the form that sent it when the host ends
/// that form while the line is under way.
struct SendState {
  /// A `SendCommand` is waiting for the instrument: what runs now runs nested in it.
  bool LineUnderWay = false;
};

/// What the add-in has taken from the host, and everything it does with it. The add-in ends none of these objects.
///
/// Every operation but the two of the send is a step: it fails when the object isn't set or the host's call fails. The
/// device link is fetched from the connection for each single use and released at once.
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

  /// Sends one command line and waits for the instrument. True when it went through, False when it was refused or
  /// failed; `reply` is what the instrument handed back, and empty when the call failed, whatever it had written by
  /// then. Clears `StopRequested` first. In skip mode.
  bool SendDeviceCommand(std::string_view line, std::string& reply);
  bool SendDeviceCommand(std::string_view line);

  /// Sends the lines one by one for as long as `StopRequested` is False; once it is True, all further lines are
  /// skipped, which counts as having run through. False when a send gave False: then the lines after it have not been
  /// sent.
  bool RunCommandText(std::string_view text, FailureMode mode);
  /// The same. `stopRequested` is the run's flag: False at the start, then what each line read; a read that fails
  /// leaves it as the line before found it.
  bool RunCommandText(std::string_view text, FailureMode mode, bool& stopRequested);

  /// Whether the library has a line under way, of this form or of one that the host has ended meanwhile.
  bool LineUnderWay() const { return sending_.LineUnderWay; }

 private:
  Ref<HelmswayCmds::IDeviceLink> DeviceLink() const;

  const IniFiles& files_;
  SendState& sending_;
};

}  // namespace OrvelCalibrateS
