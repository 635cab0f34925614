#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/instrument/TrainingInstrument.h"

namespace Helmsway {

/// What can be seen of the instrument at one moment, moves that are under way included.
struct InstrumentPicture {
  struct AxisPicture {
    std::string name;    ///< as commands spell it: "SD_X"
    double at = 0;       ///< motor steps; between two positions while it moves
    bool homed = false;  ///< the instrument knows where the axis is
    bool moving = false;
  };

  std::vector<AxisPicture> axes;
  /// How far the lower edge of the teach tool's upper part stands above the place where it just covers the ring (below:
  /// negative), in mm. Empty when there is nothing to see: no tool on the module, or S isn't homed.
  std::optional<double> edge;
  std::string slider;  ///< "open", "closed", or "none" on a model without
  std::string head;    ///< on the pipette module; empty for none
  std::string tip;     ///< on the head; empty for none
  bool remote = true;
  bool zCollisionDetection = true;
  std::vector<MachineState::Place> places;  ///< named as the description's slots and stage places are
  std::vector<std::string> damage;          ///< in words, oldest first
};

/// The instrument when `share` (0 to 1) of the time of the line under way is over; 0 when none is. On its way the edge
/// follows the motor; where the play leaves it shows at the end.
InstrumentPicture PictureOf(const TrainingInstrument& instrument, double share);

}  // namespace Helmsway
