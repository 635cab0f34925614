#include "bench/desktop/instrument/PictureAxes.h"

#include <algorithm>

#include "bench/instrument/CommandLine.h"

namespace Helmsway {

using AxisPicture = InstrumentPicture::AxisPicture;

const AxisPicture* AxisIn(const InstrumentPicture& picture, Axis axis) {
  const auto found = std::find_if(picture.axes.begin(), picture.axes.end(),
                                  [&](const AxisPicture& each) { return each.name == NameOf(axis); });
  return found == picture.axes.end() ? nullptr : &*found;
}

double LengthAt(const MachineDescription& machine, const InstrumentPicture& picture, Axis axis) {
  const auto described = machine.axes.find(axis);
  const AxisPicture* const shown = AxisIn(picture, axis);
  return described == machine.axes.end() || shown == nullptr ? 0 : shown->at * described->second.mmPerStep;
}

bool SameAxis(const InstrumentPicture& one, const InstrumentPicture& other, Axis axis) {
  const AxisPicture* const left = AxisIn(one, axis);
  const AxisPicture* const right = AxisIn(other, axis);
  if (left == nullptr || right == nullptr) return left == right;
  return left->at == right->at && left->homed == right->homed && left->moving == right->moving;
}

std::string HangingIn(const InstrumentPicture& picture) {
  if (picture.head.empty()) return "bare module";
  return picture.tip.empty() ? picture.head : picture.head + " + " + picture.tip;
}

}  // namespace Helmsway
