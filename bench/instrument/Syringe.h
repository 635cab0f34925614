#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/instrument/Surroundings.h"

namespace Helmsway {

/// What the S axis lets go of at the end of a move, and where.
///
/// How far S must go is known from the head's S positions, those of the description and those that a calibration has
/// written meanwhile; either will do. A head needs something to stand on: it comes off in the seat of a slot and over
/// the stage position for ejected heads, and nowhere else, since the stroke that ejects a tip can be the longer one.
class Syringe {
 public:
  enum class Release { Nothing, Tip, HeadInSlot, HeadOnStage };

  /// All must outlive this.
  Syringe(const MachineDescription& machine, const Heights& heights, const World& world)
      : machine_(machine), heights_(heights), world_(world), around_(machine, heights, world) {}

  Release ReleaseAt(std::int32_t sTarget) const;
  /// Why the head can't be let go of where it is: for a person to read, empty when it can, and when none is let go of.
  std::string WhyNotRelease(std::int32_t sTarget) const;

 private:
  bool TipComesOff(std::int32_t sTarget) const;
  bool IsInSeat() const;
  /// Who stands already where the head would go; empty for nobody.
  std::string Occupant(Release release) const;
  /// The head on the module as the description has it, and as the file has it now.
  std::vector<HeadType> KnownHeads() const;

  const MachineDescription& machine_;
  const Heights& heights_;
  const World& world_;
  Surroundings around_;
};

}  // namespace Helmsway
