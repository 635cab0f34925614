#include "bench/replay/ActionGrammar.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <string_view>

#include "bench/instrument/CommandLine.h"
#include "bench/replay/MessageWords.h"

namespace Helmsway {
namespace {

using Words = std::span<const ScriptWord>;

enum class Needs : std::uint8_t { Form, Simulated, Nothing };
enum class In : std::uint8_t { Script, ScriptAndDuring };

/// How one action is written: its fixed words, then, in capitals, what stands for a word that differs, in brackets
/// where it may be left out. ACTION stands for all words that follow.
struct ActionForm {
  std::string_view pattern;
  ActionKind kind;
  Needs needs;
  In place;
};

using enum ActionKind;
constexpr auto Forms = std::to_array<ActionForm>({
    {"host create", CreateAddIn, Needs::Nothing, In::Script},
    {"host ObjectParent given", GiveConnection, Needs::Form, In::Script},
    {"host ObjectParent none", TakeConnection, Needs::Form, In::Script},
    {"host FormParent given", GiveWindow, Needs::Form, In::Script},
    {"host FormParent none", TakeWindow, Needs::Form, In::Script},
    {"host SaveChanges", SaveChanges, Needs::Form, In::Script},
    {"host LoadDefaults", LoadDefaults, Needs::Form, In::Script},
    {"host read MEMBER", ReadMember, Needs::Form, In::Script},
    {"host stop", HostStop, Needs::Form, In::ScriptAndDuring},
    {"host release", ReleaseAddIn, Needs::Form, In::Script},
    {"click frame", ClickBackground, Needs::Form, In::ScriptAndDuring},
    {"click BUTTON", ClickButton, Needs::Form, In::ScriptAndDuring},
    {"check BOX", Check, Needs::Form, In::ScriptAndDuring},
    {"uncheck BOX", Uncheck, Needs::Form, In::ScriptAndDuring},
    {"pick LIST INDEX", Pick, Needs::Form, In::ScriptAndDuring},
    {"answer ANSWER", QueueAnswer, Needs::Nothing, In::Script},
    {"instrument refuse PREFIX [COUNT]", Refuse, Needs::Nothing, In::ScriptAndDuring},
    {"instrument fail PREFIX [COUNT]", Fail, Needs::Nothing, In::ScriptAndDuring},
    {"instrument reply PREFIX TEXT", Reply, Needs::Nothing, In::ScriptAndDuring},
    {"instrument seed SEED [lost-steps]", Seed, Needs::Simulated, In::ScriptAndDuring},
    {"instrument memory NAME VALUE", Remember, Needs::Simulated, In::Script},
    {"instrument fault refuse LINE", PlanFault, Needs::Simulated, In::ScriptAndDuring},
    {"instrument fault fail LINE", PlanFault, Needs::Simulated, In::ScriptAndDuring},
    {"instrument fault late LINE SECONDS", PlanFault, Needs::Simulated, In::ScriptAndDuring},
    {"instrument fault silent LINE [SECONDS]", PlanFault, Needs::Simulated, In::ScriptAndDuring},
    {"instrument fault link LINE SECONDS", PlanFault, Needs::Simulated, In::ScriptAndDuring},
    {"instrument fault garble LINE", PlanFault, Needs::Simulated, In::ScriptAndDuring},
    {"instrument fault stall LINE", PlanFault, Needs::Simulated, In::ScriptAndDuring},
    {"instrument fault power-cycle LINE", PlanFault, Needs::Simulated, In::ScriptAndDuring},
    {"instrument show", ShowInstrument, Needs::Simulated, In::ScriptAndDuring},
    {"instrument score", ShowScore, Needs::Simulated, In::ScriptAndDuring},
    {"instrument power-cycle", PowerCycle, Needs::Simulated, In::ScriptAndDuring},
    {"instrument remote on", RemoteOn, Needs::Simulated, In::ScriptAndDuring},
    {"instrument remote off", RemoteOff, Needs::Simulated, In::ScriptAndDuring},
    {"during LINE ACTION", During, Needs::Nothing, In::Script},
    {"link down", LinkDown, Needs::Nothing, In::ScriptAndDuring},
    {"link up", LinkUp, Needs::Nothing, In::ScriptAndDuring},
    {"file set SECTION KEY VALUE", FileSet, Needs::Nothing, In::ScriptAndDuring},
    {"file remove SECTION KEY", FileRemove, Needs::Nothing, In::ScriptAndDuring},
    {"file reads fail", FileReadsFail, Needs::Nothing, In::ScriptAndDuring},
    {"file reads work", FileReadsWork, Needs::Nothing, In::ScriptAndDuring},
    {"file writes fail", FileWritesFail, Needs::Nothing, In::ScriptAndDuring},
    {"file writes work", FileWritesWork, Needs::Nothing, In::ScriptAndDuring},
    {"show", Show, Needs::Form, In::ScriptAndDuring},
});

constexpr auto Members =
    std::to_array<std::string_view>({"Caption", "Frame", "HelpContextID", "ShowStatusBar", "ShowButtons"});
constexpr auto Boxes = std::to_array<std::string_view>({"chkStageEmpty", "chkToolInstalled", "chkToolUninstalled"});
constexpr auto Lists = std::to_array<std::string_view>(
    {"cboCollectStep", "cboNestType", "cboHeadType", "cboPosition", "cboTipRack", "cboTipType"});
constexpr std::int32_t LastButton = 16;
constexpr std::int32_t MissingButton = 15;
/// Some thirty years, of which no number that a script can hold makes an infinite time.
constexpr double MostSeconds = 1e9;

/// A whole number; one outside the range of 32 bits becomes the end of the range on its side.
std::int32_t ParseNumber(const ScriptWord& word) {
  std::int32_t number = 0;
  const char* const end = word.text.data() + word.text.size();
  const auto [stop, error] = std::from_chars(word.text.data(), end, number);
  if (stop != end || error == std::errc::invalid_argument) throw ScriptMistake("not a whole number: " + word.raw);
  if (error == std::errc::result_out_of_range) {
    using Limits = std::numeric_limits<std::int32_t>;
    return word.text.front() == '-' ? Limits::min() : Limits::max();
  }
  return number;
}

/// Fails unless the word is one of `names`.
void DemandName(const ScriptWord& word, std::span<const std::string_view> names, const char* what) {
  if (std::find(names.begin(), names.end(), word.text) != names.end()) return;
  std::string known;
  for (const std::string_view name : names) known.append(known.empty() ? "" : ", ").append(name);
  throw ScriptMistake(std::string("there is no ") + what + " " + word.raw + "; there are " + known);
}

void TakeMember(Action& action, const ScriptWord& word) {
  DemandName(word, Members, "member");
  action.arguments.push_back(word.text);
}

void TakeButton(Action& action, const ScriptWord& word) {
  action.number = ParseNumber(word);
  if (action.number < 0 || action.number > LastButton || action.number == MissingButton) {
    throw ScriptMistake("there is no button " + word.raw + "; there are 0 to 14 and 16");
  }
}

void TakeBox(Action& action, const ScriptWord& word) {
  DemandName(word, Boxes, "check box");
  action.arguments.push_back(word.text);
}

void TakeList(Action& action, const ScriptWord& word) {
  DemandName(word, Lists, "list");
  action.arguments.push_back(word.text);
}

void TakeIndex(Action& action, const ScriptWord& word) { action.number = ParseNumber(word); }

void TakeCount(Action& action, const ScriptWord& word) {
  action.number = ParseNumber(word);
  if (action.number < 1) throw ScriptMistake("not a number of lines: " + word.raw);
}

void TakeAnswer(Action& action, const ScriptWord& word) {
  if (!AnswerNamed(word.text)) throw ScriptMistake("an answer is ok, cancel, yes or no, not " + word.raw);
  action.arguments.push_back(word.text);
}

void TakeSeed(Action& action, const ScriptWord& word) {
  action.number = ParseNumber(word);
  // A number out of range has become the end of the range, and would be the same seed as others.
  if (action.number < 0 || action.number == std::numeric_limits<std::int32_t>::max()) {
    throw ScriptMistake("not a seed: " + word.raw + "; seeds are whole numbers from 0 to 2147483646");
  }
}

void TakeLostSteps(Action& action, const ScriptWord& word) {
  if (word.text != "lost-steps") throw ScriptMistake("behind a seed stands lost-steps or nothing, not " + word.raw);
  action.arguments.push_back(word.text);
}

void TakeLine(Action& action, const ScriptWord& word) {
  action.arguments.push_back(word.text);
  if (!word.text.starts_with('#')) return;
  action.number = ParseNumber({word.text.substr(1), word.raw});
  if (action.number < 1) throw ScriptMistake("not the number of a line: " + word.raw + "; the first is #1");
}

void TakeSeconds(Action& action, const ScriptWord& word) {
  const char* const end = word.text.data() + word.text.size();
  const auto [stop, error] = std::from_chars(word.text.data(), end, action.seconds, std::chars_format::fixed);
  if (stop == end && error == std::errc() && action.seconds > 0 && action.seconds <= MostSeconds) return;
  throw ScriptMistake("not a number of seconds: " + word.raw + "; it is more than 0 and at most 1000000000");
}

void TakeText(Action& action, const ScriptWord& word) { action.arguments.push_back(word.text); }

struct Variable {
  std::string_view name;
  void (*take)(Action& action, const ScriptWord& word);
};

constexpr auto Variables = std::to_array<Variable>({
    {"MEMBER", TakeMember},
    {"BUTTON", TakeButton},
    {"BOX", TakeBox},
    {"LIST", TakeList},
    {"INDEX", TakeIndex},
    {"[COUNT]", TakeCount},
    {"ANSWER", TakeAnswer},
    {"SEED", TakeSeed},
    {"[lost-steps]", TakeLostSteps},
    {"LINE", TakeLine},
    {"SECONDS", TakeSeconds},
    {"[SECONDS]", TakeSeconds},
    {"PREFIX", TakeText},
    {"TEXT", TakeText},
    {"NAME", TakeText},
    {"SECTION", TakeText},
    {"KEY", TakeText},
    {"VALUE", TakeText},
});
constexpr std::string_view AllThatFollows = "ACTION";

std::vector<std::string_view> PatternWords(const ActionForm& form) {
  std::vector<std::string_view> words;
  for (std::string_view rest = form.pattern; !rest.empty();) {
    words.push_back(rest.substr(0, rest.find(' ')));
    rest.remove_prefix(std::min(rest.size(), words.back().size() + 1));
  }
  return words;
}

bool IsVariable(std::string_view patternWord) {
  return patternWord == AllThatFollows ||
         std::any_of(Variables.begin(), Variables.end(), [&](const Variable& row) { return row.name == patternWord; });
}

/// All fixed words of the form stand at the front of `words`.
bool FixedWordsMatch(const ActionForm& form, Words words) {
  std::size_t position = 0;
  for (const std::string_view expected : PatternWords(form)) {
    if (IsVariable(expected)) break;
    if (position == words.size() || words[position].text != expected) return false;
    ++position;
  }
  return true;
}

[[noreturn]] void RefuseUnknown(Words words) {
  std::string known;
  for (const ActionForm& form : Forms) {
    if (PatternWords(form).front() != words.front().text) continue;
    known.append(known.empty() ? "; known are: " : ", ").append(form.pattern);
  }
  throw ScriptMistake("unknown action: " + JoinRaw(words) + known);
}

[[noreturn]] void RefuseCount(const ActionForm& form) {
  throw ScriptMistake("wrong number of words; the action is written: " + std::string(form.pattern));
}

const ActionForm& FormOf(Words words) {
  const auto* const form =
      std::find_if(Forms.begin(), Forms.end(), [&](const auto& row) { return FixedWordsMatch(row, words); });
  if (form == Forms.end()) RefuseUnknown(words);
  return *form;
}

Action ParseWaiting(Words words) {
  const ActionForm& form = FormOf(words);
  if (form.place == In::Script) {
    throw ScriptMistake("this action can't take place during a line: " + JoinRaw(words));
  }
  return ParseAction(words);
}

}  // namespace

bool PossibleDuringLine(ActionKind kind) {
  return std::any_of(Forms.begin(), Forms.end(),
                     [&](const ActionForm& form) { return form.kind == kind && form.place == In::ScriptAndDuring; });
}

Action ParseAction(Words words) {
  const ActionForm& form = FormOf(words);
  Action action;
  action.kind = form.kind;
  action.text = JoinRaw(words);
  action.needsForm = form.needs == Needs::Form;
  action.needsSimulated = form.needs == Needs::Simulated;
  if (form.kind == Refuse || form.kind == Fail) action.number = 1;
  if (form.kind == PlanFault) action.arguments.push_back(words[2].text);

  std::size_t position = 0;
  for (const std::string_view expected : PatternWords(form)) {
    if (position == words.size()) {
      if (expected.front() == '[') break;
      RefuseCount(form);
    }
    if (expected == AllThatFollows) {
      action.waiting.push_back(ParseWaiting(words.subspan(position)));
      action.needsSimulated = action.waiting.front().needsSimulated;
      return action;
    }
    for (const Variable& variable : Variables) {
      if (variable.name == expected) variable.take(action, words[position]);
    }
    ++position;
  }
  if (position != words.size()) RefuseCount(form);
  if (form.kind == Remember && !IsCalibrationValue(action.arguments[0], action.arguments[1])) {
    throw ScriptMistake("the instrument keeps no such calibration value: " + JoinRaw(words.subspan(2)));
  }
  return action;
}

}  // namespace Helmsway
