#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "bench/instrument/FaultPlan.h"
#include "bench/instrument/Instrument.h"
#include "bench/replay/Action.h"
#include "forms/Surface.h"

namespace Helmsway {

/// Follows a run to see whether S has reached the number that the form shows under "Current steps". The add-in shows
/// the number before it moves, and says nothing when the move is refused, fails or isn't sent.
class NumberWatch {
 public:
  /// An action begins, or something is done while a line is under way.
  void Performing(const Action& action);
  /// The action that was told last can't be performed now.
  void Ignored();
  void LineEnded(std::string_view line, const Answer& answer);
  void FaultStruck(const Fault& fault);
  /// The action that nothing else was under way for is over. `form` is null while no form is loaded.
  void Performed(const forms::ISurface* form);

  /// The number, while the instrument hasn't confirmed that S is there; empty otherwise.
  const std::string& Unconfirmed() const { return unconfirmed_; }
  /// S has been seen to reach the number that the form shows.
  bool Reached() const { return !confirmed_.empty(); }
  /// Unconfirmed() as a clause for a person to read; empty when there is nothing to say.
  std::string InWords() const;

 private:
  enum class Doubt { NotSent, NoAnswer, PowerLost };

  bool sentThere_ = false;   ///< the action under way is to move S to the number
  bool sentByLast_ = false;  ///< by the action that was told last
  std::optional<std::string> reachedNow_;
  bool poweredDown_ = false;
  bool answerMissing_ = false;  ///< of a move of S
  std::string confirmed_;       ///< the number that S has reached
  std::string unconfirmed_;
  Doubt doubt_ = Doubt::NotSent;
};

/// The text of the form's number; empty without a form.
std::string NumberOn(const forms::ISurface* form);

}  // namespace Helmsway
