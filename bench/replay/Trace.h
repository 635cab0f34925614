#pragma once

#include <ostream>

#include "bench/replay/Report.h"

namespace Helmsway {

/// Writes a run as JSON Lines: one object for each event, its kind in the member "event". Bytes that aren't UTF-8 are
/// escaped as `JsonText` says.
class Trace final : public IReport {
 public:
  /// The stream must outlive the trace.
  explicit Trace(std::ostream& out) : out_(out) {}

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
  std::ostream& out_;
};

}  // namespace Helmsway
