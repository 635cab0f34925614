#pragma once

#include <span>

#include "bench/replay/Action.h"
#include "bench/replay/ScriptWords.h"

namespace Helmsway {

/// The action that these words say; there is at least one word. Its line is left at 0. Throws `ScriptMistake` when they
/// say none.
Action ParseAction(std::span<const ScriptWord> words);

/// Whether an action of that kind can take place while a line is under way.
bool PossibleDuringLine(ActionKind kind);

}  // namespace Helmsway
