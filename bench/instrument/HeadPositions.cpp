#include "bench/instrument/HeadPositions.h"

#include <algorithm>

#include "addin/base/Steps.h"
#include "addin/config/Conversions.h"
#include "addin/config/HeadType.h"
#include "addin/config/SValues.h"
#include "bench/instrument/InstalledFile.h"

namespace Helmsway {
namespace {

using OrvelCalibrateS::HeadType;

std::optional<std::int32_t> PositionAfterSave(const HeadType& head, const OrvelCalibrateS::AxisRecord& axisS,
                                              std::string_view screenText) {
  if (screenText.empty()) return std::nullopt;
  std::optional<std::int32_t> position;
  OrvelCalibrateS::Put(position, [&] {
    return OrvelCalibrateS::CalibratedSPosition(head, axisS, OrvelCalibrateS::SValueOnForm(screenText));
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
  for (const HeadType& head : file.CalibratedHeads()) {
    const std::string memoryName = MemoryName(head);
    positions.heads.push_back({head.Index, head.Name, head.SPosition, PositionAfterSave(head, axisS, screenText),
                               memoryName, Remembered(memory, memoryName)});
  }
  return positions;
}

}  // namespace Helmsway
