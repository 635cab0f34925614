#include "bench/desktop/SaveWatch.h"

#include <utility>

namespace Helmsway {
namespace {

constexpr std::string_view SaveLine = "SET_CALIBRATION SAVE";
constexpr std::string_view HeadSection = "HeadType";
constexpr std::string_view HomeS = "HOME S";
constexpr std::int32_t SaveButton = 6;

std::string EndOf(const Answer& answer) {
  const std::string word = answer.result == Answer::Result::Refused ? "was refused" : "failed";
  return answer.reason.empty() ? word : word + " (" + answer.reason + ")";
}

}  // namespace

void SaveWatch::Performing(const Action& action) {
  if (action.kind == ActionKind::ClickButton && action.number == SaveButton) notHomed_ = "HOME S was not sent";
}

void SaveWatch::Begin() {
  result_.emplace();
  result_->notHomed = notHomed_;
  result_->linesPlanned = rehearsal_.lines.size();
}

void SaveWatch::IniWritten(std::string_view section) {
  if (result_ && section == HeadSection) ++result_->headsWritten;
}

void SaveWatch::IniWriteFailed(std::string_view section, std::string_view why) {
  if (!result_) return;
  if (section != HeadSection) result_->markNotWritten = true;
  if (result_->whyNotWritten.empty()) result_->whyNotWritten = why;
}

void SaveWatch::IniReadFailed(std::string_view why) {
  if (result_ && result_->whyNotRead.empty()) result_->whyNotRead = why;
}

void SaveWatch::LineEnded(std::string_view line, const Answer& answer) {
  if (!result_) {
    if (line == HomeS) notHomed_ = answer.result == Answer::Result::Ok ? "" : "HOME S " + EndOf(answer);
    return;
  }
  if (answer.result != Answer::Result::Ok) {
    result_->brokenBy = EndOf(answer);
    return;
  }
  ++result_->linesTaken;
  if (line == SaveLine) result_->memorySaved = true;
}

void SaveWatch::LinkNotReached() {
  if (result_) result_->linkLost = true;
}

void SaveWatch::LineSkipped() {
  if (result_) ++result_->linesSkipped;
}

std::optional<SaveResult> SaveWatch::Take() { return std::exchange(result_, std::nullopt); }

}  // namespace Helmsway
