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

/// The wizard's flow as a table: which button leads where, and what happens on the way.
struct WizardFlow {
  /// Which group of panels is visible.
  enum class State : std::uint8_t { Initial, Warning, EjectPrompt, Ejecting, EjectDone, Main };

  /// What must hold besides the press of the button.
  enum class Guard : std::uint8_t { None, ToolInstalled, ToolUninstalled, StageEmpty };

  /// The event of a row that follows by itself when the row that leads to its state has been performed: no index that a
  /// button could have.
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
    std::array<Action, 9> actions;  ///< in order; those behind the last are `None`
    State to;
  };

  static std::span<const Transition> Transitions();

  /// Performs what the press of that button brings about; nothing when no row fits.
  static void Press(frmAddIn& form, Button button);

 private:
  static bool Holds(frmAddIn& form, Guard guard);
  static void Perform(frmAddIn& form, const Transition& transition);
  static void Perform(frmAddIn& form, const Action& action);
};

}  // namespace OrvelCalibrateS
