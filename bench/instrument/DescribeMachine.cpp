#include "bench/instrument/DescribeMachine.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <utility>

#include "addin/config/Calibration.h"
#include "addin/config/NestType.h"
#include "addin/config/Position.h"
#include "bench/instrument/InstalledFile.h"

namespace Helmsway {
namespace {

using OrvelCalibrateS::AxisRecord;
using OrvelCalibrateS::NestSlot;
using OrvelCalibrateS::NestType;
using OrvelCalibrateS::Position;
using OrvelCalibrateS::SharedRecords;
using OrvelCalibrateS::ZCalibration;
using AxisDescription = MachineDescription::AxisDescription;

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

std::vector<Position> PositionsOf(const InstalledFile& file) {
  return file.Catalogue([&](const std::string& item) { return ReadPosition(file.AsConfiguration(), item); },
                        &Position::DisplayName);
}

std::vector<NestType> NestsOf(const InstalledFile& file) {
  return file.Catalogue([&](const std::string& item) { return ReadNestType(file.AsConfiguration(), item); },
                        &NestType::Name);
}

void DescribeAxes(MachineDescription& machine, const SharedRecords& records) {
  for (const AxisSource& source : sources) {
    const AxisRecord& axis = records.*source.record;
    if (!axis.Present) continue;
    AxisDescription& described = machine.axes[source.axis];
    described.low = axis.LowLimit;
    described.high = axis.HighLimit;
    described.safePosition = axis.SafePosition;
    if (axis.SpeedB > 0) described.speed = axis.SpeedB;
    described.mmPerStep = axis.MmPerStep;
    described.moveSign = axis.MoveSign;
    described.offsetSign = axis.OffsetSign;
  }
  // The serial-dilute values of the file are mm, and the factor says how many motor steps that is.
  const double factor = OrvelCalibrateS::SDXYStepFactor(records.DeviceType);
  for (const Axis axis : {Axis::SdX, Axis::SdY}) {
    const auto found = machine.axes.find(axis);
    if (found != machine.axes.end()) found->second.mmPerStep = factor == 0 ? 0 : 1 / factor;
  }
}

void DescribeHeights(MachineDescription& machine, const ZCalibration& z) {
  machine.levels = {z.MountHeight, z.StageHeightUpper, z.StageHeightLower, z.DeltaZ};
  machine.headDepths = {
      z.HeadDepth_1ch_Short,     z.Headdepth_1ch_Long,        z.HeadDepth_8ch, z.HeadDepth_12ch, z.HeadDepth_96_384,
      z.HeadDepth_TeachTool_1Ch, z.HeadDepth_TeachTool_96_384};
}

/// A sum that 32 bits can't hold becomes the end of their range: a place that is out of every axis' reach.
std::int32_t Sum(std::int32_t base, std::int32_t offset) {
  using Limits = std::numeric_limits<std::int32_t>;
  const std::int64_t sum = std::int64_t{base} + offset;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(sum, Limits::min(), Limits::max()));
}

void DescribeSlots(MachineDescription& machine, const InstalledFile& file, const NestType& nest) {
  const Position position = ReadPosition(file.AsConfiguration(), "", nest.PositionName);
  if (position.DisplayName.empty()) return;
  const ZCalibration& z = file.Records().ZCalibration;
  const double nestDepth = machine.hasSlider ? z.NestDepth_XY_6 : z.NestDepth_Y;
  const double stage = position.LowerStage ? z.StageHeightLower : z.StageHeightUpper;
  for (const NestSlot* slot : {&nest.Slot1, &nest.Slot2, &nest.Slot3}) {
    if (!slot->Present) continue;
    machine.slots.push_back(
        {nest.Index, slot->SlotNumber, nest.Name + ", slot " + slot->SlotNumber, slot->HeadCode, slot->HeadName,
         Target{position.X, position.Y, Sum(position.SdX1, slot->OffsetX), Sum(position.SdY1, slot->OffsetY)},
         position.LowerStage, stage + nestDepth + slot->ZHeight * static_cast<double>(file.Records().AxisZ.MmPerStep)});
  }
}

void DescribeStage(MachineDescription& machine, const InstalledFile& file) {
  std::vector<std::string> nestPlaces;
  for (const NestType& nest : NestsOf(file)) {
    DescribeSlots(machine, file, nest);
    nestPlaces.push_back(nest.PositionName);
  }
  machine.ejectPlace = machine.hasSlider ? "STAGE6" : "STAGE2";
  for (const Position& position : PositionsOf(file)) {
    if (std::find(nestPlaces.begin(), nestPlaces.end(), position.Name) != nestPlaces.end()) continue;
    machine.places.push_back({position.Item, position.Name, position.DisplayName,
                              position.Kind == OrvelCalibrateS::TipRackKind, position.LowerStage,
                              Target{position.X, position.Y, position.SdX1, position.SdY1},
                              Target{position.X, position.Y, position.SdX8, position.SdY8},
                              Target{position.X, position.Y, position.SdX12, position.SdY12}});
    if (position.Name != machine.ejectPlace) continue;
    const auto calibration = ReadCalibration(file.AsConfiguration(), "", machine.ejectPlace);
    machine.ejectTarget = {position.X, position.Y, calibration.SdX, calibration.SdY};
  }
}

}  // namespace

MachineDescription DescribeMachine(const std::filesystem::path& marivaneIni) {
  const InstalledFile file(marivaneIni);
  const SharedRecords& records = file.Records();
  MachineDescription machine;
  machine.hasSlider = records.DeviceType.HasXAxis;
  machine.firmware = records.DeviceType.Firmware;
  machine.file = marivaneIni;
  DescribeAxes(machine, records);
  DescribeHeights(machine, records.ZCalibration);
  const OrvelCalibrateS::IniFiles& files = file.AsConfiguration().Files;
  machine.heads = file.Heads();
  machine.tips = file.Catalogue([&](const std::string& item) { return ReadTipType(files, item); }, &TipType::Name);
  machine.plates =
      file.Catalogue([&](const std::string& item) { return ReadPlateType(files, item); }, &PlateType::Name);
  DescribeStage(machine, file);
  machine.installedHead = records.Head.Index;
  machine.installedTip = records.Tip.Item;
  return machine;
}

std::vector<HeadType> ReadHeads(const std::filesystem::path& marivaneIni) { return InstalledFile(marivaneIni).Heads(); }

}  // namespace Helmsway
