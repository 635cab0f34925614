#pragma once

#include <optional>
#include <string>

#include "bench/instrument/Surroundings.h"

namespace Helmsway {

/// What a move would do harm to. Looks only; every reason is for a person to read, and empty when there is none. A move
/// without distance does no harm.
class Safety {
 public:
  /// All must outlive this.
  Safety(const MachineDescription& machine, const Heights& heights, const World& world)
      : machine_(machine), heights_(heights), world_(world), around_(machine, heights, world) {}

  /// For X, Y, SD_X and SD_Y.
  std::string WhyNotSideways(Axis axis, std::int32_t target) const;
  std::string WhyNotSlider(SliderState target) const;
  /// What Z runs into on its way down to the target, and how deep: "3.2 mm into the rim of ...". Empty when the way is
  /// free.
  std::string RunsInto(std::int32_t zTarget) const;

 private:
  /// Something in the way, and how low the module's face, a head's end or the like may come before it.
  struct Floor {
    std::string name;
    double lowest = 0;
    double reached = 0;
  };

  std::vector<Floor> FloorsAt(double module) const;
  std::vector<Floor> FloorsOfSlot(std::size_t number, double module) const;
  std::vector<Floor> FloorsOfRack(const MachineDescription::StagePlace& place, double module) const;
  void AddSlider(std::vector<Floor>& floors, bool lower, const std::string& where, double lowestPoint) const;

  const MachineDescription& machine_;
  const Heights& heights_;
  const World& world_;
  Surroundings around_;
};

}  // namespace Helmsway
