#include "addin/sequences/NestSeat.h"

#include "addin/base/Steps.h"
#include "addin/config/Conversions.h"
#include "addin/sequences/HeadDepth.h"

namespace OrvelCalibrateS {
namespace {

/// The last stretch, in mm.
constexpr double approach = 4;

}  // namespace

double NestDepth(const SharedRecords& records) {
  return records.DeviceType.HasXAxis ? records.ZCalibration.NestDepth_XY_6 : records.ZCalibration.NestDepth_Y;
}

SeatHeights SeatInSlot(const SharedRecords& records, std::int32_t ZBase, const NestSlot& slot, double zOffset) {
  const double s = records.AxisZ.MmPerStep;
  const std::int16_t m = records.AxisZ.MoveSign;
  const std::int16_t o = records.AxisZ.OffsetSign;
  const double headDepth = HeadDepthInNest(records.Head, records.ZCalibration);

  std::int32_t z = 0;
  Put(z, [&] { return Rounded<std::int32_t>(ZBase + WholeNumberTerm(Divide(NestDepth(records), s) * m)); });
  Put(z, [&] { return Rounded<std::int32_t>(z + WholeNumberTerm(Divide(headDepth, s) * m)); });
  Put(z, [&] { return Rounded<std::int32_t>(z + WholeNumberTerm(Multiply(slot.ZHeight, m))); });

  // The 4 mm aren't rounded separately: the assignment rounds the whole sum, a tie to the even neighbour.
  SeatHeights heights;
  Put(heights.ZApproach,
      [&] { return Rounded<std::int32_t>(z + Divide(approach, s) * m + WholeNumberTerm(o * zOffset)); });
  // Here the 4 mm are rounded separately, from single precision, a half away from zero.
  Put(heights.ZSeat,
      [&] { return Rounded<std::int32_t>(heights.ZApproach + WholeNumberTerm(ToSingle(Divide(approach, s) * o))); });
  return heights;
}

}  // namespace OrvelCalibrateS
