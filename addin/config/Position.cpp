#include "addin/config/Position.h"

#include <tuple>

#include "addin/config/Configuration.h"
#include "addin/config/ItemSource.h"
#include "addin/config/RecordTable.h"

namespace OrvelCalibrateS {
namespace {

/// A position's values round a half away from zero; a calibration's values round a tie to the even neighbour.
auto Rows(double stepFactor) {
  const Convert::ScaledHalfAway scaled{stepFactor};
  return std::tuple{
      Place(0, &Position::Name, Convert::PlainText{}),
      Place(1, &Position::DisplayName, Convert::CleanText{}),
      Place(2, &Position::Kind, Convert::PlainText{}),
      Place(3, &Position::X, Convert::RoundedNumber{}),
      Place(4, &Position::Y, Convert::RoundedNumber{}),
      Place(5, &Position::SdX1, scaled),
      Place(6, &Position::SdY1, scaled),
      Place(7, &Position::SdX8, scaled),
      Place(8, &Position::SdY8, scaled),
      Place(9, &Position::SdX12, scaled),
      Place(10, &Position::SdY12, scaled),
      Place(11, &Position::LowerStage, Convert::Flag{}),
      Place(11, &Position::UpperStage, Convert::NegatedFlag{}),
      Place(12, &Position::Place12, Convert::Flag{}),
      Place(13, &Position::Place13, Convert::PlainText{}),
      Place(14, &Position::Place14, Convert::Flag{}),
      Place(15, &Position::Place15, Convert::Flag{}),
      Place(16, &Position::Place16, Convert::RoundedNumber{}),
      Place(17, &Position::Place17, Convert::Number{}),
  };
}

/// The name must be a copy of the caller's text: the original may be a field of a shared record, and the host can cause
/// that record to be replaced during a read.
Position FindByName(const Configuration& configuration, const std::string& name) {
  Position position;
  WalkItems(FailureMode::Skip, [&](const std::string& number) {
    position = ReadPosition(configuration, number);
    return position.Name != name && !position.DisplayName.empty();
  });
  return position;
}

}  // namespace

Position ReadPosition(const Configuration& configuration, std::string_view item, std::string_view name,
                      std::string_view file) {
  if (item.empty()) return name.empty() ? Position() : FindByName(configuration, std::string(name));

  const DeviceType& device = configuration.Records.DeviceType;
  const std::string section = "Position_" + device.Name;
  const ItemSource source = FindItem(configuration.Files, section, item, file, EmptyItem::AsGiven);
  Position position;
  position.Item = source.item;
  RowReader(position, configuration.Files, section, source.line).Read(Rows(SDXYStepFactor(device)));
  return position;
}

}  // namespace OrvelCalibrateS
