#pragma once

#include <cstdint>

#include "addin/config/SharedRecords.h"

namespace OrvelCalibrateS {

/// The depth of a nest on the installed device, in mm.
double NestDepth(const SharedRecords& records);

/// Speed of Z over the last stretch to the seat, in the instrument's own unit.
inline constexpr std::int32_t LastStretchSpeed = 500;

/// Z positions of a head over its nest slot, in motor steps. 0 where a step of the arithmetic failed.
struct SeatHeights {
  std::int32_t ZApproach = 0;  ///< 4 mm short of the seat
  std::int32_t ZSeat = 0;
};

/// The heights at which the shared `Head` sits in a slot. `ZBase` is the stage's Z position, `zOffset` the head's
/// addition to it, in Z steps, when it is collected or ejected. In skip mode: each assignment is a step of its own.
SeatHeights SeatInSlot(const SharedRecords& records, std::int32_t ZBase, const NestSlot& slot, double zOffset);

}  // namespace OrvelCalibrateS
