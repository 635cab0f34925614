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

void AddError(std::vector<ScriptError>& errors, std::size_t& count, std::size_t line, const std::string& what) {
  ++count;
  if (errors.size() < MostErrors) errors.push_back({line, what});
}

void ParseLine(std::string_view line, std::size_t number, Script& script) {
  const std::size_t start = line.find_first_not_of(" \t");
  if (start == std::string_view::npos || line[start] == '#') return;
  try {
    script.actions.push_back(ParseAction(SplitWords(line)));
    script.actions.back().line = number;
  } catch (const ScriptMistake& mistake) {
    AddError(script.errors, script.errorCount, number, mistake.what());
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
  std::vector<ScriptError> errors;
  for (const Action& action : script.actions) {
    if (!action.needsSimulated) continue;
    AddError(errors, script.errorCount, action.line, "this needs the simulated instrument: " + action.text);
  }
  // The first of both kinds together are among the first of each.
  script.errors.insert(script.errors.end(), errors.begin(), errors.end());
  std::stable_sort(script.errors.begin(), script.errors.end(),
                   [](const ScriptError& left, const ScriptError& right) { return left.line < right.line; });
  script.errors.resize(std::min(script.errors.size(), MostErrors));
}

}  // namespace Helmsway
