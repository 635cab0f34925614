#include "bench/instrument/HeadPositions.h"

#include <algorithm>

#include "addin/base/Steps.h"
#include "addin/config/Conversions.h"
#include "addin/config/HeadType.h"
#include "addin/config/ItemSource.h"
#include "bench/instrument/InstalledFile.h"

namespace Helmsway {
namespace {

using OrvelCalibrateS::HeadType;

bool IsConcerned(const HeadType& head) {
  return head.Kind == OrvelCalibrateS::SerialDiluteKind || OrvelCalibrateS::IsTeachTool(head);
}

std::optional<std::int32_t> PositionAfterSave(const HeadType& head, std::int16_t moveSign,
                                              std::string_view screenText) {
  if (screenText.empty()) return std::nullopt;
  std::optional<std::int32_t> position;
  OrvelCalibrateS::Put(position, [&] {
    const double currentSteps = OrvelCalibrateS::Number(screenText);
    return OrvelCalibrateS::WholeNumberValue(head.SDTeachToolOffset * moveSign + currentSteps);
  });
  return position;
}

std::string MemoryName(const HeadType& head) {
  const std::string_view volumeClass = OrvelCalibrateS::VolumeClassWord(head.Volume);
  if (volumeClass.empty()) return {};
  return "AspirateOrigin_" + std::to_string(head.Channels) + "Ch_" + std::string(volumeClass) + "_S";
}

std::string Remembered(const CalibrationValues& memory, const std::string& name) {
  const auto found = memory.find(name);
  return found == memory.end() ? std::string() : found->second;
}

}  // namespace

const HeadPosition& HeadPositions::Counting(const HeadPosition& head) const {
  if (head.memoryName.empty()) return head;
  const auto last = std::find_if(heads.rbegin(), heads.rend(),
                                 [&](const HeadPosition& other) { return other.memoryName == head.memoryName; });
  return last == heads.rend() ? head : *last;
}

Agreement HeadPositions::AgreementOf(const HeadPosition& head) const {
  if (head.memoryName.empty()) return Agreement::NotKept;
  if (head.memory.empty()) return Agreement::NoValue;
  return head.memory == std::to_string(Counting(head).file) ? Agreement::Same : Agreement::Differs;
}

HeadPositions ReadHeadPositions(const std::filesystem::path& marivaneIni, std::string_view screenText,
                                const CalibrationValues& memory) {
  const InstalledFile file(marivaneIni);
  const OrvelCalibrateS::AxisRecord& axisS = file.Records().AxisS;
  HeadPositions positions;
  positions.mmPerStep = axisS.MmPerStep;
  // As in a save, the entry without a name is the last one and counts itself.
  OrvelCalibrateS::WalkItems(OrvelCalibrateS::FailureMode::Skip, [&](const std::string& number) {
    const HeadType head = ReadHeadType(file.AsConfiguration(), number);
    if (IsConcerned(head)) {
      const std::string memoryName = MemoryName(head);
      positions.heads.push_back({head.Index, head.Name, head.SPosition,
                                 PositionAfterSave(head, axisS.MoveSign, screenText), memoryName,
                                 Remembered(memory, memoryName)});
    }
    return !head.Name.empty();
  });
  return positions;
}

}  // namespace Helmsway
