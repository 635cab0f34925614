#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "bench/desktop/SaveWatch.h"
#include "bench/desktop/Troubles.h"
#include "bench/desktop/panes/ConsoleModel.h"
#include "bench/replay/SessionRecord.h"

namespace Helmsway {

/// Title of the box by which the add-in asks whether to save.
inline constexpr std::string_view SaveQuestion = "Save S Axis Positions";

/// Hears what happens in a session: keeps it for script and trace, shows it in the console, and passes on to the window
/// what that must act upon.
class BenchReport final : public QObject, public IReport {
  Q_OBJECT

 public:
  /// `clock` gives the instrument's time. The console must outlive the report.
  BenchReport(ConsoleModel& console, std::function<Seconds()> clock);

  const SessionRecord& Record() const { return record_; }
  /// The line that is under way, or was last.
  const QString& LineText() const { return line_.text; }
  SaveWatch& Save() { return save_; }
  /// How many keys the add-in has written.
  std::size_t Writes() const { return writes_; }
  const Troubles& SilentTroubles() const { return troubles_; }
  /// Something to be told that isn't part of the session.
  void Note(const QString& text);

  void Performing(const Action& action, const forms::ISurface* form) override;
  void Ignored(const Action& action) override;
  void StatusTextWritten(std::string_view text) override;
  void StopRequestedWritten(bool value) override;
  void AddInActiveWritten(bool value) override;
  void ChangedWritten(bool value) override;
  void FocusSet() override;
  void IniWritten(std::string_view section, std::string_view key, std::string_view value) override;
  void LineBegins(std::string_view line) override;
  void LineEnded(std::string_view line, const Answer& answer, AnswerBy by) override;
  void FaultStruck(const Fault& fault) override;
  void MessageAnswered(const AnsweredMessage& message) override;
  void MemberRead(std::string_view name, const MemberValue& value) override;
  void FormShown(const forms::ISurface& form, std::string_view statusText) override;
  void InstrumentShown(const InstrumentView& view, const std::vector<MemoryDifference>& differences) override;
  void ScoreShown(const Score& score) override;
  void IniWriteFailed(std::string_view section, std::string_view key, std::string_view value,
                      std::string_view why) override;
  void IniReadFailed(std::string_view section, std::string_view key, std::string_view why) override;
  void LinkNotReached() override;
  void LineSkipped() override;
  void Performed(const forms::ISurface* form, std::string_view statusText) override;
  void Ended(const RunEnd& end) override;

 Q_SIGNALS:
  void StatusText(const QString& text);
  void Changed(bool value);
  void FocusAsked();
  void LineBegan(const QString& line);
  /// `reason` is empty unless the line was refused or failed.
  void LineOver(const QString& line, const QString& reason);
  /// S has been moved by an arrow button.
  void Jogged();
  /// The save dialog has been answered.
  void SaveAnswered(forms::MessageAnswer answer);
  /// The line that makes the instrument's new values permanent is over. One that wasn't accepted may have done so, too.
  void SaveLineOver(bool accepted);
  /// What the add-in passes over in silence may have changed.
  void TroublesChanged();
  void CaptionRead(const QString& caption);
  void ButtonsShown(bool show);
  void StatusBarShown(bool show);
  void ScoreTold(const QStringList& lines);

 private:
  /// Shows failures that come one after the other in one row, with their number.
  void TellRepeated(const QString& text, const QString& why);
  void Tell(ConsoleEntry::Kind kind, const QString& text, const QString& result = {}, const QString& reply = {});

  ConsoleModel& console_;
  std::function<Seconds()> clock_;
  SessionRecord record_;
  SaveWatch save_;
  std::size_t writes_ = 0;
  Troubles troubles_;
  ConsoleEntry repeated_;  // a failure that has come in a row
  int repeatedRow_ = -1;
  std::size_t repeatedCount_ = 0;
  ConsoleEntry line_;  // the one under way
  int lineRow_ = -1;
};

}  // namespace Helmsway
