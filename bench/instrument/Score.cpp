#include "bench/instrument/Score.h"

#include <charconv>
#include <cmath>

#include "bench/instrument/CommandLine.h"

namespace Helmsway {
namespace {

/// Where the wizard sends Z for the calibration.
constexpr std::int32_t CalibrationZ = -16000;
constexpr std::string_view PositionPrefix = "AspirateOrigin_";

}  // namespace

void Tally::LineEnded(std::string_view line, Answer::Result result) {
  ++lines_;
  if (result == Answer::Result::Refused) ++refused_;
  if (result == Answer::Result::Failed) ++failed_;
  if (result == Answer::Result::Ok) Accepted(line);
}

void Tally::Accepted(std::string_view line) {
  const std::optional<Command> command = ReadCommandLine(line).command;
  if (!command) return;
  if (std::holds_alternative<HomeAll>(*command)) at_ = At::Elsewhere;
  if (std::holds_alternative<HomeS>(*command) && at_ == At::Reference) at_ = At::AboveReference;
  const auto* const move = std::get_if<MoveAxis>(&*command);
  if (move == nullptr) return;
  if (move->axis != Axis::S) {
    at_ = move->axis == Axis::Z && move->target == CalibrationZ ? At::AboveReference : At::Elsewhere;
  } else if (at_ == At::AboveReference) {
    at_ = At::Reference;
  } else if (at_ == At::Reference) {
    ++jogs_;
  }
}

void Tally::Tell(Score& score) const {
  score.jogs = jogs_;
  score.lines = lines_;
  score.refused = refused_;
  score.failed = failed_;
}

std::optional<Score::Error> ErrorOf(const CalibrationValues& values, const SyringeDescription& syringe,
                                    double reference) {
  std::optional<Score::Error> worst;
  for (const auto& [name, value] : values) {
    std::int32_t saved = 0;
    const char* const end = value.data() + value.size();
    const auto read = std::from_chars(value.data(), end, saved);
    if (!name.starts_with(PositionPrefix) || read.ec != std::errc() || read.ptr != end) continue;
    const std::int64_t position = std::int64_t{saved} - std::int64_t{syringe.upSign} * syringe.toolOffset;
    const double steps = static_cast<double>(position) - reference;
    if (worst && std::abs(worst->steps) >= std::abs(steps)) continue;
    worst = {position, steps, steps * syringe.mmPerStep * syringe.upSign};
  }
  return worst;
}

}  // namespace Helmsway
