#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

#include "addin/wizard/Button.h"
#include "addin/wizard/EnableSets.h"
#include "addin/wizard/frmAddIn.h"

namespace OrvelCalibrateS {

/// The wizard's flow as a table: the state that each button leads to, and the actions on the way.
struct WizardFlow {
  /// The visible group of panels.
  enum class State : std::uint8_t { Initial, Warning, EjectPrompt, Ejecting, EjectDone, Main };

  /// The condition besides the press of the button.
  enum class Guard : std::uint8_t { None, ToolInstalled, ToolUninstalled, StageEmpty };

  /// Pseudo event: the row runs right after a row that enters its state. Not a valid button index.
  static constexpr Button Returned{std::numeric_limits<std::int16_t>::min()};

  /// One step of a transition, and a step in the sense of skip mode.
  struct Action {
    enum class Kind : std::uint8_t { None, Show, Hide, Enable, Call };

    Kind kind = Kind::None;
    std::string_view panel = {};
    const ButtonEnables* enables = nullptr;
    void (frmAddIn::*operation)() = nullptr;
  };

  struct Transition {
    State from;
    Button event;  ///< the button, or `Returned`
    Guard guard;
    std::array<Action, 9> actions;  ///< in order; unused ones at the end are `None`
    State to;
  };

  static std::span<const Transition> Transitions();

  /// Performs the transition for a press of that button; does nothing when no row fits.
  static void Press(frmAddIn& form, Button button);

 private:
  static bool Holds(frmAddIn& form, Guard guard);
  static void Perform(frmAddIn& form, const Transition& transition);
  static void Perform(frmAddIn& form, const Action& action);
};

}  // namespace OrvelCalibrateS
