#include "bench/replay/SessionRecord.h"

#include <sstream>
#include <utility>

#include "bench/replay/MessageWords.h"

namespace Helmsway {
namespace {

std::string TraceLines(const std::function<void(Trace&)>& tell) {
  std::ostringstream lines;
  Trace trace(lines);
  tell(trace);
  return std::move(lines).str();
}

void WriteLine(std::ostream& out, const std::string& text) {
  // A script takes the last CR of a line for a part of the line end.
  out << text << (text.ends_with('\r') ? "\r\n" : "\n");
}

}  // namespace

void SessionRecord::WriteScript(std::ostream& out, const std::string& comment) const {
  std::istringstream lines(comment);
  for (std::string line; std::getline(lines, line);) out << "# " << line << '\n';
  for (const Step& step : steps_) {
    for (const std::string& preparation : step.preparations) WriteLine(out, preparation);
    WriteLine(out, step.text);
  }
}

void SessionRecord::WriteTrace(std::ostream& out) const {
  for (const Step& step : steps_) {
    for (const std::string& preparation : step.preparations) {
      Action action;
      action.text = preparation;
      out << TraceLines([&](Trace& trace) { trace.Performing(action, nullptr); });
    }
    out << step.events;
  }
}

void SessionRecord::Keep(const std::function<void(Trace&)>& tell) {
  if (steps_.empty()) steps_.emplace_back();
  steps_.back().events += TraceLines(tell);
}

void SessionRecord::Performing(const Action& action, const forms::ISurface* form) {
  if (lineUnderWay_) {
    steps_.back().preparations.push_back("during #" + std::to_string(linesSent_) + " " + action.text);
  } else {
    steps_.push_back({{}, action.text, {}});
  }
  Keep([&](Trace& trace) { trace.Performing(action, form); });
}

void SessionRecord::MessageAnswered(const AnsweredMessage& message) {
  Keep([&](Trace& trace) { trace.MessageAnswered(message); });
  if (message.buttons == forms::MessageButtons::Ok) return;
  steps_.back().preparations.push_back("answer " + std::string(NameOf(message.answer)));
}

void SessionRecord::LineBegins(std::string_view line) {
  ++linesSent_;
  lineUnderWay_ = true;
  Keep([&](Trace& trace) { trace.LineBegins(line); });
}

void SessionRecord::LineEnded(std::string_view line, const Answer& answer, AnswerBy by) {
  lineUnderWay_ = false;
  Keep([&](Trace& trace) { trace.LineEnded(line, answer, by); });
}

void SessionRecord::Ignored(const Action& action) {
  Keep([&](Trace& trace) { trace.Ignored(action); });
}

void SessionRecord::StatusTextWritten(std::string_view text) {
  Keep([&](Trace& trace) { trace.StatusTextWritten(text); });
}

void SessionRecord::StopRequestedWritten(bool value) {
  Keep([&](Trace& trace) { trace.StopRequestedWritten(value); });
}

void SessionRecord::AddInActiveWritten(bool value) {
  Keep([&](Trace& trace) { trace.AddInActiveWritten(value); });
}

void SessionRecord::ChangedWritten(bool value) {
  Keep([&](Trace& trace) { trace.ChangedWritten(value); });
}

void SessionRecord::FocusSet() {
  Keep([](Trace& trace) { trace.FocusSet(); });
}

void SessionRecord::IniWritten(std::string_view section, std::string_view key, std::string_view value) {
  Keep([&](Trace& trace) { trace.IniWritten(section, key, value); });
}

void SessionRecord::FaultStruck(const Fault& fault) {
  Keep([&](Trace& trace) { trace.FaultStruck(fault); });
}

void SessionRecord::MemberRead(std::string_view name, const MemberValue& value) {
  Keep([&](Trace& trace) { trace.MemberRead(name, value); });
}

void SessionRecord::FormShown(const forms::ISurface& form, std::string_view statusText) {
  Keep([&](Trace& trace) { trace.FormShown(form, statusText); });
}

void SessionRecord::InstrumentShown(const InstrumentView& view, const std::vector<MemoryDifference>& differences) {
  Keep([&](Trace& trace) { trace.InstrumentShown(view, differences); });
}

void SessionRecord::ScoreShown(const Score& score) {
  Keep([&](Trace& trace) { trace.ScoreShown(score); });
}

void SessionRecord::Ended(const RunEnd& /*end*/) {}

}  // namespace Helmsway
