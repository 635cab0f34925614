#pragma once

#include <string>
#include <vector>

#include "bench/instrument/CommandLine.h"
#include "bench/instrument/Motion.h"
#include "bench/instrument/Stage.h"

namespace Helmsway {

/// What hangs on the pipette module.
struct Module {
  const HeadType* head = nullptr;  ///< a head, or the teach tool; null for nothing
  const TipType* tip = nullptr;    ///< on the head
};

/// Everything that is somewhere, as it really is.
struct World {
  Motion motion;
  Stage stage;
  Module module;
  SliderState slider = SliderState::Closed;  ///< means nothing on a model without slider
  CollisionDetection zCollisionDetection = CollisionDetection::On;
  std::vector<std::string> damage;  ///< in words, oldest first
};

/// How it stands when the instrument is switched on for the first time: the head that the file names as installed is on
/// the module (the teach tool, if it names none) with the tip that it names. Every other head stands in the first free
/// slot made for its shape; the teach tool waits in its case, and its slot stays free for it.
World StartOf(const MachineDescription& machine);

/// The entry of that item number; null when there is none.
const HeadType* HeadOf(const MachineDescription& machine, const std::string& item);
const TipType* TipOf(const MachineDescription& machine, const std::string& item);
const PlateType* PlateOf(const MachineDescription& machine, const std::string& item);

}  // namespace Helmsway
