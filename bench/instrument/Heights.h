#pragma once

#include <cstdint>

#include "bench/instrument/MachineDescription.h"

namespace Helmsway {

/// Z steps as heights, and how far what hangs on the pipette module reaches down. All heights are mm over the
/// instrument's base.
class Heights {
 public:
  /// How near Z must come to a seat or a collecting depth to be there, in mm, and how far it may go past it.
  static constexpr double SeatTolerance = 1.5;

  /// `machine` must outlive this.
  explicit Heights(const MachineDescription& machine) : machine_(machine) {}

  /// Of the module's lower face with Z at that position. Infinite when the file doesn't tell how long a step is:
  /// nothing is in the way then.
  double ModuleAt(std::int32_t z) const;
  double Stage(bool lower) const;

  /// How far the end of the head lies below the module's face, in mm.
  double HeadDepth(const HeadType& head) const;
  /// How far the lowest point below the module's face lies with that head and tip on, null for none: the tip's end, or
  /// the end of the cone that a tip is mounted on.
  double HangDepth(const HeadType* head, const TipType* tip) const;

  /// Where the module's face is when that head sits in the slot: as told by the slot, as it comes to collect the head,
  /// and as it comes to eject it.
  double Seat(const MachineDescription::Slot& slot, const HeadType& head) const;
  double SeatToCollect(const MachineDescription::Slot& slot, const HeadType& head) const;
  double SeatToEject(const MachineDescription::Slot& slot, const HeadType& head) const;

 private:
  double OneChannelDepth(const HeadType& head) const;
  double StepLength() const;

  const MachineDescription& machine_;
};

}  // namespace Helmsway
