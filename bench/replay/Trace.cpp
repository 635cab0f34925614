#include "bench/replay/Trace.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "bench/replay/FormSnapshot.h"
#include "bench/replay/InstrumentSnapshot.h"
#include "bench/replay/JsonText.h"
#include "bench/replay/MessageWords.h"

namespace Helmsway {
namespace {

using Json = nlohmann::ordered_json;

void Write(std::ostream& out, std::string_view event, const Json& members = Json::object()) {
  Json line = {{"event", event}};
  line.update(members);
  out << JsonText(line) << '\n';
}

std::string_view NameOf(Answer::Result result) {
  switch (result) {
    case Answer::Result::Ok:
      return "ok";
    case Answer::Result::Refused:
      return "refused";
    case Answer::Result::Failed:
      return "failed";
  }
  return "";
}

}  // namespace

void Trace::Performing(const Action& action, const forms::ISurface* /*form*/) {
  Write(out_, "action", {{"text", action.text}});
}

void Trace::Ignored(const Action& action) { Write(out_, "ignored", {{"action", action.text}}); }

void Trace::StatusTextWritten(std::string_view text) { Write(out_, "status", {{"text", text}}); }

void Trace::StopRequestedWritten(bool value) { Write(out_, "stop", {{"value", value}}); }

void Trace::AddInActiveWritten(bool value) { Write(out_, "active", {{"value", value}}); }

void Trace::ChangedWritten(bool value) { Write(out_, "changed", {{"value", value}}); }

void Trace::FocusSet() { Write(out_, "focus"); }

void Trace::IniWritten(std::string_view section, std::string_view key, std::string_view value) {
  Write(out_, "write", {{"section", section}, {"key", key}, {"value", value}});
}

void Trace::LineBegins(std::string_view line) { Write(out_, "send", {{"line", line}}); }

void Trace::LineEnded(std::string_view line, const Answer& answer, AnswerBy by) {
  const std::string_view reply = answer.result == Answer::Result::Ok ? std::string_view(answer.reply) : "";
  Json members = {{"line", line}, {"result", NameOf(answer.result)}, {"reply", reply}};
  if (by == AnswerBy::Instrument && !answer.reason.empty()) members["reason"] = answer.reason;
  Write(out_, "sent", members);
}

// What the fault does shows in what follows.
void Trace::FaultStruck(const Fault& /*fault*/) {}

void Trace::MessageAnswered(const AnsweredMessage& message) {
  Write(out_, "message",
        {{"title", message.title},
         {"text", message.text},
         {"buttons", Helmsway::NameOf(message.buttons)},
         {"icon", Helmsway::NameOf(message.icon)},
         {"answer", Helmsway::NameOf(message.answer)}});
}

void Trace::MemberRead(std::string_view name, const MemberValue& value) {
  Json members = {{"name", name}};
  std::visit([&](const auto& held) { members["value"] = held; }, value);
  Write(out_, "read", members);
}

void Trace::FormShown(const forms::ISurface& form, std::string_view statusText) {
  Write(out_, "form", FormSnapshot(form, statusText));
}

void Trace::InstrumentShown(const InstrumentView& view, const std::vector<MemoryDifference>& differences) {
  Write(out_, "instrument", InstrumentSnapshot(view, differences));
}

void Trace::ScoreShown(const Score& score) { Write(out_, "score", ScoreSnapshot(score)); }

void Trace::Ended(const RunEnd& /*end*/) { out_.flush(); }

}  // namespace Helmsway
