#include "addin/config/Calibration.h"

#include <tuple>

#include "addin/config/Configuration.h"
#include "addin/config/ItemSource.h"
#include "addin/config/RecordTable.h"

namespace OrvelCalibrateS {
namespace {

/// A calibration's values round a tie to the even neighbour; a position's values round a half away from zero.
auto Rows(double stepFactor) {
  const Convert::ScaledTiesToEven scaled{stepFactor};
  return std::tuple{
      Place(0, &Calibration::Name, Convert::PlainText{}),
      Place(1, &Calibration::Place1, Convert::RoundedNumber{}),
      Place(2, &Calibration::Place2, Convert::RoundedNumber{}),
      Place(3, &Calibration::Place3, scaled),
      Place(4, &Calibration::Place4, scaled),
      Place(5, &Calibration::Place5, scaled),
      Place(6, &Calibration::Place6, scaled),
      Place(7, &Calibration::SdX, scaled),
      Place(8, &Calibration::SdY, scaled),
      Place(9, &Calibration::Place9, Convert::Flag{}),
  };
}

/// The name must be a copy of the caller's text: the original may be a field of a shared record, and the host can cause
/// that record to be replaced during a read.
Calibration FindByName(const Configuration& configuration, const std::string& name) {
  Calibration calibration;
  WalkItems(FailureMode::Skip, [&](const std::string& number) {
    calibration = ReadCalibration(configuration, number);
    return calibration.Name != name && !calibration.Name.empty();
  });
  return calibration;
}

}  // namespace

Calibration ReadCalibration(const Configuration& configuration, std::string_view item, std::string_view name,
                            std::string_view file) {
  if (item.empty()) return name.empty() ? Calibration() : FindByName(configuration, std::string(name));

  const DeviceType& device = configuration.Records.DeviceType;
  const std::string section = "Calibration_" + device.Name;
  const ItemSource source = FindItem(configuration.Files, section, item, file, EmptyItem::AsGiven);
  Calibration calibration;
  calibration.Item = source.item;
  RowReader(calibration, configuration.Files, section, source.line).Read(Rows(SDXYStepFactor(device)));
  return calibration;
}

}  // namespace OrvelCalibrateS
