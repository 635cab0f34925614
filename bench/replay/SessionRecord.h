#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "bench/replay/Report.h"
#include "bench/replay/Trace.h"

namespace Helmsway {

/// Keeps a run that was made by hand, so that it can be written as the script that plays it again, and as that script's
/// trace: what was answered while an action was performed, and what was done while a line was under way, is told in
/// front of that action, as a script has to.
class SessionRecord final : public IReport {
 public:
  /// Each line ends in a line feed. `comment` stands at the top, its lines marked as comment.
  void WriteScript(std::ostream& out, const std::string& comment) const;
  /// What `helmsway-replay` gives of the script, byte for byte, as long as the configuration files are those that the
  /// run began with and nobody else has changed them meanwhile.
  void WriteTrace(std::ostream& out) const;

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

 private:
  /// An action that nothing else was under way for.
  struct Step {
    std::vector<std::string> preparations;  ///< actions that the script has in front
    std::string text;
    std::string events;  ///< lines of the trace
  };

  /// Keeps what `tell` tells of the action that is being performed.
  void Keep(const std::function<void(Trace&)>& tell);

  std::vector<Step> steps_;
  std::size_t linesSent_ = 0;
  bool lineUnderWay_ = false;
};

}  // namespace Helmsway
