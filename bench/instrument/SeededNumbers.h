#pragma once

#include <cstdint>
#include <random>

namespace Helmsway {

/// Numbers from a seed, the same with every compiler and library: the standard fixes what `std::mt19937_64` gives, and
/// what is made of that stands here, since the standard's own distributions differ from library to library.
class SeededNumbers {
 public:
  /// Each purpose has numbers of its own, so that drawing for one doesn't shift those of another.
  enum class Purpose : std::uint64_t { Geometry = 1, HomingScatter = 2, LostSteps = 3, GarbledReplies = 4 };

  SeededNumbers(std::uint32_t seed, Purpose purpose);

  /// low <= result < high: the upper 53 bits of a draw, as a fraction of the range.
  double Real(double low, double high);
  /// low <= result <= high.
  std::int32_t Whole(std::int32_t low, std::int32_t high);

 private:
  std::mt19937_64 engine_;
};

}  // namespace Helmsway
