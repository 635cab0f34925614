#include "bench/replay/NumberWatch.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Helmsway {
namespace {

constexpr std::string_view MoveS = "MOVE S ";
/// Start, Save with its look at the calibrated position, Up and Down.
constexpr std::array<std::int32_t, 4> ButtonsThatGoThere{0, 6, 7, 8};

}  // namespace

std::string NumberOn(const forms::ISurface* form) {
  if (form == nullptr) return {};
  const forms::ControlId control = form->Find("txtCurrentCollect", forms::NoIndex);
  return control == forms::NoControl ? std::string() : std::string(form->State(control).text);
}

void NumberWatch::Performing(const Action& action) {
  if (action.kind == ActionKind::PowerCycle) poweredDown_ = true;
  const bool goesThere =
      action.kind == ActionKind::ClickButton &&
      std::find(ButtonsThatGoThere.begin(), ButtonsThatGoThere.end(), action.number) != ButtonsThatGoThere.end();
  sentByLast_ = goesThere && !sentThere_;
  sentThere_ = sentThere_ || goesThere;
}

void NumberWatch::Ignored() {
  if (std::exchange(sentByLast_, false)) sentThere_ = false;
}

void NumberWatch::LineEnded(std::string_view line, const Answer& answer) {
  if (!line.starts_with(MoveS)) return;
  answerMissing_ = answer.result == Answer::Result::Failed;
  if (answer.result != Answer::Result::Ok) return;
  reachedNow_ = line.substr(MoveS.size());
  poweredDown_ = false;
}

void NumberWatch::FaultStruck(const Fault& fault) {
  if (fault.kind == FaultKind::PowerCycle) poweredDown_ = true;
}

void NumberWatch::Performed(const forms::ISurface* form) {
  const std::string number = NumberOn(form);
  if (sentThere_) {
    const bool isThere = reachedNow_ == number;
    confirmed_ = isThere ? number : std::string();
    unconfirmed_ = isThere ? std::string() : number;
    doubt_ = answerMissing_ ? Doubt::NoAnswer : Doubt::NotSent;
  } else if (number != unconfirmed_ && number != confirmed_) {
    // Another number, which says where S is on record or under a head: nothing was to move there.
    confirmed_.clear();
    unconfirmed_.clear();
  }
  if (poweredDown_ && !confirmed_.empty()) {
    unconfirmed_ = std::exchange(confirmed_, {});
    doubt_ = Doubt::PowerLost;
  }
  sentThere_ = false;
  sentByLast_ = false;
  poweredDown_ = false;
  answerMissing_ = false;
  reachedNow_.reset();
}

std::string NumberWatch::InWords() const {
  if (unconfirmed_.empty()) return {};
  const std::string number = "the number on the form, " + unconfirmed_ + ",";
  switch (doubt_) {
    case Doubt::NotSent:
      return number + " was not reached";
    case Doubt::NoAnswer:
      return number + " may not have been reached";
    case Doubt::PowerLost:
      return number + " was reached, but the axes have lost their positions since";
  }
  return {};
}

}  // namespace Helmsway
