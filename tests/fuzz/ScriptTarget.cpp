// The script parser. Input: a script.
#include <algorithm>
#include <string>
#include <vector>

#include "bench/replay/Script.h"
#include "bench/replay/ScriptWords.h"
#include "tests/fuzz/Demand.h"
#include "tests/fuzz/ProcessorTimeLimit.h"

namespace Helmsway::Fuzzing {
namespace {

/// In all but the line that they stand in.
bool SayTheSame(const Action& left, const Action& right) {
  return left.kind == right.kind && left.text == right.text && left.arguments == right.arguments &&
         left.number == right.number && left.seconds == right.seconds && left.needsForm == right.needsForm &&
         left.needsSimulated == right.needsSimulated &&
         std::equal(left.waiting.begin(), left.waiting.end(), right.waiting.begin(), right.waiting.end(), SayTheSame);
}

void CheckErrors(const Script& script, std::size_t firstLine, std::size_t lineCount) {
  std::size_t last = firstLine;
  for (const ScriptError& error : script.errors) {
    Demand(error.line >= last && error.line <= lineCount, "an error is in a line of the script, in their order");
    Demand(!error.what.empty(), "an error says what is wrong");
    last = error.line;
  }
}

/// The actions' texts, as a script, are the same actions.
void CheckTexts(const std::vector<Action>& actions) {
  std::string text;
  for (const Action& action : actions)
    text += action.text + "\r\n";  // a CR that ends a text isn't part of the line end
  const Script again = ParseScript(text);
  Demand(again.errors.empty(), "an action's text is an action");
  Demand(std::equal(again.actions.begin(), again.actions.end(), actions.begin(), actions.end(), SayTheSame),
         "an action's text is the same action");
}

void CheckArguments(const Action& action) {
  for (const std::string& argument : action.arguments) {
    const auto words = SplitWords(WrittenWord(argument));
    Demand(words.size() == 1 && words[0].text == argument, "a word that is written says its text");
  }
  for (const Action& waiting : action.waiting) CheckArguments(waiting);
}

}  // namespace
}  // namespace Helmsway::Fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Helmsway;
  using namespace Helmsway::Fuzzing;
  const ProcessorTimeLimit limit;
  const std::string text(reinterpret_cast<const char*>(data), size);
  const auto lineCount = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
  Script script = ParseScript(text);
  CheckErrors(script, 1, lineCount);
  std::size_t last = 0;
  for (const Action& action : script.actions) {
    Demand(action.line >= last && action.line <= lineCount, "an action is in a line of the script, in their order");
    last = action.line;
    CheckArguments(action);
  }
  CheckTexts(script.actions);
  ForbidSimulatedOnly(script);
  CheckErrors(script, 1, lineCount);
  return 0;
}
