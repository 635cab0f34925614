#pragma once

#include <cstdint>
#include <map>

#include "bench/instrument/Machine.h"
#include "bench/instrument/MachineDescription.h"

namespace Helmsway {

/// The axes: where they stand, what the instrument knows of that, and how long a move takes.
class Motion {
 public:
  static constexpr Seconds HomeAllTime{12};
  static constexpr Seconds HomeSTime{4};
  static constexpr Seconds SliderTime{2};

  struct AxisState {
    std::int32_t at = 0;     ///< where it really stands, in motor steps
    bool homed = false;      ///< the instrument knows where
    std::int32_t speed = 0;  ///< steps per second
  };

  /// Nothing homed; `machine` must outlive this.
  explicit Motion(const MachineDescription& machine);

  const std::map<Axis, AxisState>& Axes() const { return axes_; }
  bool Has(Axis axis) const { return axes_.contains(axis); }
  bool Homed(Axis axis) const { return Has(axis) && axes_.at(axis).homed; }
  /// 0 for an axis that the model lacks.
  std::int32_t At(Axis axis) const;
  /// Where the module is over the stage.
  Target Where() const;

  Seconds TimeTo(Axis axis, std::int32_t target) const;

  void Go(Axis axis, std::int32_t target) { axes_.at(axis).at = target; }
  /// Where homing brings the axis: to 0, or as near to it as the limits let it.
  std::int32_t HomeOf(Axis axis) const;
  void Home(Axis axis);
  void HomeAll();
  /// The instrument doesn't know any more where the axis is.
  void Lose(Axis axis) { axes_.at(axis).homed = false; }
  void SetSpeed(Axis axis, std::int32_t speed) { axes_.at(axis).speed = speed; }
  /// What switching off does to the axes: each stays where it is, unhomed, at its speed from the file.
  void Forget();

 private:
  const MachineDescription& machine_;
  std::map<Axis, AxisState> axes_;
};

}  // namespace Helmsway
