#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "bench/instrument/FaultPlan.h"
#include "bench/instrument/Instrument.h"
#include "bench/instrument/MemoryComparison.h"
#include "bench/instrument/Score.h"
#include "bench/instrument/TrainingInstrument.h"
#include "bench/replay/Action.h"
#include "forms/Surface.h"

namespace Helmsway {

/// A message box and how it was answered.
struct AnsweredMessage {
  std::string_view title;  ///< empty for a box that has none of its own
  std::string_view text;   ///< lines end in CR LF
  forms::MessageButtons buttons = forms::MessageButtons::Ok;
  forms::MessageIcon icon = forms::MessageIcon::None;
  forms::MessageAnswer answer = forms::MessageAnswer::Ok;
};

/// What the host can read of the add-in.
using MemberValue = std::variant<bool, std::int32_t, std::string>;

/// Who has settled how a line ended.
enum class AnswerBy { Instrument, Script };

/// What is left when a run is over.
struct RunEnd {
  const CalibrationValues& calibrationMemory;
  const std::optional<Score>& score;                 ///< of a run that has reached the simulated instrument
  const std::vector<MemoryDifference>& differences;  ///< between the configuration file and the memory
  std::string_view before;                           ///< bytes of the configuration file
  std::string_view after;
};

/// Is told of a run while it goes on, in the order in which things happen. Texts are valid for the length of the call.
class IReport {
 public:
  /// An action is about to be performed. `form` is null while no form is loaded.
  virtual void Performing(const Action& action, const forms::ISurface* form) = 0;
  /// The action that was told last can't be performed now.
  virtual void Ignored(const Action& action) = 0;

  virtual void StatusTextWritten(std::string_view text) = 0;
  virtual void StopRequestedWritten(bool value) = 0;
  virtual void AddInActiveWritten(bool value) = 0;
  virtual void ChangedWritten(bool value) = 0;
  virtual void FocusSet() = 0;
  virtual void IniWritten(std::string_view section, std::string_view key, std::string_view value) = 0;

  /// What is told between these two took place while the line was under way.
  virtual void LineBegins(std::string_view line) = 0;
  virtual void LineEnded(std::string_view line, const Answer& answer, AnswerBy by) = 0;
  /// A planned fault goes for the line that has just begun.
  virtual void FaultStruck(const Fault& fault) = 0;

  virtual void MessageAnswered(const AnsweredMessage& message) = 0;
  virtual void MemberRead(std::string_view name, const MemberValue& value) = 0;
  virtual void FormShown(const forms::ISurface& form, std::string_view statusText) = 0;

  /// `differences`: where the configuration file and the instrument's memory disagree.
  virtual void InstrumentShown(const InstrumentView& view, const std::vector<MemoryDifference>& differences) = 0;
  virtual void ScoreShown(const Score& score) = 0;

  // What the add-in passes over in silence. A trace has no line for it, and a report that has nothing to say of it
  // needs no function. `why` is in words for a person; it may be empty.
  virtual void IniWriteFailed(std::string_view /*section*/, std::string_view /*key*/, std::string_view /*value*/,
                              std::string_view /*why*/) {}
  virtual void IniReadFailed(std::string_view /*section*/, std::string_view /*key*/, std::string_view /*why*/) {}
  /// The add-in couldn't get hold of the device link, so one of its steps hasn't been done.
  virtual void LinkNotReached() {}
  /// The add-in has found that a stop was requested, so one line isn't sent.
  virtual void LineSkipped() {}

  /// An action that nothing else was under way for is over, with all that it led to. `form` is null while no form is
  /// loaded.
  virtual void Performed(const forms::ISurface* /*form*/, std::string_view /*statusText*/) {}

  /// The run is over, early or not.
  virtual void Ended(const RunEnd& end) = 0;

 protected:
  ~IReport() = default;
};

}  // namespace Helmsway
