#include "bench/desktop/instrument/StretchedScale.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Helmsway {
namespace {

/// Pixels for a mm on which nothing is written, and the least and most for such a piece.
constexpr double PixelsPerEmptyMm = 0.1;
constexpr double LeastGap = 0.5;
constexpr double MostGap = 10;
constexpr double MostGrowth = 1000;
constexpr double Close = 0.25;

}  // namespace

StretchedScale::StretchedScale(std::vector<Stretch> stretches) : stretches_(std::move(stretches)) {
  for (const Stretch& stretch : stretches_) {
    marks_[stretch.from] = 0;
    marks_[stretch.to] = 0;
  }
  least_ = Lay(1);
}

/// With each room that many times as large as it must be. The length of it all.
double StretchedScale::Lay(double growth) {
  if (marks_.empty()) return 0;
  for (auto mark = std::next(marks_.begin()); mark != marks_.end(); ++mark) {
    const auto before = std::prev(mark);
    double at = before->second + std::clamp((mark->first - before->first) * PixelsPerEmptyMm, LeastGap, MostGap);
    for (const Stretch& stretch : stretches_) {
      if (stretch.to == mark->first) at = std::max(at, marks_[stretch.from] + stretch.room * growth);
    }
    mark->second = at;
  }
  return marks_.rbegin()->second;
}

void StretchedScale::FitInto(double length) {
  double low = 0;
  double high = MostGrowth;
  while ((high - low) * least_ > Close) {
    const double middle = (low + high) / 2;
    (Lay(middle) < length ? low : high) = middle;
  }
  const double whole = Lay(low);
  if (whole <= 0) return;
  // Without anything to write on nothing has grown, and too little room takes from the gaps as well.
  for (auto& [place, at] : marks_) at *= length / whole;
}

double StretchedScale::At(double place) const {
  const auto after = marks_.lower_bound(place);
  if (after == marks_.end()) return marks_.empty() ? 0 : marks_.rbegin()->second;
  if (after == marks_.begin()) return 0;
  const auto before = std::prev(after);
  const double share = (place - before->first) / (after->first - before->first);
  return before->second + share * (after->second - before->second);
}

}  // namespace Helmsway
