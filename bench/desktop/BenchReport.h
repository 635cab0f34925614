#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

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
  /// The instrument has taken its new values into its permanent memory.
  void MemorySaved();
  void CaptionRead(const QString& caption);
  void ButtonsShown(bool show);
  void StatusBarShown(bool show);
  void ScoreTold(const QStringList& lines);

 private:
  void Tell(ConsoleEntry::Kind kind, const QString& text, const QString& result = {}, const QString& reply = {});

  ConsoleModel& console_;
  std::function<Seconds()> clock_;
  SessionRecord record_;
  ConsoleEntry line_;  // the one under way
  int lineRow_ = -1;
};

}  // namespace Helmsway
