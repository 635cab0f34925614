#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace OrvelCalibrateS {

/// Command lines joined for one run: each ends in CR LF, the last one too.
class CommandText {
 public:
  CommandText& operator+=(std::string_view line) {
    text_.append(line).append("\r\n");
    return *this;
  }
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

/// One function for each command that the add-in sends. Each returns the command line without a line end. Spelling and
/// number format are defined only here.
namespace Command {

enum class Axis : std::uint8_t { X, Y, Z, S, SD_X, SD_Y };

std::string HomeAll();
std::string HomeS();

/// Positions are in motor steps of the axis. A real position is sent in whole-number format and must be finite.
std::string Move(Axis axis, std::int32_t position);
std::string Move(Axis axis, double position);
/// The position is a text that is sent unchanged.
std::string Move(Axis axis, std::string_view position);

std::string MoveSliderOpen();
std::string MoveSliderClosed();
std::string StatusSlider();
/// Whether the reply to `StatusSlider` contains the word anywhere, in capitals only.
bool SaysClosed(std::string_view reply);
bool SaysOpen(std::string_view reply);

/// In the instrument's own speed unit.
std::string SetSpeed(Axis axis, std::int32_t speed);

std::string ZCollisionOn();
std::string ZCollisionOff();

/// Calibration values of the heads with that number of channels and volume class ("12", "30", "125", "300", "1250").
/// `length` is the eject stroke in S steps; it is sent with a literal minus sign in front.
std::string CalibrateTipEject(std::int16_t channels, std::string_view volumeClass, double length);
std::string CalibrateAspirateOrigin(std::int16_t channels, std::string_view volumeClass, std::int32_t position);
/// Makes the previously sent values permanent.
std::string SaveCalibration();

std::string Rev();

}  // namespace Command
}  // namespace OrvelCalibrateS
