#include "addin/config/SValues.h"

#include <string>
#include <utility>

#include "addin/config/Conversions.h"
#include "addin/config/ItemSource.h"

namespace OrvelCalibrateS {

std::optional<HeadType> FindHeadOnRecord(const Configuration& configuration, FailureMode mode) {
  std::optional<HeadType> onRecord;
  WalkItems(mode, [&](const std::string& number) {
    HeadType head = ReadHeadType(configuration, number);
    const bool goesOn = head.Kind != SerialDiluteKind && !head.Name.empty();
    if (head.Kind == SerialDiluteKind) onRecord = std::move(head);
    return goesOn;
  });
  return onRecord;
}

double SValueOnRecord(const HeadType& head, const AxisRecord& axisS) {
  return head.SDTeachToolOffset * axisS.OffsetSign + head.SPosition;
}

double SValueOnForm(std::string_view txtCurrentCollect) { return Number(txtCurrentCollect); }

std::int32_t CalibratedSPosition(const HeadType& head, const AxisRecord& axisS, double valueOnForm) {
  return WholeNumberValue(head.SDTeachToolOffset * axisS.MoveSign + valueOnForm);
}

}  // namespace OrvelCalibrateS
