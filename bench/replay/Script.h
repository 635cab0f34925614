#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "bench/replay/Action.h"

namespace Helmsway {

struct ScriptError {
  std::size_t line = 0;  ///< from 1
  std::string what;

  friend bool operator==(const ScriptError&, const ScriptError&) = default;
};

/// A script, read whole.
struct Script {
  /// What is to be performed, in this order. A script that doesn't create the add-in itself has the actions that do so,
  /// with the line 0, in front.
  std::vector<Action> actions;
  /// The first `MostErrors`, in the order of their lines. A script with errors is not to be performed.
  std::vector<ScriptError> errors;
  std::size_t errorCount = 0;  ///< of all errors
};

/// So many errors of a script are kept: any file may be taken for a script, and each of its lines may be an error.
inline constexpr std::size_t MostErrors = 20;

Script ParseScript(std::string_view text);

/// Adds an error for each action that only the simulated instrument makes possible.
void ForbidSimulatedOnly(Script& script);

}  // namespace Helmsway
