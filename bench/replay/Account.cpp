#include "bench/replay/Account.h"

#include <utility>

#include "bench/replay/FormSnapshot.h"
#include "bench/replay/InstrumentWords.h"
#include "bench/replay/LineDifference.h"
#include "bench/replay/MessageWords.h"

namespace Helmsway {
namespace {

/// What stands on the button: its caption, or what its picture shows.
std::string_view Face(const forms::ControlState& button) {
  switch (button.arrow) {
    case forms::Arrow::Up:
      return "arrow up";
    case forms::Arrow::Down:
      return "arrow down";
    case forms::Arrow::None:
      break;
  }
  return button.caption;
}

std::string Description(const Action& action, const forms::ISurface* form) {
  if (action.kind == ActionKind::ClickBackground) return "press the background";
  if (action.kind != ActionKind::ClickButton) return action.text;
  const std::string button = "button " + std::to_string(action.number);
  if (form == nullptr) return "press " + button;
  const forms::ControlId id = form->Find("cmdButton", static_cast<std::int16_t>(action.number));
  return "press [" + std::string(Face(form->State(id))) + "] (" + button + ")";
}

std::string Outcome(const Answer& answer) {
  switch (answer.result) {
    case Answer::Result::Ok:
      return answer.reply.empty() ? "ok" : "ok, reply \"" + answer.reply + "\"";
    case Answer::Result::Refused:
      return "REFUSED" + (answer.reason.empty() ? "" : ": " + answer.reason);
    case Answer::Result::Failed:
      return "FAILED" + (answer.reason.empty() ? "" : ": " + answer.reason);
  }
  return "";
}

std::string Because(std::string_view why) { return why.empty() ? std::string() : ": " + std::string(why); }

/// Calls `visit` for each line of a text whose lines end in CR LF.
template <class Visit>
void ForEachTextLine(std::string_view text, Visit visit) {
  constexpr std::string_view LineEnd = "\r\n";
  for (;;) {
    const std::size_t end = text.find(LineEnd);
    visit(text.substr(0, end));
    if (end == std::string_view::npos) return;
    text.remove_prefix(end + LineEnd.size());
  }
}

}  // namespace

std::ostream& Account::Line() {
  TellCounted();
  return NextLine();
}

std::ostream& Account::NextLine() {
  if (!unfinishedLine_.empty()) {
    out_ << "  " << unfinishedLine_ << " ...\n";
    unfinishedLine_.clear();
    insideLine_ = true;
  }
  return out_ << (insideLine_ ? "      " : "  ");
}

void Account::Count(Failure failure, std::string first) {
  if (counted_ != failure) TellCounted();
  counted_ = failure;
  if (count_++ == 0) first_ = std::move(first);
}

void Account::TellCounted() {
  const Failure failure = std::exchange(counted_, Failure::None);
  const std::size_t count = std::exchange(count_, 0);
  if (failure == Failure::None) return;
  std::ostream& out = NextLine();
  const std::string times = count == 1 ? "once" : std::to_string(count) + " times";
  switch (failure) {
    case Failure::Read:
      out << "NOT READ: " << first_;
      if (count > 1) out << " (and " << count - 1 << " more)";
      break;
    case Failure::Link:
      out << "LINK NOT REACHED, tried " << times;
      break;
    default:
      out << "NOT SENT, since a stop was requested: " << count << (count == 1 ? " line" : " lines");
      break;
  }
  out << '\n';
}

void Account::Performing(const Action& action, const forms::ISurface* form) {
  TellCounted();
  number_.Performing(action);
  // An action during a line stands below that line, every other one at the margin.
  if (!unfinishedLine_.empty() || insideLine_) Line();
  out_ << Description(action, form) << '\n';
}

void Account::Ignored(const Action& /*action*/) {
  number_.Ignored();
  Line() << "ignored: can't be done now\n";
}

void Account::StatusTextWritten(std::string_view text) {
  if (text.empty()) {
    Line() << "status cleared\n";
  } else {
    Line() << "status: " << text << '\n';
  }
}

void Account::StopRequestedWritten(bool value) {
  // The flag is cleared ahead of every click and every line.
  if (value) Line() << "stop requested\n";
}

void Account::AddInActiveWritten(bool value) {
  // It is set ahead of every line.
  if (!value) Line() << "the add-in is no longer active\n";
}

void Account::ChangedWritten(bool value) {
  Line() << "host window: marked " << (value ? "changed" : "unchanged") << '\n';
}

void Account::FocusSet() { Line() << "host window: takes the focus\n"; }

void Account::IniWritten(std::string_view section, std::string_view key, std::string_view value) {
  Line() << "write [" << section << "] " << key << "=" << value << '\n';
}

void Account::IniWriteFailed(std::string_view section, std::string_view key, std::string_view value,
                             std::string_view why) {
  Line() << "NOT WRITTEN [" << section << "] " << key << "=" << value << Because(why) << '\n';
}

void Account::IniReadFailed(std::string_view section, std::string_view key, std::string_view why) {
  Count(Failure::Read, "[" + std::string(section) + "] " + std::string(key) + Because(why));
}

void Account::LinkNotReached() { Count(Failure::Link); }

void Account::LineSkipped() { Count(Failure::Skipped); }

void Account::Performed(const forms::ISurface* form, std::string_view statusText) {
  TellCounted();
  number_.Performed(form);
  const std::string doubt = number_.InWords();
  if (doubt != doubt_ && !doubt.empty()) Line() << "NOT CONFIRMED: " << doubt << '\n';
  doubt_ = doubt;
  if (leftStatus_ != statusText && !statusText.empty()) {
    Line() << "the status text is left over: " << statusText << '\n';
  }
  leftStatus_ = statusText;
}

void Account::LineBegins(std::string_view line) {
  TellCounted();
  unfinishedLine_ = line;
}

void Account::LineEnded(std::string_view line, const Answer& answer, AnswerBy /*by*/) {
  TellCounted();
  number_.LineEnded(line, answer);
  out_ << (insideLine_ ? "  ... " : "  ") << line << " -> " << Outcome(answer) << '\n';
  unfinishedLine_.clear();
  insideLine_ = false;
}

void Account::FaultStruck(const Fault& fault) {
  number_.FaultStruck(fault);
  Line() << "planned fault: " << Describe(fault) << '\n';
}

void Account::MessageAnswered(const AnsweredMessage& message) {
  Line() << "message" << (message.icon == forms::MessageIcon::Exclamation ? " (!)" : "");
  if (!message.title.empty()) out_ << " \"" << message.title << '"';
  out_ << '\n';
  ForEachTextLine(message.text, [&](std::string_view line) { Line() << "  | " << line << '\n'; });
  Line() << "  answer: " << NameOf(message.answer) << '\n';
}

void Account::MemberRead(std::string_view name, const MemberValue& value) {
  Line() << name << " is ";
  if (const auto* const flag = std::get_if<bool>(&value)) {
    out_ << (*flag ? "True" : "False");
  } else {
    std::visit([&](const auto& held) { out_ << held; }, value);
  }
  out_ << '\n';
}

void Account::FormShown(const forms::ISurface& form, std::string_view statusText) {
  Line() << "panels:";
  for (const std::string_view panel : VisiblePanels(form)) out_ << ' ' << panel;
  out_ << '\n';
  Line() << "buttons:";
  for (forms::ControlId id = 0; id < form.ControlCount(); ++id) {
    const forms::ControlState state = form.State(id);
    if (state.kind != forms::ControlKind::CommandButton || !state.enabled || !form.Reachable(id)) continue;
    out_ << " [" << Face(state) << "] (" << state.index << ")";
  }
  out_ << '\n';
  for (forms::ControlId id = 0; id < form.ControlCount(); ++id) {
    const forms::ControlState state = form.State(id);
    if (state.kind == forms::ControlKind::CheckBox && state.checked) Line() << state.name << ": checked\n";
    if (state.kind == forms::ControlKind::ComboBox && state.listIndex >= 0) {
      Line() << state.name << ": " << state.text << '\n';
    }
    if (state.kind == forms::ControlKind::TextBox) Line() << state.name << ": " << state.text << '\n';
  }
  Line() << "status panel: " << statusText << '\n';
}

void Account::InstrumentShown(const InstrumentView& view, const std::vector<MemoryDifference>& differences) {
  for (const std::string& line : InWords(view)) Line() << line << '\n';
  for (const std::string& line : InWords(differences)) Line() << line << '\n';
}

void Account::ScoreShown(const Score& score) {
  for (const std::string& line : InWords(score)) Line() << line << '\n';
}

void Account::Ended(const RunEnd& end) {
  TellCounted();
  if (!unfinishedLine_.empty()) Line() << "the run ended here\n";
  out_ << "\nCalibration memory of the instrument:\n";
  for (const auto& [name, value] : end.calibrationMemory) out_ << "  " << name << " = " << value << '\n';
  if (end.calibrationMemory.empty()) out_ << "  nothing\n";

  if (end.score) {
    out_ << '\n';
    for (const std::string& line : InWords(end.differences)) out_ << line << '\n';
    out_ << "\nScore:\n";
    for (const std::string& line : InWords(*end.score)) out_ << "  " << line << '\n';
  }

  out_ << "\nChanges in Marivane.ini:\n";
  const std::vector<std::string> difference = LineDifference(end.before, end.after);
  for (const std::string& line : difference) out_ << line << '\n';
  if (difference.empty()) out_ << "  none\n";
  out_.flush();
}

}  // namespace Helmsway
