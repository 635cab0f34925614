#include "addin/config/ConfigurationLoad.h"

#include "addin/config/AxisData.h"

namespace OrvelCalibrateS {

void LoadMachineRecords(const Configuration& configuration, FailureMode mode) {
  const IniFiles& files = configuration.Files;
  SharedRecords& records = configuration.Records;
  Run(mode, [&] { records.ZCalibration = ReadZCalibration(files); });
  std::string installedDevice;
  records.DeviceType = ReadDeviceType(files, installedDevice);
  records.CageType = ReadCageType(files);
  ReadAxisData(configuration);
}

void LoadInstalledRecords(const Configuration& configuration, FailureMode mode) {
  SharedRecords& records = configuration.Records;
  LoadMachineRecords(configuration, mode);
  records.Head = ReadHeadType(configuration);
  records.Tip = ReadTipType(configuration.Files);
  records.Nest = ReadNestType(configuration);
}

}  // namespace OrvelCalibrateS
