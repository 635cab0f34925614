#include "bench/instrument/DescribeMachine.h"

#include <array>

#include "addin/config/Configuration.h"
#include "addin/config/ConfigurationLoad.h"
#include "bench/host/ConfigurationService.h"

namespace Helmsway {
namespace {

using OrvelCalibrateS::AxisRecord;
using OrvelCalibrateS::SharedRecords;

struct AxisSource {
  Axis axis;
  AxisRecord SharedRecords::*record;
};

constexpr std::array<AxisSource, 6> sources{{
    {Axis::X, &SharedRecords::AxisX},
    {Axis::Y, &SharedRecords::AxisY},
    {Axis::Z, &SharedRecords::AxisZ},
    {Axis::S, &SharedRecords::AxisS},
    {Axis::SdX, &SharedRecords::AxisSDX},
    {Axis::SdY, &SharedRecords::AxisSDY},
}};

/// The records of the installed machine, by the readers that the add-in uses too: the file has one meaning.
SharedRecords ReadRecords(const std::filesystem::path& folder) {
  OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service;
  *service.Out() = new ConfigurationService();
  const OrvelCalibrateS::IniFiles files([&service] { return service; }, folder.string());
  SharedRecords records;
  OrvelCalibrateS::LoadMachineRecords({files, records}, OrvelCalibrateS::FailureMode::Skip);
  return records;
}

}  // namespace

MachineDescription DescribeMachine(const std::filesystem::path& marivaneIni) {
  const SharedRecords records = ReadRecords(marivaneIni.parent_path());
  MachineDescription machine;
  machine.hasSlider = records.DeviceType.HasXAxis;
  machine.firmware = records.DeviceType.Firmware;
  for (const AxisSource& source : sources) {
    const AxisRecord& axis = records.*source.record;
    if (axis.Present) machine.axes[source.axis] = {axis.LowLimit, axis.HighLimit};
  }
  return machine;
}

}  // namespace Helmsway
