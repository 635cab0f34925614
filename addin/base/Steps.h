#pragma once

#include <utility>

#include "addin/contract/Component.h"

/// The vocabulary of the two failure modes.
///
/// Pass-up mode needs no marking: the steps are written plainly, and the first one that fails leaves the procedure. In
/// skip mode each step is marked with one of the functions below, so that each line shows its mode.
namespace OrvelCalibrateS {

/// Thrown by a step that fails: a host call, a conversion, an index outside its range, a division by zero, an overflow.
/// It carries no text, because no failure is ever shown.
struct StepFailed {};

/// The mode of a procedure that has callers in both modes.
enum class FailureMode { Skip, PassUp };

/// Skip: runs one step; a failure ends that step only. Returns true when the step succeeded.
template <class Step>
bool Skip(Step&& step) {
  try {
    std::forward<Step>(step)();
    return true;
  } catch (const StepFailed&) {
    return false;
  }
}

/// Skip, for "field := value": when the value fails, the field stays as it was.
template <class Field, class Value>
void Put(Field& field, Value&& value) {
  Skip([&] { field = std::forward<Value>(value)(); });
}

/// Skip, for a test: a test that fails counts as passed, so its branch is entered.
template <class Test>
bool Passes(Test&& test) {
  bool passed = true;
  Put(passed, std::forward<Test>(test));
  return passed;
}

/// Runs one step in the given mode.
template <class Step>
void Run(FailureMode mode, Step&& step) {
  if (mode == FailureMode::Skip) {
    Skip(std::forward<Step>(step));
  } else {
    std::forward<Step>(step)();
  }
}

/// A step that fails unless `condition` holds.
inline void Require(bool condition) {
  if (!condition) throw StepFailed{};
}

/// A host call as a step.
inline void Require(HelmswayCmds::Result result) { Require(result == HelmswayCmds::Result::Ok); }

}  // namespace OrvelCalibrateS
