#pragma once

#include <cstdint>

namespace OrvelCalibrateS {

/// The members of the control array `cmdButton`, by their indices.
enum class Button : std::int16_t {
  Start = 0,
  StopEjecting = 1,  ///< the Stop of the panel that covers `Stop`
  EjectTip = 2,
  CollectTip = 3,
  ContinueToEject = 4,
  HomeAll = 5,
  Save = 6,
  Up = 7,
  Down = 8,
  ContinueWithTool = 9,
  ContinueFromStart = 10,
  ContinueAfterEject = 11,
  EjectHead = 12,
  CollectHead = 13,
  EjectTeachTool = 14,
  Stop = 16,
};

/// The index of the button in its control array.
constexpr std::int16_t IndexOf(Button button) { return static_cast<std::int16_t>(button); }

}  // namespace OrvelCalibrateS
