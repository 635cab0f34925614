#include "bench/instrument/SeededNumbers.h"

#include <cmath>

namespace Helmsway {

SeededNumbers::SeededNumbers(std::uint32_t seed, Purpose purpose)
    : engine_((std::uint64_t{seed} << 8) | static_cast<std::uint64_t>(purpose)) {}

double SeededNumbers::Real(double low, double high) {
  const double fraction = static_cast<double>(engine_() >> 11) * 0x1.0p-53;
  return low + fraction * (high - low);
}

std::int32_t SeededNumbers::Whole(std::int32_t low, std::int32_t high) {
  const double count = static_cast<double>(high) - static_cast<double>(low) + 1.0;
  return low + static_cast<std::int32_t>(std::floor(Real(0.0, count)));
}

}  // namespace Helmsway
