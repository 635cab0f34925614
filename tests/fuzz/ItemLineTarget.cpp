// Item lines, their conversions and their readers. Input: LINE\|KEYS. The line stands under the first three item
// numbers of every catalogue; the keys, one "key=value" a line, stand in every section.
#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "addin/config/Calibration.h"
#include "addin/config/Configuration.h"
#include "addin/config/ConfigurationLoad.h"
#include "addin/config/PlateType.h"
#include "addin/config/Position.h"
#include "addin/wizard/ListOperations.h"
#include "forms/Form.h"
#include "tests/fuzz/ConversionChecks.h"
#include "tests/fuzz/Demand.h"
#include "tests/fuzz/LineService.h"
#include "tests/fuzz/ProcessorTimeLimit.h"

namespace Helmsway::Fuzzing {
namespace {

using namespace OrvelCalibrateS;

constexpr std::array listDesign{
    forms::ControlDesign{.kind = forms::ControlKind::PictureBox, .name = "picFrame"},
    forms::ControlDesign{.kind = forms::ControlKind::ComboBox, .name = "cboList", .container = "picFrame"},
};

void CheckSplit(const SplitResult& split, std::string_view line) {
  std::string joined;
  for (std::size_t i = 0; i < split.parts.size(); ++i) joined += (i == 0 ? "" : ",") + split.parts[i];
  Demand(joined == line, "the pieces of a line make up the line");
  const std::size_t unused = !split.parts.empty() && split.parts.back().empty() ? 1 : 0;
  Demand(static_cast<std::size_t>(split.count) + unused == split.parts.size(), "an empty last piece isn't counted");
}

/// The head's line as it is after a write; empty when a number of it can't be written.
std::string Rewritten(const Configuration& configuration, LineService& service) {
  service.written.clear();
  const HeadType head = ReadHeadType(configuration, "1");
  Skip([&] { WriteHeadType(configuration.Files, head, configuration.Files.MarivaneIni()); });
  service.line = service.written;
  return service.written;
}

/// What a write makes of a head's line, the next write leaves as it is.
void CheckHeadWrite(const Configuration& configuration, LineService& service) {
  constexpr std::size_t headCodePlace = 16;
  const std::string original = service.line;
  const bool isComplete = configuration.Files.SplitText(",", original).parts.size() > headCodePlace;
  std::string first = Rewritten(configuration, service);
  // Only a line without the place of the shape has serial-dilute keys read for a head of another kind; the line that
  // is written for it has that place.
  if (!first.empty() && !isComplete) first = Rewritten(configuration, service);
  if (!first.empty()) {
    const std::string second = Rewritten(configuration, service);
    // The largest numbers of all get larger yet when they are rounded to the digits of a line.
    Demand(second == first || (second.empty() && first.find("e+308") != std::string::npos),
           "a head that is read and written again keeps its line");
  }
  service.line = original;
}

void CheckReaders(const Configuration& configuration) {
  const IniFiles& files = configuration.Files;
  LoadInstalledRecords(configuration, FailureMode::Skip);
  std::string device = "1";
  ReadDeviceType(files, device);
  ReadCageType(files, "1");
  ReadNestType(configuration, "1");
  ReadNestType(configuration, "", "N");
  ReadTipType(files, "1");
  ReadPlateType(files, "1");
  ReadPosition(configuration, "1");
  const Position found = ReadPosition(configuration, "", "STAGE1");
  Demand(found.Name == "STAGE1" || found.DisplayName.empty(), "a walk by name ends there or behind the list");
  ReadCalibration(configuration, "1");
  const Calibration calibration = ReadCalibration(configuration, "", "STAGE1");
  Demand(calibration.Name == "STAGE1" || calibration.Name.empty(), "a walk by name ends there or behind the list");

  forms::Form form("", listDesign);
  auto& list = form.Get<forms::ComboBox>("cboList");
  FillItemList(files, list, "HeadType", {1, "SERIAL", 3, "x"});
  Demand(list.ListIndex() < list.ListCount(), "the entry that is selected is in the list");
  FindListItem(found.Name, list);
}

}  // namespace
}  // namespace Helmsway::Fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Helmsway::Fuzzing;
  using namespace OrvelCalibrateS;
  const ProcessorTimeLimit limit;
  FuzzedDataProvider input(data, size);
  const std::string line = input.ConsumeRandomLengthString();
  auto* const service = new LineService(line, input.ConsumeRemainingBytesAsString());
  Ref<HelmswayCmds::IIniService> held;
  *held.Out() = service;
  const IniFiles files([&] { return held; }, "/addin");
  SharedRecords records;
  const Configuration configuration{files, records};

  const SplitResult split = files.SplitText(",", line);
  CheckSplit(split, line);
  for (const std::string& part : split.parts) CheckConversions(part);
  for (std::size_t i = 1; i < split.parts.size(); ++i) CheckArithmetic(split.parts[i - 1], split.parts[i]);

  CheckReaders(configuration);
  CheckHeadWrite(configuration, *service);
  // Some inputs only, and always the same ones, since the many failures take their time.
  if (std::hash<std::string>()(line) % 8 == 0) {
    service->FailEveryThirdRead();
    Skip([&] { LoadInstalledRecords(configuration, FailureMode::PassUp); });
    CheckReaders(configuration);
  }
  return 0;
}
