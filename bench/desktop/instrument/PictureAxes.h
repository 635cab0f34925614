#pragma once

#include "bench/desktop/instrument/InstrumentPicture.h"
#include "bench/instrument/MachineDescription.h"

namespace Helmsway {

/// Null for an axis that isn't in the picture.
const InstrumentPicture::AxisPicture* AxisIn(const InstrumentPicture& picture, Axis axis);

/// Where the axis is, in mm; 0 for one that isn't in the picture, or whose steps have no length.
double LengthAt(const MachineDescription& machine, const InstrumentPicture& picture, Axis axis);

/// Whether both pictures show the axis alike.
bool SameAxis(const InstrumentPicture& one, const InstrumentPicture& other, Axis axis);

/// "Teach Tool 1 Channel", "8 Channel 300 + Tip 300", "bare module".
std::string HangingIn(const InstrumentPicture& picture);

}  // namespace Helmsway
