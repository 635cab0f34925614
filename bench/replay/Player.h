#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "addin/base/Ref.h"
#include "bench/host/AddInLibrary.h"
#include "bench/host/AddInSession.h"
#include "bench/host/CommandSink.h"
#include "bench/host/ConfigurationService.h"
#include "bench/host/Durability.h"
#include "bench/host/HostConnection.h"
#include "bench/host/HostIniService.h"
#include "bench/host/HostListener.h"
#include "bench/host/HostWindow.h"
#include "bench/instrument/Instrument.h"
#include "bench/replay/Action.h"
#include "bench/replay/Attendant.h"
#include "bench/replay/ExitStatus.h"
#include "bench/replay/InstrumentKind.h"
#include "bench/replay/InstrumentScript.h"
#include "bench/replay/InstrumentStand.h"
#include "bench/replay/LosableConnection.h"
#include "bench/replay/OperatorHands.h"
#include "bench/replay/Report.h"
#include "forms/Surface.h"

namespace Helmsway {

/// Why a run ended before its script did.
struct EarlyEnd {
  ExitStatus status = ExitStatus::Failed;
  std::size_t line = 0;  ///< of the action that was being performed
  std::string what;
};

/// What a save would do.
struct SaveRehearsal {
  std::string before;  ///< bytes of the configuration file
  std::string after;
  std::vector<std::string> lines;  ///< that the instrument would be sent, as long as it accepts them
  std::string problem;             ///< why keys wouldn't be written, in words; empty when all would
};

/// Plays the host, the operator and, where the script says so, the instrument; reports what happens meanwhile.
///
/// A run that can't go on ends behind the action that is under way: from there on nothing is reported, nothing is
/// written and no line reaches the instrument.
class Player final : private IHostListener, ICommandSink, forms::IObserver, forms::IMessageBoxes {
 public:
  /// `marivaneIni` is the file that the instrument is made of and that `file set` and `file remove` edit; it lies in a
  /// folder of the run's own. Library, report and attendant must outlive the player. With an attendant, nobody but them
  /// answers message boxes; without one (null), the script does, and nobody waits for a line. `durability` is that of
  /// every write to the file.
  Player(const AddInLibrary& library, std::string marivaneIni, InstrumentKind instrument, IReport& report,
         IAttendant* attendant = nullptr, Durability durability = Durability::Flushed);
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;
  /// Releases what there still is of the add-in; nothing of that is reported.
  ~Player();

  /// Performs one action. True when the run goes on.
  bool Perform(const Action& action);

  /// The run ends behind the action that is under way.
  void BreakOff(std::string why) { End(ExitStatus::Failed, std::move(why)); }

  /// What the add-in's save would do as things stand now, found out by doing it where it leaves no mark: on a copy of
  /// the file, with an instrument that isn't there. Nothing is reported. Not while a line is under way; throws
  /// `std::exception` when the file can't be copied.
  SaveRehearsal RehearseSave();

  bool LineIsUnderWay() const { return lineUnderWay_; }
  /// Whether the flag is set that the add-in looks at between two lines.
  bool StopRequested();
  /// The simulated instrument, made now if nothing has needed it before.
  const TrainingInstrument& Training() { return stand_.Training(); }

  /// Set once the run can't go on.
  const std::optional<EarlyEnd>& Ended() const { return ended_; }
  /// Empty while the instrument hasn't been reached.
  const CalibrationValues& CalibrationMemory() const { return stand_.CalibrationMemory(); }
  /// Empty while the simulated instrument hasn't been reached.
  std::optional<Score> CurrentScore() const { return stand_.CurrentScore(); }

 private:
  void PerformReporting(const Action& action);
  void Do(const Action& action);
  void DoToForm(const Action& action);
  void DoToInstrument(const Action& action);
  void CreateAddIn();
  void ReleaseAddIn();
  void ReadMember(const std::string& name);
  void EditFile(const Action& action);

  /// Each gives False when the operator can't do that now.
  bool ClickButton(std::int32_t index);
  bool SetChecked(const std::string& box, bool checked);
  void ClearEjectPosition();
  /// The operator does what a message box has asked for.
  void DoWhatBoxAsks(std::string_view title, std::string_view text, forms::MessageAnswer answer);

  struct Ending {
    Answer answer;
    AnswerBy by = AnswerBy::Instrument;
  };

  Ending Execute(std::string_view line);
  void BeginAtInstrument(std::string_view line);
  bool LinkReachable() noexcept;
  /// Runs `step`; what it throws ends the run.
  template <class Step>
  void EndingOnFailure(Step step);
  void End(ExitStatus status, std::string what);

  void StatusTextWritten(std::string_view text) noexcept override;
  void StopRequestedWritten(bool value) noexcept override;
  void AddInActiveWritten(bool value) noexcept override;
  void ChangedWritten(bool value) noexcept override;
  void FocusSet() noexcept override;
  void IniWritten(std::string_view section, std::string_view key, std::string_view value) noexcept override;

  void IniWriteFailed(std::string_view section, std::string_view key, std::string_view value,
                      std::string_view why) noexcept override;
  void IniReadFailed(std::string_view section, std::string_view key, std::string_view why) noexcept override;
  void LinkNotReached() noexcept override;
  void StopFound() noexcept override;

  HelmswayCmds::Result Send(std::string_view line, std::string& reply, bool& accepted) noexcept override;

  void Changed(forms::ControlId control, forms::Aspect aspect) noexcept override;
  void Closed() noexcept override;

  forms::MessageAnswer AnswerTo(std::string_view title, std::string_view text, forms::MessageButtons buttons,
                                forms::MessageIcon icon);
  forms::MessageAnswer QueuedAnswer(std::string_view title, forms::MessageButtons buttons);
  bool Muted() const { return silent_ || rehearsal_ != nullptr; }

  forms::MessageAnswer Show(std::string_view title, std::string_view text, forms::MessageButtons buttons,
                            forms::MessageIcon icon) noexcept override;

  const AddInLibrary& library_;
  const std::string marivaneIni_;
  const Durability durability_;
  IReport& report_;
  IAttendant* const attendant_;

  OrvelCalibrateS::Ref<HostConnection> connection_;
  OrvelCalibrateS::Ref<LosableConnection> losableConnection_;  // what the add-in gets
  OrvelCalibrateS::Ref<HostWindow> window_;
  OrvelCalibrateS::Ref<ConfigurationService> files_;
  OrvelCalibrateS::Ref<HostIniService> iniService_;
  InstrumentStand stand_;
  OperatorHands hands_;
  InstrumentScript instrumentScript_;
  std::deque<forms::MessageAnswer> answers_;

  std::optional<AddInSession> session_;
  forms::ISurface* surface_ = nullptr;  // while the form is loaded
  bool lineUnderWay_ = false;
  std::size_t linesSent_ = 0;
  bool registeringTool_ = false;
  bool silent_ = false;                 // nothing is reported any more
  SaveRehearsal* rehearsal_ = nullptr;  // while a save is rehearsed
  std::size_t scriptLine_ = 0;
  std::optional<EarlyEnd> ended_;
};

}  // namespace Helmsway
