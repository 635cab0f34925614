#include "bench/replay/Script.h"

#include <algorithm>
#include <utility>

#include "bench/host/IniLines.h"
#include "bench/replay/ActionGrammar.h"

namespace Helmsway {
namespace {

/// What a script that doesn't say so itself begins with.
std::vector<Action> Beginning() {
  std::vector<Action> actions;
  for (const char* line : {"host create", "host ObjectParent given", "host FormParent given"}) {
    actions.push_back(ParseAction(SplitWords(line)));
  }
  return actions;
}

void ParseLine(std::string_view line, std::size_t number, Script& script) {
  const std::size_t start = line.find_first_not_of(" \t");
  if (start == std::string_view::npos || line[start] == '#') return;
  try {
    script.actions.push_back(ParseAction(SplitWords(line)));
    script.actions.back().line = number;
  } catch (const ScriptMistake& mistake) {
    script.errors.push_back({number, mistake.what()});
  }
}

}  // namespace

Script ParseScript(std::string_view text) {
  Script script;
  if (text.starts_with(ByteOrderMark)) text.remove_prefix(ByteOrderMark.size());
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    ParseLine(line, number, script);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  if (script.actions.empty() || script.actions.front().kind != ActionKind::CreateAddIn) {
    std::vector<Action> actions = Beginning();
    actions.insert(actions.end(), script.actions.begin(), script.actions.end());
    script.actions = std::move(actions);
  }
  return script;
}

void ForbidSimulatedOnly(Script& script) {
  for (const Action& action : script.actions) {
    if (!action.needsSimulated) continue;
    script.errors.push_back({action.line, "this needs the simulated instrument: " + action.text});
  }
  std::stable_sort(script.errors.begin(), script.errors.end(),
                   [](const ScriptError& left, const ScriptError& right) { return left.line < right.line; });
}

}  // namespace Helmsway
