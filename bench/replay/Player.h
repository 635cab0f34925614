#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "addin/base/Ref.h"
#include "bench/host/AddInLibrary.h"
#include "bench/host/AddInSession.h"
#include "bench/host/CommandSink.h"
#include "bench/host/HostConnection.h"
#include "bench/host/HostIniService.h"
#include "bench/host/HostListener.h"
#include "bench/host/HostWindow.h"
#include "bench/instrument/Instrument.h"
#include "bench/replay/Action.h"
#include "bench/replay/ExitStatus.h"
#include "bench/replay/InstrumentScript.h"
#include "bench/replay/Report.h"
#include "forms/Surface.h"

namespace Helmsway {

/// Why a run ended before its script did.
struct EarlyEnd {
  ExitStatus status = ExitStatus::Failed;
  std::size_t line = 0;  ///< of the action that was being performed
  std::string what;
};

/// Plays the host, the operator and, where the script says so, the instrument; reports what happens meanwhile.
///
/// A run that can't go on ends behind the action that is under way: from there on nothing is reported, nothing is
/// written and no line reaches the instrument.
class Player final : private IHostListener, ICommandSink, forms::IObserver, forms::IMessageBoxes {
 public:
  using MakeInstrument = std::function<std::unique_ptr<IInstrument>()>;

  /// `marivaneIni` is the file that `file set` and `file remove` edit. The instrument is made when the first line
  /// reaches it. Library and report must outlive the player.
  Player(const AddInLibrary& library, std::string marivaneIni, MakeInstrument makeInstrument, IReport& report);
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;
  /// Releases what there still is of the add-in; nothing of that is reported.
  ~Player();

  /// Performs one action. True when the run goes on.
  bool Perform(const Action& action);

  /// Set once the run can't go on.
  const std::optional<EarlyEnd>& Ended() const { return ended_; }
  /// Empty while the instrument hasn't been reached.
  const CalibrationValues& CalibrationMemory() const;

 private:
  void PerformReporting(const Action& action);
  void Do(const Action& action);
  void DoToForm(const Action& action);
  void CreateAddIn();
  void ReleaseAddIn();
  void ReadMember(const std::string& name);
  void EditFile(const Action& action);

  /// Each gives False when the operator can't do that now.
  bool ClickButton(std::int32_t index);
  bool SetChecked(const std::string& box, bool checked);

  IInstrument& Instrument();
  Answer Execute(std::string_view line);
  void End(ExitStatus status, std::string what);

  void StatusTextWritten(std::string_view text) noexcept override;
  void StopRequestedWritten(bool value) noexcept override;
  void AddInActiveWritten(bool value) noexcept override;
  void ChangedWritten(bool value) noexcept override;
  void FocusSet() noexcept override;
  void IniWritten(std::string_view section, std::string_view key, std::string_view value) noexcept override;

  HelmswayCmds::Result Send(std::string_view line, std::string& reply, bool& accepted) noexcept override;

  void Changed(forms::ControlId /*control*/, forms::Aspect /*aspect*/) noexcept override {}
  void Closed() noexcept override { surface_ = nullptr; }

  forms::MessageAnswer Show(std::string_view title, std::string_view text, forms::MessageButtons buttons,
                            forms::MessageIcon icon) noexcept override;

  const AddInLibrary& library_;
  const std::string marivaneIni_;
  const MakeInstrument makeInstrument_;
  IReport& report_;

  OrvelCalibrateS::Ref<HostConnection> connection_;
  OrvelCalibrateS::Ref<HostWindow> window_;
  OrvelCalibrateS::Ref<HostIniService> iniService_;
  std::unique_ptr<IInstrument> instrument_;
  InstrumentScript instrumentScript_;
  std::deque<forms::MessageAnswer> answers_;

  std::optional<AddInSession> session_;
  forms::ISurface* surface_ = nullptr;  // while the form is loaded
  bool lineUnderWay_ = false;
  bool silent_ = false;  // nothing is reported any more
  std::size_t scriptLine_ = 0;
  std::optional<EarlyEnd> ended_;
};

}  // namespace Helmsway
