#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "addin/config/HeadType.h"
#include "addin/config/PlateType.h"
#include "addin/config/TipType.h"

namespace Helmsway {

using OrvelCalibrateS::HeadType;
using OrvelCalibrateS::PlateType;
using OrvelCalibrateS::TipType;

enum class Axis { X, Y, Z, S, SdX, SdY };

/// A place over the stage, as axis positions in motor steps; X means nothing on a model without that axis.
struct Target {
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t sdX = 0;
  std::int32_t sdY = 0;
};

/// What a Marivane knows of itself, its stage and its heads when it is switched on.
struct MachineDescription {
  /// Positions in motor steps; both limits can be reached.
  struct AxisDescription {
    std::int32_t low = 0;
    std::int32_t high = 0;
    std::int32_t safePosition = 0;
    std::int32_t speed = 1000;     ///< steps per second while nothing else is set, > 0
    double mmPerStep = 0;          ///< 0 when the file doesn't say: the axis' moves have no length then
    std::int16_t moveSign = 1;     ///< of a length upward (Z), of an Up step (S)
    std::int16_t offsetSign = -1;  ///< of a length downward (Z), of the stroke that ejects a tip (S)
  };

  /// Heights over the instrument's base, in mm.
  struct LevelDescription {
    double mount = 0;  ///< of the pipette module's lower face with Z at `zeroSteps` below 0
    double upperStage = 0;
    double lowerStage = 0;
    double zeroSteps = 0;  ///< the correction of Z's zero, in steps
  };

  /// How far a head reaches below the pipette module's face, in mm, by its family.
  struct HeadDepths {
    double shortOneChannel = 0;
    double longOneChannel = 0;
    double eightChannels = 0;
    double twelveChannels = 0;
    double plate = 0;  ///< 96 and 384 channels
    double oneChannelTool = 0;
    double plateTool = 0;
  };

  struct Slot {
    std::string nestItem;
    std::string number;  ///< "1", "2" or "3"
    std::string name;    ///< "Nest 1 rear, slot 2"
    std::string headCode;
    std::string headName;  ///< what the nest says of the head that belongs here
    Target target;
    bool lower = false;  ///< on the lower stage
    double floor = 0;    ///< mm over the base: where the end of a head rests
  };

  struct StagePlace {
    std::string item;
    std::string name;     ///< "STAGE6"
    std::string caption;  ///< "Stage 6"
    bool takesRacks = false;
    bool lower = false;
    Target one;  ///< for heads of one channel
    Target eight;
    Target twelve;
  };

  bool hasSlider = false;                ///< models with an X axis have one
  std::map<Axis, AxisDescription> axes;  ///< an axis that the model lacks has no entry
  std::string firmware;                  ///< the dotted version text

  LevelDescription levels;
  HeadDepths headDepths;
  std::vector<HeadType> heads;
  std::vector<TipType> tips;
  std::vector<PlateType> plates;
  std::vector<Slot> slots;         ///< in the order of the nests; only those that the nests really have
  std::vector<StagePlace> places;  ///< the stage positions that nests don't stand on
  std::string ejectPlace;          ///< name of the stage position where heads are dropped
  Target ejectTarget;              ///< where exactly

  std::string installedHead;   ///< item number; of no head when none is named
  std::string installedTip;    ///< likewise
  std::filesystem::path file;  ///< where all this is from, and where a calibration is written; empty for nowhere
};

}  // namespace Helmsway
