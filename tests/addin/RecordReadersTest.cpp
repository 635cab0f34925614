#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "addin/config/ConfigurationLoad.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

using Testing::ExpectFlagsAtPlaces;
using Testing::otherFile;
using Testing::TestConfiguration;

TEST(DeviceTypeTest, ALineAndKeysMakeTheRecord) {
  TestConfiguration machine;
  machine.Ini.Set("DeviceType", {{"Installed", "2"},
                                 {"Item2", "\"Device \"XY,True,\"Text\""},
                                 {"Item4", "Four,1"},
                                 {"SDXYEncoderMMStepFactorOn", "80.5x"},
                                 {"SDXYEncoderMMStepFactorOff", "40"}});
  std::string name;
  const DeviceType device = ReadDeviceType(machine.Files, name);
  EXPECT_EQ(name, "2");
  EXPECT_EQ(std::tie(device.Name, device.Caption, device.HasXAxis, device.ItemText),
            std::tuple("2", "Device XY", true, "Text"));
  EXPECT_EQ(std::tie(device.SDXYEncoderMMStepFactorOn, device.SDXYEncoderMMStepFactorOff), std::tuple(80.5, 40.0));
  EXPECT_EQ(SDXYStepFactor(device), 40) << "the encoder's status is missing";
  machine.Ini.Set("DeviceType", {{"SDXYEncoderStatus", "1"}});
  EXPECT_EQ(SDXYStepFactor(ReadDeviceType(machine.Files, name)), 80.5);

  name = "4";
  machine.Ini.Reads.clear();
  EXPECT_EQ(ReadDeviceType(machine.Files, name).Caption, "Four");
  EXPECT_EQ(name, "4");
  EXPECT_EQ(machine.Ini.Reads.front(), "DeviceType/Item4") << "the installed one isn't looked up";
}

TEST(DeviceTypeTest, EachKeyReachesItsFlag) {
  enum class Reads { Words, NumbersOnly };
  struct Row {
    const char* key;
    bool DeviceType::*field;
    bool whenAbsent = false;
    Reads reads = Reads::Words;
  };
  const Row rows[] = {
      {"UploadCalibrationData", &DeviceType::UploadCalibrationData, true},
      {"DownloadCalibrationData", &DeviceType::DownloadCalibrationData, true},
      {"ImportCalibrationData", &DeviceType::ImportCalibrationData, true},
      {"ExportCalibrationData", &DeviceType::ExportCalibrationData, true},
      {"SDXYEncoderStatus", &DeviceType::SDXYEncoderStatus},
      {"CollisionDetectEnableZ", &DeviceType::CollisionDetectEnableZ, false, Reads::NumbersOnly},
      {"ZCollisionStatus", &DeviceType::ZCollisionStatus},
      {"CollisionDetectEnableSDXY", &DeviceType::CollisionDetectEnableSDXY, false, Reads::NumbersOnly},
      {"SDXYCollisionStatus", &DeviceType::SDXYCollisionStatus, false, Reads::NumbersOnly},
      {"AxisCalibratedXY", &DeviceType::AxisCalibratedXY},
      {"AxisCalibratedZ", &DeviceType::AxisCalibratedZ},
      {"AxisCalibratedSDXY", &DeviceType::AxisCalibratedSDXY},
      {"AxisCalibratedSDNest", &DeviceType::AxisCalibratedSDNest},
      {"AxisCalibratedS", &DeviceType::AxisCalibratedS},
      {"MicrotiterIsCalibrated", &DeviceType::MicrotiterIsCalibrated},
      {"SerialDiluteIsCalibrated", &DeviceType::SerialDiluteIsCalibrated},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.key);
    const auto flagFrom = [&](const char* value) {
      TestConfiguration machine;
      machine.Ini.Set("DeviceType", {{row.key, value}});
      std::string name;
      const DeviceType device = ReadDeviceType(machine.Files, name);
      EXPECT_EQ(std::tie(device.Name, device.Caption, device.Firmware), std::tuple("", "", ""));
      for (const Row& other : rows) {
        if (other.key == row.key) continue;
        EXPECT_EQ(device.*other.field, other.whenAbsent) << other.key;
      }
      return device.*row.field;
    };
    EXPECT_TRUE(flagFrom("1"));
    EXPECT_FALSE(flagFrom("0"));
    EXPECT_EQ(flagFrom("True"), row.reads == Reads::Words);
    EXPECT_FALSE(flagFrom("")) << "no default stands in for a key that is there";
    EXPECT_FALSE(flagFrom("Y"));
  }
}

