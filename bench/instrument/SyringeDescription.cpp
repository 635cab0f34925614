#include "bench/instrument/SyringeDescription.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "addin/config/SValues.h"
#include "bench/instrument/InstalledFile.h"

namespace Helmsway {
namespace {

using OrvelCalibrateS::HeadType;

/// The first of the heads that `test` accepts; null when there is none.
template <class Test>
const HeadType* FindHead(const std::vector<HeadType>& heads, Test test) {
  const auto found = std::find_if(heads.begin(), heads.end(), test);
  return found == heads.end() ? nullptr : &*found;
}

std::int32_t WholeSteps(double steps) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (!(steps > Limits::min() && steps < Limits::max())) return 0;
  return static_cast<std::int32_t>(std::llround(steps));
}

}  // namespace

SyringeDescription DescribeSyringe(const std::filesystem::path& marivaneIni) {
  const InstalledFile file(marivaneIni);
  const std::vector<HeadType> heads = file.Heads();

  SyringeDescription syringe;
  const OrvelCalibrateS::AxisRecord& axis = file.Records().AxisS;
  if (!axis.Present) return syringe;
  syringe.mmPerStep = axis.MmPerStep;
  syringe.lowLimit = axis.LowLimit;
  syringe.highLimit = axis.HighLimit;
  syringe.upSign = axis.MoveSign;

  const HeadType* const tool = FindHead(heads, OrvelCalibrateS::IsTeachTool);
  if (tool != nullptr) {
    syringe.toolName = tool->Name;
    syringe.toolOffset = WholeSteps(tool->SDTeachToolOffset);
  }
  const HeadType* const head =
      FindHead(heads, [](const HeadType& found) { return found.Kind == OrvelCalibrateS::SerialDiluteKind; });
  if (head == nullptr) return syringe;
  syringe.toolOffset = WholeSteps(head->SDTeachToolOffset);
  syringe.onRecord = WholeSteps(OrvelCalibrateS::SValueOnRecord(*head, axis));
  return syringe;
}

}  // namespace Helmsway
