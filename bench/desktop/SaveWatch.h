#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "bench/desktop/panes/SaveVerdict.h"
#include "bench/replay/Player.h"

namespace Helmsway {

/// Follows a save from the operator's answer to its end, and counts what was done and what wasn't.
class SaveWatch {
 public:
  /// An action begins; Save homes S and moves it to the number before the question.
  void Performing(const Action& action);
  /// The question is asked, and this is what a save would do.
  void Asked(const SaveRehearsal& rehearsal) { rehearsal_ = rehearsal; }
  /// The operator has agreed.
  void Begin();

  void IniWritten(std::string_view section);
  void IniWriteFailed(std::string_view section, std::string_view why);
  void IniReadFailed(std::string_view why);
  void LineEnded(std::string_view line, const Answer& answer);
  void LinkNotReached();
  void LineSkipped();
  /// The action that nothing else was under way for is over.
  void Performed() { notHomed_.clear(); }

  /// The save that is over, with what can be counted of it; null when there was none since the last call.
  std::optional<SaveResult> Take();
  /// What the save was to do.
  const SaveRehearsal& Foretold() const { return rehearsal_; }

 private:
  SaveRehearsal rehearsal_;
  std::optional<SaveResult> result_;
  std::string notHomed_;
};

}  // namespace Helmsway
