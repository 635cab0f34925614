#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace Helmsway {

/// What the installation says of the syringe axis and of the tool that it is calibrated with. Positions are S steps.
struct SyringeDescription {
  double mmPerStep = 0;  ///< 0 when the model has no S axis
  std::int32_t lowLimit = 0;
  std::int32_t highLimit = 0;
  std::int32_t upSign = 1;      ///< +1 or -1: of a step that moves the upper part of the teach tool up
  std::int32_t onRecord = 0;    ///< where the calibration location has the axis, by the value on record
  std::int32_t toolOffset = 0;  ///< a saved value less `upSign` times this is the position that it was saved at
  std::string toolName;         ///< of the one-channel teach tool; empty when the catalogue has none
};

/// Never fails: what the file doesn't say stays as it is above.
SyringeDescription DescribeSyringe(const std::filesystem::path& marivaneIni);

}  // namespace Helmsway
