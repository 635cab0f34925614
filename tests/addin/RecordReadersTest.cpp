#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "addin/config/ConfigurationLoad.h"
#include "addin/config/PlateType.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

using Testing::LineWith;
using Testing::otherFile;
using Testing::TestConfiguration;

DeviceType DeviceOf(TestConfiguration& machine) {
  std::string name;
  return ReadDeviceType(machine.Files, name);
}

TEST(DeviceTypeTest, TheItemIsTheOneAskedForOrTheInstalledOne) {
  TestConfiguration machine;
  machine.Ini.Set("DeviceType", {{"Installed", "2"}, {"Item2", "\"Device \"XY,True"}, {"Item4", "Four,1"}});
  std::string name;
  const DeviceType device = ReadDeviceType(machine.Files, name);
  EXPECT_EQ(std::tie(name, device.Name, device.Caption, device.HasXAxis), std::tuple("2", "2", "Device XY", true));
  name = "4";
  machine.Ini.Reads.clear();
  EXPECT_EQ(ReadDeviceType(machine.Files, name).Caption, "Four");
  EXPECT_EQ(machine.Ini.Reads.front(), "DeviceType/Item4") << "the installed one isn't looked up";
}

TEST(DeviceTypeTest, FlagsDifferInTheirDefaultAndInWhatTheyRead) {
  // The first flag is the value for an absent key, the second the value for "True".
  using Row = std::tuple<const char*, bool DeviceType::*, bool, bool>;
  for (const auto& [key, field, whenAbsent, word] :
       {Row{"UploadCalibrationData", &DeviceType::UploadCalibrationData, true, true},
        Row{"DownloadCalibrationData", &DeviceType::DownloadCalibrationData, true, true},
        Row{"ImportCalibrationData", &DeviceType::ImportCalibrationData, true, true},
        Row{"ExportCalibrationData", &DeviceType::ExportCalibrationData, true, true},
        Row{"SDXYEncoderStatus", &DeviceType::SDXYEncoderStatus, false, true},
        Row{"CollisionDetectEnableSDXY", &DeviceType::CollisionDetectEnableSDXY, false, false},
        Row{"SDXYCollisionStatus", &DeviceType::SDXYCollisionStatus, false, false},
        Row{"CollisionDetectEnableZ", &DeviceType::CollisionDetectEnableZ, false, false},
        Row{"ZCollisionStatus", &DeviceType::ZCollisionStatus, false, true},
        Row{"AxisCalibratedS", &DeviceType::AxisCalibratedS, false, true}}) {
    SCOPED_TRACE(key);
    TestConfiguration machine;
    EXPECT_EQ(DeviceOf(machine).*field, whenAbsent);
    for (const auto& [value, flag] : {std::pair("1", true), {"0", false}, {"True", word}, {"Y", false}}) {
      machine.Ini.Set("DeviceType", {{key, value}});
      EXPECT_EQ(DeviceOf(machine).*field, flag) << value;
    }
    machine.Ini.Set("DeviceType", {{key, ""}});
    EXPECT_FALSE(DeviceOf(machine).*field) << "no default stands in for a key that is there";
  }
}

TEST(DeviceTypeTest, TheFirmwareNumberJoinsThreePlaces) {
  using Row = std::tuple<const char*, const char*, std::int32_t>;
  for (const auto& [firmware, text, number] :
       {Row{"2.10.33", "2.10.33", 21033}, Row{"1.2.345", "1.2.345", 102345}, Row{"  1.2.3 ", "1.2.3", 10203},
        Row{"1.2b.3", "1.2b.3", 10203}, Row{"1..x", "1..x", 10000}, Row{"1.2.3.4", "1.2.3.4", 10203},
        Row{"1.2", "1.2", 0}, Row{"21.47.483647", "21.47.483647", 2147483647},
        Row{"21.47.483648", "21.47.483648", 0}}) {
    TestConfiguration machine;
    machine.Ini.Set("DeviceType", {{"Firmware", firmware}, {"AxisCalibratedXY", "1"}});
    const DeviceType device = DeviceOf(machine);
    EXPECT_EQ(std::tie(device.Firmware, device.FirmwareNumber), std::tie(text, number));
    EXPECT_TRUE(device.AxisCalibratedXY) << "the keys behind it are read";
  }
}

TEST(ZCalibrationTest, OneKeyHasADefaultAndAReadThatFailsEndsIt) {
  TestConfiguration machine;
  EXPECT_EQ(ReadZCalibration(machine.Files).MountHeight, 0);
  EXPECT_EQ(ReadZCalibration(machine.Files).DeltaZTolerance, 1000);
  machine.Ini.Set("Z_Calibration", {{"MountHeight", "12.5 mm"}, {"DeltaZTolerance", ""}});
  EXPECT_EQ(ReadZCalibration(machine.Files).MountHeight, 12.5);
  EXPECT_EQ(ReadZCalibration(machine.Files).DeltaZTolerance, 0) << "a key without a value is there";
  machine.Ini.ReadsFail = true;
  EXPECT_THROW(ReadZCalibration(machine.Files), StepFailed);
}

