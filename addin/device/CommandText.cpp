#include "addin/device/CommandText.h"

#include "addin/config/Conversions.h"

namespace OrvelCalibrateS::Command {
namespace {

std::string_view Word(Axis axis) {
  switch (axis) {
    case Axis::X:
      return "X";
    case Axis::Y:
      return "Y";
    case Axis::Z:
      return "Z";
    case Axis::S:
      return "S";
    case Axis::SD_X:
      return "SD_X";
    case Axis::SD_Y:
      return "SD_Y";
  }
  return "";
}

std::string Line(std::string_view command, std::string_view target, std::string_view argument) {
  return std::string(command).append(" ").append(target).append(" ").append(argument);
}

std::string Calibrate(std::string_view value, std::int16_t channels, std::string_view volumeClass,
                      std::string_view argument) {
  const std::string name =
      std::string(value).append("_").append(std::to_string(channels)).append("Ch_").append(volumeClass).append("_S");
  return Line("SET_CALIBRATION", name, argument);
}

}  // namespace

std::string HomeAll() { return "HOME ALL"; }
std::string HomeS() { return "HOME S"; }

std::string Move(Axis axis, std::int32_t position) { return Move(axis, std::string_view(std::to_string(position))); }
std::string Move(Axis axis, double position) { return Move(axis, std::string_view(WholeNumber(position))); }
std::string Move(Axis axis, std::string_view position) { return Line("MOVE", Word(axis), position); }

std::string MoveSliderOpen() { return "MOVE SLIDER_OPEN"; }
std::string MoveSliderClosed() { return "MOVE SLIDER_CLOSED"; }
std::string StatusSlider() { return "STATUS SLIDER"; }
bool SaysClosed(std::string_view reply) { return reply.find("CLOSED") != std::string_view::npos; }
bool SaysOpen(std::string_view reply) { return reply.find("OPEN") != std::string_view::npos; }

std::string SetSpeed(Axis axis, std::int32_t speed) { return Line("SET_SPEED", Word(axis), std::to_string(speed)); }

std::string ZCollisionOn() { return "HW_Z_COLLISION ON"; }
std::string ZCollisionOff() { return "HW_Z_COLLISION OFF"; }

std::string CalibrateTipEject(std::int16_t channels, std::string_view volumeClass, double length) {
  return Calibrate("TipEject", channels, volumeClass, NegatedWholeNumber(length));
}

std::string CalibrateAspirateOrigin(std::int16_t channels, std::string_view volumeClass, std::int32_t position) {
  return Calibrate("AspirateOrigin", channels, volumeClass, std::to_string(position));
}

std::string SaveCalibration() { return "SET_CALIBRATION SAVE"; }

std::string Rev() { return "REV"; }

}  // namespace OrvelCalibrateS::Command
