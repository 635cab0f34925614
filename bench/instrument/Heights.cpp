#include "bench/instrument/Heights.h"

#include <limits>

namespace Helmsway {
namespace {

using OrvelCalibrateS::CalibrateKind;
using OrvelCalibrateS::MicrotiterKind;
using OrvelCalibrateS::SerialDiluteKind;
using OrvelCalibrateS::ShortOneChannelCode;

/// Nests take the heads of 96 and 384 channels by their face, whatever hangs below it.
bool StandsOnItsEnd(const HeadType& head) { return head.Channels == 1 || head.Channels == 8 || head.Channels == 12; }

}  // namespace

double Heights::ModuleAt(std::int32_t z) const {
  const auto axis = machine_.axes.find(Axis::Z);
  if (axis == machine_.axes.end() || axis->second.mmPerStep == 0 || axis->second.offsetSign == 0) {
    return std::numeric_limits<double>::infinity();
  }
  const double down = (z + machine_.levels.zeroSteps) * axis->second.mmPerStep / axis->second.offsetSign;
  return machine_.levels.mount - down;
}

double Heights::Stage(bool lower) const { return lower ? machine_.levels.lowerStage : machine_.levels.upperStage; }

double Heights::HeadDepth(const HeadType& head) const {
  const auto& depths = machine_.headDepths;
  switch (head.Channels) {
    case 0:
    case 1:
      return OneChannelDepth(head);
    case 8:
      return depths.eightChannels;
    case 12:
      return depths.twelveChannels;
    case 96:
    case 384:
      if (head.Kind == MicrotiterKind) return depths.plate;
      return head.Kind == CalibrateKind ? depths.plateTool : 0;
    default:
      return 0;
  }
}

double Heights::OneChannelDepth(const HeadType& head) const {
  const auto& depths = machine_.headDepths;
  if (head.HeadCode != ShortOneChannelCode) return depths.longOneChannel;
  if (head.Kind == SerialDiluteKind) return depths.shortOneChannel;
  return head.Kind == CalibrateKind ? depths.oneChannelTool : 0;
}

double Heights::HangDepth(const HeadType* head, const TipType* tip) const {
  if (head == nullptr) return 0;
  return HeadDepth(*head) + (tip != nullptr ? tip->TipLength : head->TipMountDepth);
}

double Heights::Seat(const MachineDescription::Slot& slot, const HeadType& head) const {
  return slot.floor + (StandsOnItsEnd(head) ? HeadDepth(head) : 0);
}

double Heights::SeatToCollect(const MachineDescription::Slot& slot, const HeadType& head) const {
  return Seat(slot, head) - head.CollectZOffset * StepLength();
}

double Heights::SeatToEject(const MachineDescription::Slot& slot, const HeadType& head) const {
  return Seat(slot, head) - head.EjectZOffset * StepLength();
}

double Heights::StepLength() const {
  const auto axis = machine_.axes.find(Axis::Z);
  return axis == machine_.axes.end() ? 0 : axis->second.mmPerStep;
}

}  // namespace Helmsway