TEST(TipTypeTest, WholeNumbersTakeTheEvenNeighbourWithinTheirRange) {
  TestConfiguration machine;
  machine.Ini.Set("TipType", {{"Item3", "\"Tip A\",X,,,40000,-3,,3.5,2.5,3e9,51.3 mm"}});
  const TipType tip = ReadTipType(machine.Files, "3");
  EXPECT_EQ(std::tie(tip.Name, tip.Place4, tip.Place5, tip.EjectHeight, tip.CollectDepth, tip.Place9, tip.TipLength),
            std::tuple("Tip A", 0, -3, 4, 2, 0, 51.3));
  EXPECT_EQ(tip.TipChuteClearOffset, 12.5);
}

TEST(TipTypeTest, ItemAndLineFollowTheFileArgumentAndTheKeyNeverDoes) {
  TestConfiguration machine;
  machine.Ini.Set("TipType", {{"Item", "bare"}, {"TipChuteClearOffset", "20.5"}});
  machine.Ini.Helmsway = {
      {{"TIPTYPE", "INSTALLED"}, "9"}, {{"TIPTYPE", "ITEM9"}, "other"}, {{"TIPTYPE", "TIPCHUTECLEAROFFSET"}, "8"}};
  const TipType other = ReadTipType(machine.Files, "", otherFile);
  EXPECT_EQ(std::tie(other.Item, other.Name, other.TipChuteClearOffset), std::tuple("9", "other", 20.5));
  EXPECT_EQ(ReadTipType(machine.Files).Name, "bare") << "nothing installed: the key is the bare word";
  machine.Ini.Set("TipType", {{"Installed", "0"}, {"TipChuteClearOffset", "20.5mm"}});
  const TipType noTip = ReadTipType(machine.Files);
  EXPECT_EQ(std::tie(noTip.Item, noTip.Name, noTip.TipChuteClearOffset), std::tuple("0", "", 0.0));
  machine.Ini.ReadsFail = true;
  EXPECT_EQ(ReadTipType(machine.Files).TipChuteClearOffset, 0) << "no default where the read fails";
}

TEST(PlateTypeTest, ANumberIsReadStrictly) {
  using Row = std::tuple<const char*, double, std::int16_t>;
  for (const auto& [text, plateHeight, place2] :
       {Row{"14.4 mm", 0, 0}, Row{"", 0, 0}, Row{"\"14\"", 0, 0}, Row{"2.5", 2.5, 2}, Row{"3.5", 3.5, 4},
        Row{" 6\t", 6, 6}, Row{"1 6", 0, 0}, Row{"40000", 40000, 0}}) {
    SCOPED_TRACE(text);
    TestConfiguration test;
    test.Ini.Set("PlateType", {{"Item1", LineWith(4, text) + ",5"}, {"Item2", LineWith(2, text) + ",5"}});
    const PlateType plate = ReadPlateType(test.Files, "1");
    EXPECT_EQ(std::tie(plate.PlateHeight, plate.Place5), std::tuple(plateHeight, 5.0));
    const PlateType whole = ReadPlateType(test.Files, "2");
    EXPECT_EQ(std::tie(whole.Place2, whole.Place3), std::tuple(place2, 5)) << "the place behind it is read";
  }
}

TEST(PlateTypeTest, AnEmptyItemIsNotTheInstalledOne) {
  TestConfiguration test;
  test.Ini.Set("PlateType", {{"Installed", "1"}, {"Item1", "A"}, {"Item", "bare"}});
  EXPECT_EQ(ReadPlateType(test.Files, "").Name, "bare");
}

/// A machine in which each record depends on the records that are loaded before it.
struct LoadedMachine : TestConfiguration {
  LoadedMachine() {
    Ini.Set("Z_Calibration", {{"TipMountDepth125", "9.5"}});
    Ini.Set("DeviceType", {{"Installed", "2"}, {"Item2", "D,True"}, {"SDXYEncoderMMStepFactorOff", "80"}});
    Ini.Set("CageType", {{"Installed", "1"}});
    Ini.Set("Device_Type2_Cage1", {{"Axis1", "S,0.5"}, {"Axis2", "Z,0.25"}, {"Axis3", "SDX,40"}});
    Ini.Set("HeadType", {{"Installed", "3"}, {"Item3", "H,SERIALDILUTE,,125"}, {"SDTeachToolOffsetMM", "10"}});
    Ini.Set("TipType", {{"Installed", "4"}});
    Ini.Set("NestType", {{"Installed", "5"}, {"Item5", "N,P,A,B,0,1.5,0,2"}});
    LoadInstalledRecords(Config, FailureMode::PassUp);
  }
};

TEST(ConfigurationLoadTest, EachRecordIsLoadedBehindThoseThatItDrawsOn) {
  const LoadedMachine machine;
  const SharedRecords& records = machine.Records;
  EXPECT_EQ(std::tie(records.AxisSDX.MmPerStep, records.Head.TipMountDepth, records.Head.SDTeachToolOffset),
            std::tuple(0.5F, 9.5, 20.0));
  EXPECT_EQ(std::tie(records.Nest.Slot1.OffsetX, records.Nest.Slot1.ZHeight), std::tuple(120, 8));
}

TEST(ConfigurationLoadTest, AFileThatCannotBeReadEndsAPassUpLoadAtItsFirstRecord) {
  LoadedMachine machine;
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
  EXPECT_EQ(files.HelmswayIni(), "/addin/Helmsway.ini");
  EXPECT_THROW(files.ReadIni("S", "K", "F", "D"), StepFailed);
  EXPECT_THROW(files.WriteIni("S", "K", "F", "V"), StepFailed);
  EXPECT_THROW(files.SplitText(",", "a"), StepFailed);
}

}  // namespace
}  // namespace OrvelCalibrateS