TEST(DeviceTypeTest, TheFirmwareNumberJoinsThreePlaces) {
  struct Row {
    const char* firmware;
    const char* text;
    std::int32_t number;
  };
  for (const Row& row :
       {Row{"1.2.3", "1.2.3", 10203}, Row{"2.10.33", "2.10.33", 21033}, Row{"1.2.345", "1.2.345", 102345},
        Row{"  1.2.3 ", "1.2.3", 10203}, Row{"0.0.7", "0.0.7", 7}, Row{"10.0.0", "10.0.0", 100000},
        Row{"1.2b.3", "1.2b.3", 10203}, Row{"1..x", "1..x", 10000}, Row{"1.2.3.4", "1.2.3.4", 10203},
        Row{"1.2.", "1.2.", 10200}, Row{"1.2", "1.2", 0}, Row{"7", "7", 0}, Row{"", "", 0},
        Row{"21.47.483647", "21.47.483647", 2147483647}, Row{"21.47.483648", "21.47.483648", 0}}) {
    SCOPED_TRACE(row.firmware);
    TestConfiguration machine;
    machine.Ini.Set("DeviceType", {{"Firmware", row.firmware}, {"AxisCalibratedXY", "1"}});
    std::string name;
    const DeviceType device = ReadDeviceType(machine.Files, name);
    EXPECT_EQ(std::tie(device.Firmware, device.FirmwareNumber), std::tie(row.text, row.number));
    EXPECT_TRUE(device.AxisCalibratedXY);
  }
}

TEST(CageTypeTest, ALineAndKeysMakeTheRecord) {
  TestConfiguration machine;
  machine.Ini.Set("CageType", {{"Installed", "1"},
                               {"Item1", "\"Cage\",\"text\",,,,4.5,6.5,-7.5,8"},
                               {"CageReleaseBarHeight", "13.5"},
                               {"CageReleaseHeight", "12.5"}});
  const CageType cage = ReadCageType(machine.Files);
  EXPECT_EQ(std::tie(cage.Name, cage.Caption, cage.Place1), std::tuple("1", "Cage", "\"text\""));
  EXPECT_EQ(
      std::tie(cage.CageReleaseBarHeight, cage.CageReleaseHeight, cage.Place5, cage.Place6, cage.Place7, cage.Place8),
      std::tuple(14, 12, 4, 6, -8, 8));
  ExpectFlagsAtPlaces<CageType>({{2, &CageType::Place2}, {3, &CageType::Place3}, {4, &CageType::Place4}},
                                [&](const std::string& line) {
                                  machine.Ini.Set("CageType", {{"Item7", line}});
                                  return ReadCageType(machine.Files, "7");
                                });
}

TEST(ZCalibrationTest, EachKeyReachesItsField) {
  const std::vector<const char*> keys{"MountHeight",
                                      "StageHeightLower",
                                      "StageHeightUpper",
                                      "HeadDepth_1ch_Short",
                                      "Headdepth_1ch_Long",
                                      "HeadDepth_8ch",
                                      "HeadDepth_12ch",
                                      "HeadDepth_96_384",
                                      "HeadDepth_TeachTool_1Ch",
                                      "HeadDepth_TeachTool_96_384",
                                      "NestDepth_Y",
                                      "NestDepth_XY_6",
                                      "TipMountDepth12",
                                      "TipMountDepth30",
                                      "TipMountDepth125",
                                      "TipMountDepth300",
                                      "TipMountDepth1250",
                                      "CalibrationPlateDepth",
                                      "DeltaZ",
                                      "DeltaZTolerance"};
  const auto valuesOf = [](const ZCalibration& z) {
    return std::vector{z.MountHeight,
                       z.StageHeightLower,
                       z.StageHeightUpper,
                       z.HeadDepth_1ch_Short,
                       z.Headdepth_1ch_Long,
                       z.HeadDepth_8ch,
                       z.HeadDepth_12ch,
                       z.HeadDepth_96_384,
                       z.HeadDepth_TeachTool_1Ch,
                       z.HeadDepth_TeachTool_96_384,
                       z.NestDepth_Y,
                       z.NestDepth_XY_6,
                       z.TipMountDepth12,
                       z.TipMountDepth30,
                       z.TipMountDepth125,
                       z.TipMountDepth300,
                       z.TipMountDepth1250,
                       z.CalibrationPlateDepth,
                       z.DeltaZ,
                       z.DeltaZTolerance};
  };
  TestConfiguration machine;
  std::vector<double> expected(keys.size(), 0);
  expected.back() = 1000;
  EXPECT_EQ(valuesOf(ReadZCalibration(machine.Files)), expected);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    machine.Ini.Set("Z_Calibration", {{keys[i], std::to_string(i + 12) + ".5 mm"}});
    expected[i] = static_cast<double>(i) + 12.5;
  }
  EXPECT_EQ(valuesOf(ReadZCalibration(machine.Files)), expected);
  machine.Ini.Set("Z_Calibration", {{"DeltaZTolerance", ""}});
  EXPECT_EQ(ReadZCalibration(machine.Files).DeltaZTolerance, 0) << "a key without a value is there";
  machine.Ini.ReadsFail = true;
  EXPECT_THROW(ReadZCalibration(machine.Files), StepFailed);
}

