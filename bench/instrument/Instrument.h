#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <string_view>

/// What stands behind the device link.
namespace Helmsway {

/// Time as the instrument keeps it. It stands still but for the lines.
using Seconds = std::chrono::duration<double>;

/// How one command line ended.
struct Answer {
  enum class Result { Ok, Refused, Failed };

  Result result = Result::Ok;
  std::string reply;   ///< the instrument's answer text; empty unless the result is `Ok`
  std::string reason;  ///< of a refusal: why, for a person to read
};

/// Values by name, as "SET_CALIBRATION" lines carry them: "TipEject_8Ch_125_S" to "-30".
using CalibrationValues = std::map<std::string, std::string, std::less<>>;

/// An instrument that takes one line at a time.
class IInstrument {
 public:
  virtual ~IInstrument() = default;

  /// A line arrives. Whether it is refused is settled now; what it does is under way until `End`.
  virtual void Begin(std::string_view line) = 0;

  /// How long the line that is under way takes, on the instrument's clock, from its begin to its end as things stand
  /// now: what happens meanwhile can change that. 0 when no line is under way. Nobody need wait; who shows the
  /// instrument to people waits that long before `End`.
  virtual Seconds TimeToEnd(bool stopRequested) const = 0;

  /// Lets the line run to its end at once, and gives its answer; the instrument's clock advances by `TimeToEnd`.
  /// `stopRequested` tells whether the host has asked to stop meanwhile; an instrument that is moving finishes its move
  /// all the same.
  virtual Answer End(bool stopRequested) = 0;

  /// What the instrument's permanent memory holds now.
  virtual const CalibrationValues& CalibrationMemory() const = 0;
};

}  // namespace Helmsway
