#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "bench/instrument/Instrument.h"
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
  virtual void LineEnded(std::string_view line, const Answer& answer) = 0;

  virtual void MessageAnswered(const AnsweredMessage& message) = 0;
  virtual void MemberRead(std::string_view name, const MemberValue& value) = 0;
  virtual void FormShown(const forms::ISurface& form, std::string_view statusText) = 0;

  /// The run is over, early or not. `before` and `after` are the bytes of the configuration file.
  virtual void Ended(const CalibrationValues& calibrationMemory, std::string_view before, std::string_view after) = 0;

 protected:
  ~IReport() = default;
};

}  // namespace Helmsway
