#include "bench/instrument/MemoryComparison.h"

#include "addin/base/Steps.h"
#include "addin/config/Conversions.h"
#include "bench/instrument/InstalledFile.h"

namespace Helmsway {
namespace {

using OrvelCalibrateS::HeadType;

void AddValuesOf(const HeadType& head, double mmPerStep, CalibrationValues& values) {
  const std::string_view volumeClass = OrvelCalibrateS::VolumeClassWord(head.Volume);
  if (volumeClass.empty()) return;
  const std::string name = "_" + std::to_string(head.Channels) + "Ch_" + std::string(volumeClass) + "_S";
  OrvelCalibrateS::Skip([&] {
    values["TipEject" + name] =
        OrvelCalibrateS::NegatedWholeNumber(OrvelCalibrateS::Divide(head.SPositionMM, mmPerStep));
  });
  values["AspirateOrigin" + name] = std::to_string(head.SPosition);
}

CalibrationValues ValuesInFile(const std::filesystem::path& marivaneIni) {
  const InstalledFile file(marivaneIni);
  CalibrationValues values;
  for (const HeadType& head : file.CalibratedHeads()) AddValuesOf(head, file.Records().AxisS.MmPerStep, values);
  return values;
}

}  // namespace

std::vector<MemoryDifference> CompareMemory(const CalibrationValues& memory, const std::filesystem::path& marivaneIni) {
  std::vector<MemoryDifference> differences;
  for (const auto& [name, value] : ValuesInFile(marivaneIni)) {
    const auto found = memory.find(name);
    const std::string remembered = found == memory.end() ? "" : found->second;
    if (remembered != value) differences.push_back({name, value, remembered});
  }
  return differences;
}

}  // namespace Helmsway
