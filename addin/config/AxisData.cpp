#include "addin/config/AxisData.h"

#include <array>
#include <tuple>

#include "addin/config/ItemSource.h"
#include "addin/config/RecordTable.h"

namespace OrvelCalibrateS {
namespace {

constexpr auto rows = std::tuple{
    Place(0, &AxisRecord::Name, Convert::CleanText{}),
    Place(1, &AxisRecord::MmPerStep, Convert::StrictReal{}),
    Place(2, &AxisRecord::SpeedA, Convert::StrictWhole{}),
    Place(3, &AxisRecord::SpeedB, Convert::StrictWhole{}),
    Place(4, &AxisRecord::SpeedC, Convert::RoundedNumber{}),
    Place(5, &AxisRecord::LowLimit, Convert::StrictWhole{}),
    Place(6, &AxisRecord::HighLimit, Convert::StrictWhole{}),
    Place(7, &AxisRecord::Place7, Convert::StrictWhole{}),
    Place(8, &AxisRecord::Place8, Convert::StrictWhole{}),
    Place(9, &AxisRecord::Place9, Convert::StrictWhole{}),
    Place(10, &AxisRecord::Place10, Convert::StrictWhole{}),
    Place(11, &AxisRecord::Place11, Convert::StrictWhole{}),
    Place(12, &AxisRecord::MoveSign, Convert::StrictWhole{}),
    Place(13, &AxisRecord::OffsetSign, Convert::StrictWhole{}),
    Place(14, &AxisRecord::SafePosition, Convert::RoundedNumber{}),
};

enum class Scaling { None, SDXYStepFactor };

struct Instance {
  std::string_view name;
  AxisRecord SharedRecords::*record;
  Scaling scaling;
};

constexpr std::array<Instance, 7> instances{{
    {"X", &SharedRecords::AxisX, Scaling::None},
    {"Y", &SharedRecords::AxisY, Scaling::None},
    {"Z", &SharedRecords::AxisZ, Scaling::None},
    {"S", &SharedRecords::AxisS, Scaling::None},
    {"SDX", &SharedRecords::AxisSDX, Scaling::SDXYStepFactor},
    {"SDY", &SharedRecords::AxisSDY, Scaling::SDXYStepFactor},
    {"SDS", &SharedRecords::AxisSDS, Scaling::None},
}};

/// Converts a serial-dilute line's values to motor steps. A value that can't be scaled stays as it was.
void Scale(AxisRecord& axis, double factor) {
  const auto scaled = [factor](std::int32_t position) { return Rounded<std::int32_t>(position * factor); };
  Put(axis.MmPerStep, [&] { return ToSingle(Divide(axis.MmPerStep, factor)); });
  Put(axis.LowLimit, [&] { return scaled(axis.LowLimit); });
  Put(axis.HighLimit, [&] { return scaled(axis.HighLimit); });
  Put(axis.SafePosition, [&] { return scaled(axis.SafePosition); });
}

void CopyToInstance(AxisRecord& working, SharedRecords& records, double factor) {
  for (const Instance& instance : instances) {
    if (working.Name != instance.name) continue;
    if (instance.scaling == Scaling::SDXYStepFactor) Scale(working, factor);
    records.*instance.record = working;
  }
}

}  // namespace

void ReadAxisData(const Configuration& configuration) {
  const IniFiles& files = configuration.Files;
  SharedRecords& records = configuration.Records;
  const double factor = SDXYStepFactor(records.DeviceType);
  const std::string section = "Device_Type" + records.DeviceType.Name + "_Cage" + records.CageType.Name;
  for (const Instance& instance : instances) records.*instance.record = AxisRecord();

  // One working record for all lines: a place that can't be read keeps the value of the previous line, scaled or not.
  AxisRecord working;
  WalkItems(FailureMode::Skip, [&](const std::string& number) {
    std::string value;
    Put(value, [&] { return files.ReadIni(section, "Axis" + number, files.MarivaneIni(), ""); });
    if (value.empty()) return false;
    SplitResult line;
    Put(line, [&] { return files.SplitText(",", value); });
    if (line.parts.empty()) return true;
    working.Present = true;
    RowReader(working, files, section, line).Read(rows);
    CopyToInstance(working, records, factor);
    return true;
  });
}

}  // namespace OrvelCalibrateS
