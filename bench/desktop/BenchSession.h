#pragma once

#include <QObject>
#include <QStringList>
#include <filesystem>
#include <optional>
#include <string>

#include "bench/desktop/BenchReport.h"
#include "bench/desktop/form/FormView.h"
#include "bench/desktop/form/MessageBoxes.h"
#include "bench/desktop/instrument/InstrumentPicture.h"
#include "bench/host/AddInLibrary.h"
#include "bench/replay/Attendant.h"
#include "bench/replay/Player.h"
#include "bench/replay/RunFolder.h"

namespace Helmsway {

struct SessionOptions {
  std::filesystem::path addIn;                  ///< the library's file
  std::filesystem::path installation;           ///< folder with the configuration files, which are worked on
  std::optional<std::filesystem::path> copyOf;  ///< the installation of which that folder is a copy of the window's own
  TrainingSeed seed;
  double factor = 1;  ///< how many times faster than real the instrument's time passes, 1 to 100
};

/// A person's session with the add-in and the simulated instrument. All that is done is an action of the same player
/// that plays scripts; a line takes its time in an event loop of its own, so that Stop can be pressed meanwhile.
class BenchSession final : public QObject, public IFormHands, private IAttendant {
  Q_OBJECT

 public:
  static constexpr double SlowestFactor = 1;
  static constexpr double FastestFactor = 100;

  /// Console and message boxes must outlive the session. Throws `std::exception` when the add-in can't be loaded or
  /// the installation can't be read.
  BenchSession(const SessionOptions& options, ConsoleModel& console, MessageBoxes& messageBoxes);
  BenchSession(const BenchSession&) = delete;
  BenchSession& operator=(const BenchSession&) = delete;
  ~BenchSession() override;

  /// The host creates the add-in, hands itself over and reads what it shows; does nothing while a form is loaded.
  void StartAddIn();
  /// The host takes itself back and releases the add-in.
  void EndAddIn();

  /// Performs an action, written as in a script. False, with nothing done, when it isn't possible now: something else
  /// is going on, or the session is over.
  bool Perform(const std::string& action);

  /// The session is over for good: the line under way is the last one, and nothing is written any more. An instrument
  /// that doesn't answer isn't waited for.
  void BreakOff();

  /// Nothing is going on.
  bool IsAtRest() const { return acting_ == 0; }
  bool LineIsUnderWay() const { return player_->LineIsUnderWay(); }
  /// What keeps the session from going on; empty while it can.
  QString WhyOver() const;

  void SetFactor(double factor);

  /// The form while it is loaded; null otherwise.
  forms::ISurface* Surface() { return surface_; }
  BenchReport& Report() { return report_; }
  InstrumentPicture Picture() { return PictureOf(player_->Training(), share_); }
  const CalibrationValues& CalibrationMemory() const { return player_->CalibrationMemory(); }
  /// As the add-in sees it.
  std::filesystem::path MarivaneIni() const { return folder_.MarivaneIni(); }
  const SessionOptions& Options() const { return options_; }

  /// The session as a script that plays it again, and beside it, in a folder of the script's name with
  /// ".installation", the configuration files that it began with. Both throw `std::exception` when a file can't be
  /// written.
  void SaveScript(const std::filesystem::path& file) const;
  void SaveTrace(const std::filesystem::path& file) const;

  void Click(forms::ControlId control) override;
  void SetChecked(forms::ControlId checkBox, bool checked) override;
  void Pick(forms::ControlId list, std::int32_t entry) override;

 Q_SIGNALS:
  void FormLoaded();
  void FormClosed();
  void ControlChanged(forms::ControlId control, forms::Aspect aspect);
  /// A line is under way, and that share of its time is over.
  void Progress(double share);
  /// An action that nothing else was under way for begins, or is done with all that it led to.
  void Began();
  void Rested();
  /// The add-in asks whether to save, and this is what it would do. The answer comes after this.
  void SaveAsked(const SaveRehearsal& rehearsal);

 private:
  struct StartFile {
    std::string name;
    std::string bytes;
  };

  /// The instrument gets the calibration memory that it had when the bench was used last.
  void RestoreMemory();
  void KeepMemory(bool accepted);

  void FormLoaded(forms::ISurface& surface) noexcept override;
  void LineUnderWay(std::string_view line) noexcept override;
  void Changed(forms::ControlId control, forms::Aspect aspect) noexcept override;
  void Closed() noexcept override;
  forms::MessageAnswer Show(std::string_view title, std::string_view text, forms::MessageButtons buttons,
                            forms::MessageIcon icon) noexcept override;

  const SessionOptions options_;
  MessageBoxes& messageBoxes_;
  std::vector<StartFile> startFiles_;
  RunFolder folder_;
  AddInLibrary library_;
  BenchReport report_;
  std::optional<Player> player_;
  forms::ISurface* surface_ = nullptr;
  bool seeded_ = false;
  int acting_ = 0;  // actions that are being performed, one within the other
  double factor_ = SlowestFactor;
  double share_ = 0;
};

}  // namespace Helmsway
