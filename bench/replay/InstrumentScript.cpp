#include "bench/replay/InstrumentScript.h"

#include <algorithm>
#include <utility>

namespace Helmsway {

void InstrumentScript::Refuse(std::string prefix, Answer::Result result, std::int32_t count) {
  refusals_.push_back({std::move(prefix), result, count});
}

void InstrumentScript::Reply(std::string prefix, std::string text) {
  replies_.push_back({std::move(prefix), std::move(text)});
}

void InstrumentScript::During(std::string prefix, std::size_t number, Action action) {
  waiting_.push_back({std::move(prefix), number, std::move(action)});
}

std::optional<Answer> InstrumentScript::TakeRefusal(std::string_view line) {
  const auto found = std::find_if(refusals_.begin(), refusals_.end(),
                                  [&](const Refusal& rule) { return line.starts_with(rule.prefix); });
  if (found == refusals_.end()) return std::nullopt;
  const Answer answer{found->result, "", "the script says so"};
  if (--found->left == 0) refusals_.erase(found);
  return answer;
}

std::vector<Action> InstrumentScript::TakeWaiting(std::string_view line, std::size_t number) {
  const auto fits = std::stable_partition(waiting_.begin(), waiting_.end(), [&](const WaitingAction& waiting) {
    return waiting.number == 0 ? !line.starts_with(waiting.prefix) : waiting.number != number;
  });
  std::vector<Action> actions;
  for (auto waiting = fits; waiting != waiting_.end(); ++waiting) actions.push_back(std::move(waiting->action));
  waiting_.erase(fits, waiting_.end());
  return actions;
}

const std::string* InstrumentScript::ReplyTo(std::string_view line) const {
  const auto found = std::find_if(replies_.rbegin(), replies_.rend(),
                                  [&](const ScriptedReply& rule) { return line.starts_with(rule.prefix); });
  return found == replies_.rend() ? nullptr : &found->text;
}

}  // namespace Helmsway
