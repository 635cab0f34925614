#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "bench/instrument/Heights.h"
#include "bench/instrument/World.h"

namespace Helmsway {

/// A point over the stage, in mm.
struct Point {
  double x = 0;
  double y = 0;
};

/// Something that what hangs on the module can run into.
struct Obstacle {
  std::string name;  ///< "the rim of Tip rack 300 on Stage 1"
  double top = 0;    ///< mm over the instrument's base
  Point centre;
  double halfWidth = 0;  ///< along X, in mm
  double halfDepth = 0;  ///< along Y
};

/// What there is below the module and around it. A look at the moment: nothing is kept.
class Surroundings {
 public:
  /// All must outlive this.
  Surroundings(const MachineDescription& machine, const Heights& heights, const World& world)
      : machine_(machine), heights_(heights), world_(world) {}

  Point PointAt(const Target& target) const;
  /// Where the module is.
  Point Here() const { return PointAt(world_.motion.Where()); }

  /// What hangs on the module, at its lowest, with Z where it is.
  double LowestPoint() const;

  /// The slot that the module is exactly over, by its number in the description.
  std::optional<std::size_t> SlotBelow() const;
  /// The stage position where the head on the module is exactly over its place in a rack; null when there is none.
  const MachineDescription::StagePlace* RackBelow() const;
  /// Whether the module is where heads are dropped on the stage.
  bool IsOverEjectPlace() const;

  /// What stands on the stage, the stage itself at its positions, and the closed slider over the lower ones.
  std::vector<Obstacle> Obstacles() const;
  bool SliderCovers(bool lower) const { return lower && machine_.hasSlider && world_.slider == SliderState::Closed; }

 private:
  bool IsAt(const Target& target) const;
  double LengthOf(Axis axis, std::int32_t steps) const;
  Obstacle OnPlace(const MachineDescription::StagePlace& place) const;
  Obstacle AtSlot(std::size_t number) const;

  const MachineDescription& machine_;
  const Heights& heights_;
  const World& world_;
};

/// Whether the straight way from one point to the other leads over the obstacle.
bool LeadsOver(const Point& from, const Point& to, const Obstacle& obstacle);

}  // namespace Helmsway
