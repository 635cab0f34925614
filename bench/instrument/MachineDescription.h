#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace Helmsway {

enum class Axis { X, Y, Z, S, SdX, SdY };

/// What a Marivane knows of itself when it is switched on.
struct MachineDescription {
  /// Positions in motor steps; both limits can be reached.
  struct Limits {
    std::int32_t low = 0;
    std::int32_t high = 0;
  };

  bool hasSlider = false;       ///< models with an X axis have one
  std::map<Axis, Limits> axes;  ///< an axis that the model lacks has no entry
  std::string firmware;         ///< the dotted version text
};

}  // namespace Helmsway