TEST(TipTypeTest, ALineAndAKeyMakeTheRecord) {
  TestConfiguration machine;
  machine.Ini.Set("TipType", {{"Item3",
                               "\"Tip A\",SERIALDILUTE,2.5,3.25mm,4.5,5.5,,3.5,2.5,9.5,51.3,-11.5,,,,,,,"
                               "\"Text\",19.75"},
                              {"Item4", "B,,,,40000,-3,,,,3e9,x"}});
  const TipType tip = ReadTipType(machine.Files, "3");
  EXPECT_EQ(std::tie(tip.Item, tip.Name, tip.Kind, tip.Place18), std::tuple("3", "Tip A", "SERIALDILUTE", "Text"));
  EXPECT_EQ(std::tie(tip.Place2, tip.Place3, tip.TipLength, tip.TipChuteClearOffset, tip.Place19),
            std::tuple(2.5, 3.25, 51.3, 12.5, 19.75));
  EXPECT_EQ(std::tie(tip.Place4, tip.Place5, tip.EjectHeight, tip.CollectDepth, tip.Place9, tip.Place11),
            std::tuple(4, 6, 4, 2, 10, -12));
  EXPECT_EQ(machine.Ini.Reads, (std::vector<std::string>{"TipType/Item3", "TipType/TipChuteClearOffset"}));
  const TipType outside = ReadTipType(machine.Files, "4");
  EXPECT_EQ(std::tie(outside.Place4, outside.Place5, outside.Place9, outside.TipLength), std::tuple(0, -3, 0, 0.0));
  ExpectFlagsAtPlaces<TipType>({{6, &TipType::Place6},
                                {12, &TipType::Place12},
                                {13, &TipType::Place13},
                                {14, &TipType::Place14},
                                {15, &TipType::Place15},
                                {16, &TipType::Place16},
                                {17, &TipType::Place17}},
                               [&](const std::string& line) {
                                 machine.Ini.Set("TipType", {{"Item7", line}});
                                 return ReadTipType(machine.Files, "7");
                               });
}

TEST(TipTypeTest, NoTipIsARecordWithoutAName) {
  TestConfiguration machine;
  machine.Ini.Set("TipType", {{"Installed", "0"}, {"Item", "bare"}, {"TipChuteClearOffset", "20.5"}});
  const TipType noTip = ReadTipType(machine.Files);
  EXPECT_EQ(std::tie(noTip.Item, noTip.Name, noTip.TipChuteClearOffset), std::tuple("0", "", 20.5));
  machine.Ini.Marivane.erase({"TIPTYPE", "INSTALLED"});
  EXPECT_EQ(ReadTipType(machine.Files).Name, "bare") << "the key is the bare word";
  for (const char* value : {"", "20.5mm"}) {
    machine.Ini.Set("TipType", {{"TipChuteClearOffset", value}});
    EXPECT_EQ(ReadTipType(machine.Files).TipChuteClearOffset, 0) << value;
  }
  machine.Ini.ReadsFail = true;
  EXPECT_EQ(ReadTipType(machine.Files).TipChuteClearOffset, 0) << "no default where the read fails";

  machine.Ini.ReadsFail = false;
  machine.Ini.Set("TipType", {{"TipChuteClearOffset", "7"}});
  machine.Ini.Helmsway = {
      {{"TIPTYPE", "INSTALLED"}, "9"}, {{"TIPTYPE", "ITEM9"}, "other"}, {{"TIPTYPE", "TIPCHUTECLEAROFFSET"}, "8"}};
  const TipType other = ReadTipType(machine.Files, "", otherFile);
  EXPECT_EQ(std::tie(other.Item, other.Name, other.TipChuteClearOffset), std::tuple("9", "other", 7.0));
}

