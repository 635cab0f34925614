#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "bench/instrument/CommandLine.h"
#include "bench/instrument/Instrument.h"
#include "bench/instrument/MachineDescription.h"

namespace Helmsway {

/// A Marivane that knows its state and refuses what it can't do. Carrying out a line has two halves: a check, which
/// changes nothing and gives the reason of a refusal, and behind it the change, which can't be refused any more.
class SimulatedMarivane final : public IInstrument {
 public:
  struct AxisState {
    /// In motor steps; empty until the axis has been homed, since the instrument doesn't know it before.
    std::optional<std::int32_t> position;
    /// As last set, in the instrument's own unit; 0 while the axis goes at its default speed.
    std::int32_t speed = 0;

    friend bool operator==(const AxisState&, const AxisState&) = default;
  };

  /// All that is lost when the instrument is switched off.
  struct WorkingState {
    std::map<Axis, AxisState> axes;            ///< an axis that the model lacks has no entry
    SliderState slider = SliderState::Closed;  ///< means nothing on a model without slider
    CollisionDetection zCollisionDetection = CollisionDetection::On;
    CalibrationValues pendingCalibration;  ///< received, and not saved yet

    friend bool operator==(const WorkingState&, const WorkingState&) = default;
  };

  /// Switched on, with nothing homed and an empty calibration memory.
  explicit SimulatedMarivane(MachineDescription description);

  /// A line that is refused has changed nothing.
  Answer Execute(std::string_view line) override;
  const CalibrationValues& CalibrationMemory() const override;

  /// Off and on again: of all state only the calibration memory is left.
  void PowerCycle();

  const WorkingState& State() const;

 private:
  // The checks: the reason for which the command is refused; empty when it can be carried out.
  std::string WhyNot(const HomeAll& /*command*/) const { return {}; }
  std::string WhyNot(const HomeS& command) const;
  std::string WhyNot(const MoveAxis& command) const;
  std::string WhyNot(const MoveSlider& command) const;
  std::string WhyNot(const SetSpeed& command) const;
  std::string WhyNot(const SetZCollisionDetection& command) const;
  std::string WhyNot(const SetCalibration& /*command*/) const { return {}; }
  std::string WhyNot(const SaveCalibration& /*command*/) const { return {}; }
  std::string WhyNot(const AskSliderState& command) const;
  std::string WhyNot(const AskRevision& /*command*/) const { return {}; }

  // The changes: each gives the reply.
  std::string Perform(const HomeAll& command);
  std::string Perform(const HomeS& command);
  std::string Perform(const MoveAxis& command);
  std::string Perform(const MoveSlider& command);
  std::string Perform(const SetSpeed& command);
  std::string Perform(const SetZCollisionDetection& command);
  std::string Perform(const SetCalibration& command);
  std::string Perform(const SaveCalibration& command);
  std::string Perform(const AskSliderState& command) const;
  std::string Perform(const AskRevision& command) const;

  std::string WhyAxisLacks(Axis axis) const;
  std::string WhySliderLacks() const;
  void Home(Axis axis);

  MachineDescription description_;
  WorkingState state_;
  CalibrationValues calibrationMemory_;
};

}  // namespace Helmsway
