#pragma once

#include <cstdint>
#include <optional>

#include "bench/instrument/SeededNumbers.h"
#include "bench/instrument/SyringeDescription.h"

namespace Helmsway {

enum class LostSteps { None, Some };

/// What a training run's chance depends on.
struct TrainingSeed {
  std::uint32_t number = 1;
  LostSteps lostSteps = LostSteps::None;
};

/// How the syringe axis and the teach tool on it really stand, which the instrument doesn't know. Lengths are S steps
/// where nothing else is said.
///
/// All of it comes from the seed. The reference, where the lower edge of the tool's upper part just covers the ring,
/// lies within 2.5 mm of the value on record, at least three small jogs away from it, and within a quarter of a small
/// jog of a position that small jogs from there reach: so what is best by sight is also best by the truth. The play of
/// the spindle is 0.2 to 0.6 of a step: the edge follows a move only when half of it is used up. Each homing misses its
/// place by up to 0.3 of a step. Where steps get lost, one move in ten is 1 to 3 steps short, until S is homed again.
class SyringeTruth {
 public:
  SyringeTruth(SyringeDescription syringe, const TrainingSeed& seed);

  /// The axis has been homed and takes itself to stand at `position`.
  void Homed(std::int32_t position);
  /// The axis takes itself to stand at `position` now. One that hasn't been homed counts as homed there.
  void MovedTo(std::int32_t position);
  /// The axis doesn't know where it stands, and nobody can tell before it is homed.
  void PositionLost();

  double Reference() const { return reference_; }
  /// How far the edge stands above the ring (below: negative), in mm; empty while the position is lost.
  std::optional<double> Edge() const;

 private:
  struct Place {
    std::int32_t commanded = 0;
    double driven = 0;  // where the motor really is
    double edge = 0;    // in steps; follows `driven` with the play
  };

  void LoseSteps(double distance);

  SyringeDescription syringe_;
  LostSteps lostSteps_;
  SeededNumbers scatter_;
  SeededNumbers losses_;
  double reference_ = 0;
  double play_ = 0;
  std::optional<Place> place_;
};

}  // namespace Helmsway
