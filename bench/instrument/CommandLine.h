#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "bench/instrument/MachineDescription.h"

/// The instrument's command language, as it reads it.
namespace Helmsway {

enum class SliderState { Closed, Open };
enum class CollisionDetection { Off, On };

struct HomeAll {
  friend bool operator==(const HomeAll&, const HomeAll&) = default;
};

struct HomeS {
  friend bool operator==(const HomeS&, const HomeS&) = default;
};

struct MoveAxis {
  Axis axis = Axis::X;
  std::int32_t target = 0;  ///< an absolute position in motor steps

  friend bool operator==(const MoveAxis&, const MoveAxis&) = default;
};

struct MoveSlider {
  SliderState target = SliderState::Closed;

  friend bool operator==(const MoveSlider&, const MoveSlider&) = default;
};

struct SetSpeed {
  Axis axis = Axis::S;     ///< S or Z
  std::int32_t speed = 1;  ///< >= 1, in the instrument's own unit

  friend bool operator==(const SetSpeed&, const SetSpeed&) = default;
};

struct SetZCollisionDetection {
  CollisionDetection detection = CollisionDetection::On;

  friend bool operator==(const SetZCollisionDetection&, const SetZCollisionDetection&) = default;
};

struct SetCalibration {
  std::string name;   ///< "TipEject_8Ch_125_S"
  std::string value;  ///< as it stood in the line: "-30", and "--30" of a tip eject position below 0

  friend bool operator==(const SetCalibration&, const SetCalibration&) = default;
};

struct SaveCalibration {
  friend bool operator==(const SaveCalibration&, const SaveCalibration&) = default;
};

struct AskSliderState {
  friend bool operator==(const AskSliderState&, const AskSliderState&) = default;
};

struct AskRevision {
  friend bool operator==(const AskRevision&, const AskRevision&) = default;
};

using Command = std::variant<HomeAll, HomeS, MoveAxis, MoveSlider, SetSpeed, SetZCollisionDetection, SetCalibration,
                             SaveCalibration, AskSliderState, AskRevision>;

/// What a line says: a command, or why it is none.
struct CommandLine {
  std::optional<Command> command;  ///< empty when the line is unknown or malformed
  std::string reason;              ///< then: why, for a person to read
};

/// Reads one command line without a line end. Nothing is forgiven: neither small letters nor a blank too many, nor a
/// number that is written otherwise than shortest ("+5", "05", "-0", "5.0") or needs more than 32 bits.
CommandLine ReadCommandLine(std::string_view line);

/// Whether "SET_CALIBRATION" with that name and value is a line that the instrument takes.
bool IsCalibrationValue(std::string_view name, std::string_view value);

/// The axis as commands name it: "SD_X".
std::string_view NameOf(Axis axis);

}  // namespace Helmsway
