#include "bench/instrument/SyringeDescription.h"

#include <cmath>
#include <limits>
#include <optional>

#include "addin/config/Configuration.h"
#include "addin/config/ConfigurationLoad.h"
#include "addin/config/HeadType.h"
#include "bench/host/ConfigurationService.h"

namespace Helmsway {
namespace {

using OrvelCalibrateS::HeadType;

/// The first head of the catalogue that `test` accepts.
template <class Test>
std::optional<HeadType> FindHead(const OrvelCalibrateS::Configuration& configuration, Test test) {
  for (int item = 1; item <= std::numeric_limits<std::int16_t>::max(); ++item) {
    HeadType head = OrvelCalibrateS::ReadHeadType(configuration, std::to_string(item));
    if (test(head)) return head;
    if (head.Name.empty()) break;
  }
  return std::nullopt;
}

std::int32_t WholeSteps(double steps) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (!(steps > Limits::min() && steps < Limits::max())) return 0;
  return static_cast<std::int32_t>(std::llround(steps));
}

}  // namespace

SyringeDescription DescribeSyringe(const std::filesystem::path& marivaneIni) {
  OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service;
  *service.Out() = new ConfigurationService();
  const OrvelCalibrateS::IniFiles files([&service] { return service; }, marivaneIni.parent_path().string());
  OrvelCalibrateS::SharedRecords records;
  const OrvelCalibrateS::Configuration configuration{files, records};
  OrvelCalibrateS::LoadMachineRecords(configuration, OrvelCalibrateS::FailureMode::Skip);

  SyringeDescription syringe;
  const OrvelCalibrateS::AxisRecord& axis = records.AxisS;
  if (!axis.Present) return syringe;
  syringe.mmPerStep = axis.MmPerStep;
  syringe.lowLimit = axis.LowLimit;
  syringe.highLimit = axis.HighLimit;
  syringe.upSign = axis.MoveSign;

  const auto tool = FindHead(configuration, OrvelCalibrateS::IsTeachTool);
  if (tool) {
    syringe.toolName = tool->Name;
    syringe.toolOffset = WholeSteps(tool->SDTeachToolOffset);
  }
  const auto head =
      FindHead(configuration, [](const HeadType& found) { return found.Kind == OrvelCalibrateS::SerialDiluteKind; });
  if (!head) return syringe;
  syringe.toolOffset = WholeSteps(head->SDTeachToolOffset);
  syringe.onRecord = WholeSteps(axis.OffsetSign * head->SDTeachToolOffset + head->SPosition);
  return syringe;
}

}  // namespace Helmsway
