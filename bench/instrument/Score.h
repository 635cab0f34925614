#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/instrument/Machine.h"
#include "bench/instrument/SyringeTruth.h"

namespace Helmsway {

/// How well a run has gone.
struct Score {
  /// A value that the instrument has been given, against the truth.
  struct Error {
    std::int64_t position = 0;  ///< S steps: where the axis stood when the value was taken
    double steps = 0;           ///< `position` less the reference
    double mm = 0;              ///< the same upward: positive when the edge was taken too high
  };

  TrainingSeed seed;
  double reference = 0;        ///< the truth, in S steps
  std::optional<Error> saved;  ///< of the permanent memory; empty while nothing has been saved
  std::optional<Error> pending;
  std::size_t jogs = 0;
  std::size_t lines = 0;    ///< that have reached the instrument
  std::size_t refused = 0;  ///< of these
  std::size_t failed = 0;   ///< of these
  std::vector<std::string> damage;
  Seconds time{0};
};

/// Counts what a run does. A jog is an accepted move of S at the calibration location that is neither the one that goes
/// there nor the one that goes back behind a homing of S: the location begins with Z's move to it and ends with the
/// next move or homing of another axis.
class Tally {
 public:
  void LineEnded(std::string_view line, Answer::Result result);
  /// The axes no longer know where they stand.
  void PositionsLost() { at_ = At::Elsewhere; }

  /// Writes the numbers into the score.
  void Tell(Score& score) const;

 private:
  enum class At { Elsewhere, AboveReference, Reference };

  void Accepted(std::string_view line);

  At at_ = At::Elsewhere;
  std::size_t jogs_ = 0;
  std::size_t lines_ = 0;
  std::size_t refused_ = 0;
  std::size_t failed_ = 0;
};

/// The error of the calibration values, empty when none of them is an S position: of several that differ, the one that
/// is farthest from the reference.
std::optional<Score::Error> ErrorOf(const CalibrationValues& values, const SyringeDescription& syringe,
                                    double reference);

}  // namespace Helmsway
