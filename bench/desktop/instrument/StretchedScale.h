#pragma once

#include <map>
#include <vector>

namespace Helmsway {

/// A scale on which every given stretch is at least as long as it must be to be written on, and what lies between
/// stretches is short. Order is kept: what comes later along the axis comes later on the scale.
class StretchedScale {
 public:
  /// A piece of an axis, in mm, and the least room for it, in pixels. A stretch without room only marks its ends.
  struct Stretch {
    double from = 0;
    double to = 0;  ///< >= from
    double room = 0;
  };

  StretchedScale() = default;
  explicit StretchedScale(std::vector<Stretch> stretches);

  /// The room that all of it needs, in pixels.
  double Least() const { return least_; }
  /// Gives the whole scale so many pixels: what is more than the least goes to what is written on.
  void FitInto(double length);
  /// Where that place of the axis is: 0 to the length. Places beyond the ends are at the ends.
  double At(double place) const;

 private:
  double Lay(double growth);

  std::vector<Stretch> stretches_;
  double least_ = 0;
  std::map<double, double> marks_;  // mm to pixels
};

}  // namespace Helmsway
