#pragma once

#include <ostream>
#include <string>

#include "bench/replay/NumberWatch.h"
#include "bench/replay/Report.h"

namespace Helmsway {

/// Tells a run to a person: what was pressed, what the status panel said, how each line ended and why, what was written
/// and asked, what failed without a word from the add-in; at its end the instrument's calibration memory and what has
/// changed in the configuration file.
class Account final : public IReport {
 public:
  /// The stream must outlive the account.
  explicit Account(std::ostream& out) : out_(out) {}

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

 private:
  /// The start of a line of the account, indented below the action or command line that it belongs to.
  std::ostream& Line();
  /// The same, with the failures left uncounted that wait to be told.
  std::ostream& NextLine();

  /// Failures that come in rows are counted and told once, in front of whatever comes next.
  enum class Failure { None, Read, Link, Skipped };
  void Count(Failure failure, std::string first = {});
  void TellCounted();

  std::ostream& out_;
  std::string unfinishedLine_;  // the command line under way, as long as nothing has been told of it
  bool insideLine_ = false;     // something has been told since it began
  Failure counted_ = Failure::None;
  std::size_t count_ = 0;
  std::string first_;  // in words, of those counted
  NumberWatch number_;
  std::string doubt_;  // what has been told of the number
  std::string leftStatus_;
};

}  // namespace Helmsway
