#include "bench/replay/LineDifference.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace Helmsway {
namespace {

using Line = std::string_view;
using Lines = std::span<const Line>;

std::vector<Line> SplitLines(std::string_view text) {
  std::vector<Line> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, end));
    if (lines.back().ends_with('\r')) lines.back().remove_suffix(1);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

/// Length of the longest common subsequence of each pair of tails.
class TailMatches {
 public:
  TailMatches(Lines before, Lines after) : width_(after.size() + 1), lengths_((before.size() + 1) * width_) {
    for (std::size_t i = before.size(); i-- > 0;) {
      for (std::size_t j = after.size(); j-- > 0;) {
        lengths_[i * width_ + j] = before[i] == after[j] ? At(i + 1, j + 1) + 1 : std::max(At(i + 1, j), At(i, j + 1));
      }
    }
  }

  std::size_t At(std::size_t i, std::size_t j) const { return lengths_[i * width_ + j]; }

 private:
  std::size_t width_;
  std::vector<std::size_t> lengths_;
};

/// Lines that stand in one text only, at one place.
struct Place {
  std::size_t before = 0;  ///< number of lines ahead of the place, in either text
  std::size_t after = 0;
  std::vector<Line> removed;
  std::vector<Line> added;
};

std::string Range(std::size_t ahead, std::size_t count) {
  // As everywhere, an empty range is given by the line that it stands behind.
  return std::to_string(count == 0 ? ahead : ahead + 1) + "," + std::to_string(count);
}

void Put(const Place& place, std::vector<std::string>& difference) {
  if (place.removed.empty() && place.added.empty()) return;
  difference.push_back("@@ -" + Range(place.before, place.removed.size()) + " +" +
                       Range(place.after, place.added.size()) + " @@");
  for (const Line line : place.removed) difference.emplace_back("-").append(line);
  for (const Line line : place.added) difference.emplace_back("+").append(line);
}

}  // namespace

std::vector<std::string> LineDifference(std::string_view before, std::string_view after) {
  const std::vector<Line> allBefore = SplitLines(before);
  const std::vector<Line> allAfter = SplitLines(after);
  // The equal lines in front and behind would only make the table large.
  const auto [frontBefore, frontAfter] =
      std::mismatch(allBefore.begin(), allBefore.end(), allAfter.begin(), allAfter.end());
  const auto front = static_cast<std::size_t>(frontBefore - allBefore.begin());
  const auto backBefore = std::mismatch(allBefore.rbegin(), std::make_reverse_iterator(frontBefore), allAfter.rbegin(),
                                        std::make_reverse_iterator(frontAfter))
                              .first;
  const auto back = static_cast<std::size_t>(backBefore - allBefore.rbegin());
  const Lines from(allBefore.data() + front, allBefore.size() - front - back);
  const Lines to(allAfter.data() + front, allAfter.size() - front - back);

  const TailMatches matches(from, to);
  std::vector<std::string> difference;
  Place place{front, front, {}, {}};
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < from.size() || j < to.size()) {
    if (i < from.size() && j < to.size() && from[i] == to[j]) {
      Put(place, difference);
      ++i;
      ++j;
      place = {front + i, front + j, {}, {}};
    } else if (j == to.size() || (i < from.size() && matches.At(i + 1, j) >= matches.At(i, j + 1))) {
      place.removed.push_back(from[i++]);
    } else {
      place.added.push_back(to[j++]);
    }
  }
  Put(place, difference);
  return difference;
}

}  // namespace Helmsway
