#include "bench/desktop/BenchReport.h"

#include <utility>

#include "bench/replay/FormSnapshot.h"
#include "bench/replay/InstrumentWords.h"
#include "bench/replay/MessageWords.h"

namespace Helmsway {
namespace {

using Kind = ConsoleEntry::Kind;

constexpr std::string_view SaveLine = "SET_CALIBRATION SAVE";

QString Text(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

QString YesNo(bool value) { return value ? QStringLiteral("True") : QStringLiteral("False"); }

forms::ControlState ButtonOf(const Action& action, const forms::ISurface& form) {
  return form.State(form.Find("cmdButton", static_cast<std::int16_t>(action.number)));
}

bool IsArrow(const Action& action, const forms::ISurface* form) {
  return action.kind == ActionKind::ClickButton && form != nullptr &&
         ButtonOf(action, *form).arrow != forms::Arrow::None;
}

/// What a person presses, in their words; the script's own words otherwise.
QString InWords(const Action& action, const forms::ISurface* form) {
  if (action.kind != ActionKind::ClickButton || form == nullptr) return Text(action.text);
  const forms::ControlState state = ButtonOf(action, *form);
  const QString caption = state.arrow == forms::Arrow::Up     ? QStringLiteral("arrow up")
                          : state.arrow == forms::Arrow::Down ? QStringLiteral("arrow down")
                                                              : Text(state.caption);
  return QStringLiteral("%1 [%2]").arg(Text(action.text), caption);
}

QString ResultWord(const Answer& answer) {
  switch (answer.result) {
    case Answer::Result::Ok:
      return QStringLiteral("ok");
    case Answer::Result::Refused:
      return QStringLiteral("refused");
    case Answer::Result::Failed:
      return QStringLiteral("failed");
  }
  return {};
}

}  // namespace

BenchReport::BenchReport(ConsoleModel& console, std::function<Seconds()> clock)
    : console_(console), clock_(std::move(clock)) {}

void BenchReport::TellRepeated(const QString& text, const QString& why) {
  if (repeatedRow_ >= 0 && repeatedRow_ == console_.rowCount() - 1 && repeated_.text.startsWith(text)) {
    repeated_.text = tr("%1 (%2 times)").arg(text).arg(++repeatedCount_);
    return console_.Update(repeatedRow_, repeated_);
  }
  repeatedCount_ = 1;
  repeated_ = {Kind::Note, clock_(), text, std::nullopt, QStringLiteral("failed"), why};
  repeatedRow_ = console_.Add(repeated_);
}

void BenchReport::Tell(Kind kind, const QString& text, const QString& result, const QString& reply) {
  console_.Add({kind, clock_(), text, std::nullopt, result, reply});
}

void BenchReport::Note(const QString& text) { Tell(Kind::Note, text); }

void BenchReport::Performing(const Action& action, const forms::ISurface* form) {
  record_.Performing(action, form);
  save_.Performing(action);
  troubles_.Performing(action);
  // Of what the instrument remembers from the start, the session tells in one note.
  if (action.kind != ActionKind::Remember) Tell(Kind::Action, InWords(action, form));
  if (IsArrow(action, form)) Q_EMIT Jogged();
}

void BenchReport::Ignored(const Action& action) {
  record_.Ignored(action);
  troubles_.Ignored();
  Tell(Kind::Note, tr("ignored: %1").arg(Text(action.text)));
}

void BenchReport::StatusTextWritten(std::string_view text) {
  record_.StatusTextWritten(text);
  Tell(Kind::Status, Text(text));
  Q_EMIT StatusText(Text(text));
}

void BenchReport::StopRequestedWritten(bool value) {
  record_.StopRequestedWritten(value);
  if (value) Tell(Kind::Flag, QStringLiteral("StopRequested = %1").arg(YesNo(value)));
}

void BenchReport::AddInActiveWritten(bool value) { record_.AddInActiveWritten(value); }

void BenchReport::ChangedWritten(bool value) {
  record_.ChangedWritten(value);
  Tell(Kind::Flag, QStringLiteral("Changed = %1").arg(YesNo(value)));
  Q_EMIT Changed(value);
}

void BenchReport::FocusSet() {
  record_.FocusSet();
  Q_EMIT FocusAsked();
}

void BenchReport::IniWritten(std::string_view section, std::string_view key, std::string_view value) {
  record_.IniWritten(section, key, value);
  save_.IniWritten(section);
  troubles_.IniWritten();
  ++writes_;
  Tell(Kind::Write, QStringLiteral("[%1] %2=%3").arg(Text(section), Text(key), Text(value)));
}

void BenchReport::LineBegins(std::string_view line) {
  record_.LineBegins(line);
  troubles_.LineBegins();
  line_ = {Kind::Line, clock_(), Text(line), std::nullopt, QStringLiteral("under way"), {}};
  lineRow_ = console_.Add(line_);
  Q_EMIT LineBegan(line_.text);
}

void BenchReport::LineEnded(std::string_view line, const Answer& answer, AnswerBy by) {
  record_.LineEnded(line, answer, by);
  save_.LineEnded(line, answer);
  troubles_.LineEnded(line, answer);
  const bool accepted = answer.result == Answer::Result::Ok;
  line_.duration = clock_() - line_.time;
  line_.result = ResultWord(answer);
  line_.reply = Text(accepted ? answer.reply : answer.reason);
  console_.Update(lineRow_, line_);
  const QString why = line_.reply.isEmpty() ? line_.result : line_.reply;
  Q_EMIT LineOver(line_.text, accepted ? QString() : why);
  // Whatever the answer: it may have been lost after the instrument had taken the line.
  if (line == SaveLine) Q_EMIT SaveLineOver(accepted);
}

void BenchReport::FaultStruck(const Fault& fault) {
  record_.FaultStruck(fault);
  troubles_.FaultStruck(fault);
  Tell(Kind::Note, tr("planned fault: %1").arg(Text(Describe(fault))));
}

void BenchReport::MessageAnswered(const AnsweredMessage& message) {
  record_.MessageAnswered(message);
  Tell(Kind::Message, Text(message.text), {}, Text(NameOf(message.answer)));
  if (message.title != SaveQuestion) return;
  if (message.answer == forms::MessageAnswer::Ok) save_.Begin();
  Q_EMIT SaveAnswered(message.answer);
}

void BenchReport::MemberRead(std::string_view name, const MemberValue& value) {
  record_.MemberRead(name, value);
  if (const auto* const text = std::get_if<std::string>(&value); text != nullptr && name == "Caption") {
    Q_EMIT CaptionRead(Text(*text));
  }
  const auto* const flag = std::get_if<bool>(&value);
  if (flag != nullptr && name == "ShowButtons") Q_EMIT ButtonsShown(*flag);
  if (flag != nullptr && name == "ShowStatusBar") Q_EMIT StatusBarShown(*flag);
}

void BenchReport::FormShown(const forms::ISurface& form, std::string_view statusText) {
  record_.FormShown(form, statusText);
}

void BenchReport::InstrumentShown(const InstrumentView& view, const std::vector<MemoryDifference>& differences) {
  record_.InstrumentShown(view, differences);
  for (const std::string& line : InWords(view)) Tell(Kind::Note, Text(line));
}

void BenchReport::ScoreShown(const Score& score) {
  record_.ScoreShown(score);
  QStringList lines;
  for (const std::string& line : InWords(score)) lines += Text(line);
  for (const QString& line : lines) Tell(Kind::Note, line);
  Q_EMIT ScoreTold(lines);
}

void BenchReport::IniWriteFailed(std::string_view section, std::string_view key, std::string_view value,
                                 std::string_view why) {
  save_.IniWriteFailed(section, why);
  troubles_.IniWriteFailed(why);
  Tell(Kind::Write, QStringLiteral("[%1] %2=%3").arg(Text(section), Text(key), Text(value)), QStringLiteral("failed"),
       Text(why));
}

void BenchReport::IniReadFailed(std::string_view /*section*/, std::string_view /*key*/, std::string_view why) {
  save_.IniReadFailed(why);
  troubles_.IniReadFailed(why);
  TellRepeated(tr("a key of the configuration could not be read"), Text(why));
}

void BenchReport::LinkNotReached() {
  save_.LinkNotReached();
  troubles_.LinkNotReached();
  TellRepeated(tr("the link was not reached"), {});
}

void BenchReport::LineSkipped() {
  save_.LineSkipped();
  troubles_.LineSkipped();
  TellRepeated(tr("a line was not sent, since a stop was requested"), {});
}

void BenchReport::Performed(const forms::ISurface* form, std::string_view statusText) {
  record_.Performed(form, statusText);
  save_.Performed();
  troubles_.Performed(form, statusText);
  Q_EMIT TroublesChanged();
}

void BenchReport::Ended(const RunEnd& end) { record_.Ended(end); }

}  // namespace Helmsway
