#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bench/instrument/Instrument.h"

namespace Helmsway {

/// All that can be seen of a machine, for people and for the trace.
struct MachineState {
  struct AxisState {
    std::string name;                      ///< as commands spell it: "SD_X"
    std::optional<std::int32_t> position;  ///< motor steps; empty while the axis isn't homed
    std::int32_t speed = 0;                ///< steps per second
    std::int32_t at = 0;                   ///< motor steps: where it really stands, whether it knows or not

    friend bool operator==(const AxisState&, const AxisState&) = default;
  };
  struct Place {
    std::string name;      ///< "Nest 1 rear, slot 2", "Stage 4"
    std::string contents;  ///< "8 Channel 300", "Tip rack 300", "empty"

    friend bool operator==(const Place&, const Place&) = default;
  };

  Seconds time{0};  ///< since the instrument was made
  bool remote = true;
  std::vector<AxisState> axes;
  std::string slider;  ///< "open", "closed", or "none" on a model without
  bool zCollisionDetection = true;
  std::string head;  ///< on the pipette module; empty for none
  std::string tip;   ///< on the head; empty for none
  std::vector<Place> places;
  CalibrationValues pending;        ///< received, and lost at a power cycle unless saved before
  CalibrationValues memory;         ///< permanent
  std::vector<std::string> damage;  ///< what was run into, in words, oldest first

  friend bool operator==(const MachineState&, const MachineState&) = default;
};

/// The way of an axis that is moving.
struct Travel {
  std::string axis;  ///< as commands spell it
  std::int32_t from = 0;
  std::int32_t to = 0;  ///< motor steps, both

  friend bool operator==(const Travel&, const Travel&) = default;
};

/// The simulated instrument as the training bench works with it, beyond its command lines.
class IMachine : public IInstrument {
 public:
  virtual MachineState State() const = 0;
  /// Time since the instrument was made.
  virtual Seconds Now() const = 0;

  /// The moves that the line under way makes until its end, as things stand now. Until then `State` has the axes where
  /// they started.
  virtual std::vector<Travel> Travels() const = 0;

  /// Time goes by and nothing happens.
  virtual void Pass(Seconds time) = 0;

  /// The move that is under way, or the next one if none is, ends half-way: the line is refused, the axis stands
  /// between.
  virtual void Stall() = 0;

  /// Off and on again: of all state only the calibration memory and what stands where is left. A line that is under way
  /// fails.
  virtual void PowerCycle() = 0;

  /// The calibration memory holds these values, as from an earlier life of the instrument.
  virtual void Remember(const CalibrationValues& values) = 0;

  /// The switch on the instrument: a machine in local mode refuses every line but "REV" and "STATUS SLIDER".
  virtual void SetRemote(bool remote) = 0;

  /// The operator puts a full rack on a stage position, by their item numbers, in place of what was there.
  virtual void LoadRack(const std::string& positionItem, const std::string& plateItem, const std::string& tipItem) = 0;

  /// The operator says that this head, by its item number, is on the pipette module, and has it there, without a tip;
  /// what was on the module goes into its case. A head that stands in a nest stays there: it was put away for the test
  /// moves, and saying otherwise is only the wizard's road to them. A number that no head has leaves the module bare.
  virtual void PutOnModule(const std::string& headItem) = 0;

  /// The operator puts the head into its slot of the nest, both by their item numbers, in place of what stood there.
  /// A head that is on the module stays on it.
  virtual void PutInNest(const std::string& nestItem, const std::string& headItem) = 0;

  /// The operator takes all heads out of the nest of that item number.
  virtual void ClearNest(const std::string& nestItem) = 0;

  /// The operator takes away whatever stands on the stage position of that name, such as "STAGE6".
  virtual void ClearStage(const std::string& positionName) = 0;
};

}  // namespace Helmsway
