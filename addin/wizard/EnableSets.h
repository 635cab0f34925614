#pragma once

#include <array>

#include "addin/wizard/Button.h"

namespace OrvelCalibrateS {

/// The buttons that `SetButtonEnables` drives, in the order of its arguments.
inline constexpr std::array DrivenButtons{Button::Start,       Button::Save,       Button::HomeAll,
                                          Button::CollectHead, Button::CollectTip, Button::EjectTip,
                                          Button::EjectHead,   Button::Up,         Button::Down};

using ButtonEnables = std::array<bool, DrivenButtons.size()>;

/// What the operator can do next on the main page.
namespace EnableSets {

inline constexpr bool on = true;
inline constexpr bool no = false;

// clang-format off
//                                            Start Save  Home  ClHd  ClTp  EjTp  EjHd  Up    Down
inline constexpr ButtonEnables AllOff        {no,   no,   no,   no,   no,   no,   no,   no,   no};
inline constexpr ButtonEnables AtCalibration {on,   on,   on,   no,   no,   no,   no,   on,   on};
inline constexpr ButtonEnables AfterHome     {on,   on,   on,   no,   no,   no,   no,   no,   no};
inline constexpr ButtonEnables HeadReady     {no,   on,   on,   no,   on,   no,   on,   no,   no};
inline constexpr ButtonEnables TipOn         {no,   on,   on,   no,   no,   on,   no,   no,   no};
inline constexpr ButtonEnables NoHead        {no,   on,   on,   on,   no,   no,   no,   no,   no};
// clang-format on

}  // namespace EnableSets
}  // namespace OrvelCalibrateS
