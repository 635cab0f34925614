#include "addin/config/NestType.h"

#include <tuple>

#include "addin/config/Configuration.h"
#include "addin/config/ItemSource.h"
#include "addin/config/RecordTable.h"

namespace OrvelCalibrateS {
namespace {

constexpr std::string_view section = "NestType";

constexpr auto nestRows = std::tuple{
    Place(0, &NestType::Name, Convert::CleanText{}),
    Place(1, &NestType::PositionName, Convert::PlainText{}),
};

void ReadSlot(NestSlot& slot, const char* slotNumber, std::size_t basePlace, const IniFiles& files,
              const SplitResult& line, double stepFactor, double mmPerStep) {
  const RowReader reader(slot, files, section, line);
  slot.SlotNumber = slotNumber;
  reader.Read(std::tuple{Place(basePlace, &NestSlot::HeadName, Convert::CleanText{})});
  slot.Present = !slot.HeadName.empty();
  reader.Read(std::tuple{
      Place(basePlace + 1, &NestSlot::HeadCode, Convert::PlainText{}),
      Place(basePlace + 2, &NestSlot::SlotField4, Convert::RoundedNumber{}),
      Place(basePlace + 3, &NestSlot::OffsetX, Convert::ScaledHalfAway{stepFactor}),
      Place(basePlace + 4, &NestSlot::OffsetY, Convert::ScaledHalfAway{stepFactor}),
      Place(basePlace + 5, &NestSlot::ZHeight, Convert::DividedHalfAway{mmPerStep}),
  });
}

/// The name must be a copy of the caller's text: the original may be a field of a shared record, and the host can cause
/// that record to be replaced during a read.
NestType FindOnPosition(const Configuration& configuration, const std::string& positionName) {
  NestType nest;
  WalkItems(FailureMode::Skip, [&](const std::string& number) {
    nest = ReadNestType(configuration, number, positionName);
    return nest.PositionName != positionName && !nest.Name.empty();
  });
  return nest;
}

}  // namespace

const NestSlot& SlotFor(const NestType& nest, std::string_view headCode) {
  if (nest.Slot1.HeadCode == headCode) return nest.Slot1;
  if (nest.Slot2.HeadCode == headCode) return nest.Slot2;
  return nest.Slot3;
}

NestType ReadNestType(const Configuration& configuration, std::string_view item, std::string_view name,
                      std::string_view file) {
  const double stepFactor = SDXYStepFactor(configuration.Records.DeviceType);
  const double mmPerStep = configuration.Records.AxisZ.MmPerStep;
  if (item.empty() && !name.empty()) return FindOnPosition(configuration, std::string(name));

  const ItemSource source = FindItem(configuration.Files, section, item, file, EmptyItem::Installed);
  NestType nest;
  nest.Index = source.item;
  RowReader(nest, configuration.Files, section, source.line).Read(nestRows);
  ReadSlot(nest.Slot1, "1", 2, configuration.Files, source.line, stepFactor, mmPerStep);
  ReadSlot(nest.Slot2, "2", 8, configuration.Files, source.line, stepFactor, mmPerStep);
  ReadSlot(nest.Slot3, "3", 14, configuration.Files, source.line, stepFactor, mmPerStep);
  return nest;
}

}  // namespace OrvelCalibrateS