/// A machine each of whose records is worked out from the ones that are loaded ahead of it.
struct LoadedMachine : TestConfiguration {
  LoadedMachine() {
    Ini.Set("Z_Calibration", {{"TipMountDepth125", "9.5"}});
    Ini.Set("DeviceType", {{"Installed", "2"}, {"Item2", "D,True"}, {"SDXYEncoderMMStepFactorOff", "80"}});
    Ini.Set("CageType", {{"Installed", "1"}});
    Ini.Set("Device_Type2_Cage1", {{"Axis1", "S,0.5"}, {"Axis2", "Z,0.25"}, {"Axis3", "SDX,40"}});
    Ini.Set("HeadType", {{"Installed", "3"}, {"Item3", "H,SERIALDILUTE,,125"}, {"SDTeachToolOffsetMM", "10"}});
    Ini.Set("TipType", {{"Installed", "4"}});
    Ini.Set("NestType", {{"Installed", "5"}, {"Item5", "N,P,A,B,0,1.5,0,2"}});
  }
};

TEST(ConfigurationLoadTest, EachRecordIsLoadedBehindThoseThatItDrawsOn) {
  LoadedMachine machine;
  LoadInstalledRecords(machine.Config, FailureMode::PassUp);
  const SharedRecords& records = machine.Records;
  EXPECT_EQ(std::tie(records.DeviceType.Name, records.CageType.Name, records.Head.Index, records.Tip.Item,
                     records.Nest.Index),
            std::tuple("2", "1", "3", "4", "5"));
  EXPECT_EQ(std::tie(records.AxisSDX.MmPerStep, records.Head.TipMountDepth, records.Head.SDTeachToolOffset),
            std::tuple(0.5F, 9.5, 20.0));
  EXPECT_EQ(std::tie(records.Nest.Slot1.OffsetX, records.Nest.Slot1.ZHeight), std::tuple(120, 8));
  std::vector<std::string> sections;
  for (const std::string& read : machine.Ini.Reads) {
    const std::string section = UpperCased(read.substr(0, read.find('/')));
    if (sections.empty() || sections.back() != section) sections.push_back(section);
  }
  EXPECT_EQ(sections, (std::vector<std::string>{"Z_CALIBRATION", "DEVICETYPE", "CAGETYPE", "DEVICE_TYPE2_CAGE1",
                                                "HEADTYPE", "TIPTYPE", "NESTTYPE"}));
}

TEST(ConfigurationLoadTest, AFileThatCannotBeReadEndsAPassUpLoadAtItsFirstRecord) {
  LoadedMachine machine;
  LoadInstalledRecords(machine.Config, FailureMode::PassUp);
  machine.Ini.ReadsFail = true;
  EXPECT_THROW(LoadInstalledRecords(machine.Config, FailureMode::PassUp), StepFailed);
  EXPECT_EQ(machine.Records.DeviceType.Name, "2");
  LoadInstalledRecords(machine.Config, FailureMode::Skip);
  const SharedRecords& records = machine.Records;
  EXPECT_EQ(records.ZCalibration.TipMountDepth125, 9.5) << "no record came back";
  EXPECT_EQ(std::tie(records.DeviceType.Name, records.DeviceType.UploadCalibrationData, records.AxisS.Present,
                     records.Head.Index, records.Tip.Item, records.Nest.Slot2.SlotNumber),
            std::tuple("", false, false, "", "", "2"));
}

TEST(ConfigurationLoadTest, WithoutAServiceEveryStepFails) {
  const IniFiles files([] { return Ref<HelmswayCmds::IIniService>(); }, "/addin");
  EXPECT_EQ(files.MarivaneIni(), "/addin/Marivane.ini");
  EXPECT_EQ(files.HelmswayIni(), "/addin/Helmsway.ini");
  EXPECT_THROW(files.ReadIni("S", "K", "F", "D"), StepFailed);
  EXPECT_THROW(files.WriteIni("S", "K", "F", "V"), StepFailed);
  EXPECT_THROW(files.SplitText(",", "a"), StepFailed);
  EXPECT_EQ(ReadTipType(files, "3").Item, "3");
}

}  // namespace
}  // namespace OrvelCalibrateS
