#include "bench/instrument/SyringeTruth.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Helmsway {
namespace {

using Purpose = SeededNumbers::Purpose;

constexpr double SmallJogMm = 0.1;
constexpr double FarthestMm = 2.4;
constexpr std::int32_t NearestJogs = 3;
constexpr double Scatter = 0.3;

/// A press of 0.1 mm moves by this much: positions are whole steps.
std::int32_t SmallJog(const SyringeDescription& syringe) {
  if (!(syringe.mmPerStep > 0)) return 1;
  return static_cast<std::int32_t>(std::clamp(std::round(SmallJogMm / syringe.mmPerStep), 1.0, 1e6));
}

double DrawReference(const SyringeDescription& syringe, SeededNumbers& numbers) {
  const std::int32_t jog = SmallJog(syringe);
  const auto farthest = std::max(NearestJogs, static_cast<std::int32_t>(FarthestMm / (jog * syringe.mmPerStep + 1e-6)));
  double away = static_cast<double>(jog) * numbers.Whole(NearestJogs, farthest);
  if (numbers.Whole(0, 1) == 0) away = -away;
  const double beside = numbers.Real(-0.25, 0.25) * jog;

  // A jog of room is left on both sides, for the presses that go too far.
  const double low = static_cast<double>(syringe.lowLimit) + jog;
  const double high = static_cast<double>(syringe.highLimit) - jog;
  if (syringe.onRecord + away < low || syringe.onRecord + away > high) away = -away;
  return std::max(low, std::min(high, syringe.onRecord + away + beside));
}

}  // namespace

SyringeTruth::SyringeTruth(SyringeDescription syringe, const TrainingSeed& seed)
    : syringe_(std::move(syringe)),
      lostSteps_(seed.lostSteps),
      scatter_(seed.number, Purpose::HomingScatter),
      losses_(seed.number, Purpose::LostSteps) {
  SeededNumbers geometry(seed.number, Purpose::Geometry);
  play_ = geometry.Real(0.2, 0.6);
  reference_ = DrawReference(syringe_, geometry);
}

void SyringeTruth::Homed(std::int32_t position) {
  const double driven = position + scatter_.Real(-Scatter, Scatter);
  place_ = Place{position, driven, driven};
}

void SyringeTruth::MovedTo(std::int32_t position) {
  if (!place_) return Homed(position);
  const double distance = static_cast<double>(position) - place_->commanded;
  if (distance == 0) return;
  place_->commanded = position;
  place_->driven += distance;
  if (lostSteps_ == LostSteps::Some) LoseSteps(distance);
  place_->edge = std::clamp(place_->edge, place_->driven - play_ / 2, place_->driven + play_ / 2);
}

void SyringeTruth::PositionLost() { place_.reset(); }

std::optional<double> SyringeTruth::Edge() const {
  if (!place_) return std::nullopt;
  return (place_->edge - reference_) * syringe_.mmPerStep * syringe_.upSign;
}

void SyringeTruth::LoseSteps(double distance) {
  if (losses_.Whole(1, 10) != 1) return;
  const double lost = std::min(std::abs(distance), static_cast<double>(losses_.Whole(1, 3)));
  place_->driven -= std::copysign(lost, distance);
}

}  // namespace Helmsway
