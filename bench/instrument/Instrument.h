#pragma once

#include <map>
#include <string>
#include <string_view>

/// What stands behind the device link.
namespace Helmsway {

/// How one command line ended.
struct Answer {
  enum class Result { Ok, Refused, Failed };

  Result result = Result::Ok;
  std::string reply;   ///< the instrument's answer text; empty unless the result is `Ok`
  std::string reason;  ///< of a refusal: why, for a person to read
};

/// Values by name, as "SET_CALIBRATION" lines carry them: "TipEject_8Ch_125_S" to "-30".
using CalibrationValues = std::map<std::string, std::string, std::less<>>;

class IInstrument {
 public:
  virtual ~IInstrument() = default;

  /// Carries out one command line. Virtual time: returns at once.
  virtual Answer Execute(std::string_view line) = 0;

  /// What the instrument's permanent memory holds now.
  virtual const CalibrationValues& CalibrationMemory() const = 0;
};

}  // namespace Helmsway
