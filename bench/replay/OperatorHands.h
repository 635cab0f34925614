#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "bench/instrument/Machine.h"
#include "forms/Surface.h"

namespace Helmsway {

/// What the operator does at the instrument while working with the form. Where a list that is asked has no selection,
/// nothing is done.
class OperatorHands {
 public:
  /// Puts the rack that the lists tell of, with its tips, on the position that they tell of, unless they tell what they
  /// told when a rack was last put.
  void LoadPickedRack(const forms::ISurface& form, IMachine& machine);

  /// Loads what the wizard asks to be loaded: the head into its nest, and the rack with fresh tips.
  void LoadRequirements(const forms::ISurface& form, IMachine& machine);

  /// Empties the nest that is picked, as the wizard asks before the teach tool goes there.
  static void EmptyPickedNest(const forms::ISurface& form, IMachine& machine);

  /// Takes away what stands where the wizard lets a head go on the stage.
  static void ClearEjectPosition(IMachine& machine);

 private:
  std::array<std::int32_t, 3> rack_{};  // item numbers of position, rack and tip when it was last put; 0 at the start
};

}  // namespace Helmsway
