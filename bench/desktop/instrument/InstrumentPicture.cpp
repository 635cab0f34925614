#include "bench/desktop/instrument/InstrumentPicture.h"

#include <algorithm>

namespace Helmsway {

InstrumentPicture PictureOf(const TrainingInstrument& instrument, double share) {
  const InstrumentView view = instrument.Look();
  const std::vector<Travel> travels = instrument.Travels();
  const SyringeDescription& syringe = instrument.Syringe();
  InstrumentPicture picture;
  picture.edge = view.edge;
  for (const MachineState::AxisState& axis : view.machine.axes) {
    InstrumentPicture::AxisPicture& drawn = picture.axes.emplace_back();
    drawn.name = axis.name;
    drawn.at = axis.at;
    drawn.homed = axis.position.has_value();
    const auto travel =
        std::find_if(travels.begin(), travels.end(), [&](const Travel& way) { return way.axis == axis.name; });
    if (travel == travels.end() || travel->from == travel->to) continue;
    const double gone = (travel->to - static_cast<double>(travel->from)) * share;
    drawn.at += gone;
    drawn.moving = true;
    if (axis.name == "S" && picture.edge) *picture.edge += gone * syringe.mmPerStep * syringe.upSign;
  }
  picture.slider = view.machine.slider;
  picture.head = view.machine.head;
  picture.tip = view.machine.tip;
  picture.remote = view.machine.remote;
  picture.zCollisionDetection = view.machine.zCollisionDetection;
  picture.places = view.machine.places;
  picture.damage = view.machine.damage;
  return picture;
}

}  // namespace Helmsway
