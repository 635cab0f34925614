#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/instrument/Instrument.h"
#include "bench/replay/Action.h"

namespace Helmsway {

/// What a script has said about the lines to come. A rule fits a line that begins with its prefix; the prefix "" fits
/// every line.
class InstrumentScript {
 public:
  /// The next `count` lines that fit end with `result`, which isn't `Ok`.
  void Refuse(std::string prefix, Answer::Result result, std::int32_t count);
  void Reply(std::string prefix, std::string text);
  /// When the next line that fits is under way, the action takes place, once. `number` isn't 0 where the action is for
  /// the line of that number instead.
  void During(std::string prefix, std::size_t number, Action action);

  /// Settles whether the script refuses the line that begins now: uses up one refusal of the rule that was said first
  /// among those that fit. Empty when there is none.
  std::optional<Answer> TakeRefusal(std::string_view line);
  /// Takes out the actions that have waited for this line, in the order in which they were said.
  /// `number` is that of the line among all that have been sent, from 1.
  std::vector<Action> TakeWaiting(std::string_view line, std::size_t number);
  /// Of the replies that fit, the one that was said last; null when none does. Lives until the next `Reply`.
  const std::string* ReplyTo(std::string_view line) const;

 private:
  struct Refusal {
    std::string prefix;
    Answer::Result result = Answer::Result::Refused;
    std::int32_t left = 0;  ///< lines still to be refused
  };
  struct ScriptedReply {
    std::string prefix;
    std::string text;
  };
  struct WaitingAction {
    std::string prefix;
    std::size_t number = 0;
    Action action;
  };

  std::vector<Refusal> refusals_;
  std::vector<ScriptedReply> replies_;
  std::vector<WaitingAction> waiting_;
};

}  // namespace Helmsway
