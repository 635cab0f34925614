#include "addin/sequences/SelectedRecords.h"

#include "addin/base/Steps.h"
#include "addin/config/Conversions.h"
#include "addin/config/SValues.h"
#include "addin/sequences/HomeAll.h"

namespace OrvelCalibrateS {

std::string SelectedItem(const forms::ComboBox& list) {
  const auto item = list.ItemData(list.ListIndex());
  Require(item.has_value());
  return std::to_string(*item);
}

void LoadSelectedHead(SequenceContext& context) {
  Put(context.Configuration.Records.Head,
      [&] { return ReadHeadType(context.Configuration, SelectedItem(context.Selections.cboHeadType)); });
}

void LoadSelectedTip(SequenceContext& context) {
  Put(context.Configuration.Records.Tip,
      [&] { return ReadTipType(context.Configuration.Files, SelectedItem(context.Selections.cboTipType)); });
}

void LoadSelectedNest(SequenceContext& context) {
  Put(context.Configuration.Records.Nest,
      [&] { return ReadNestType(context.Configuration, SelectedItem(context.Selections.cboNestType)); });
}

Position SelectedPosition(const SequenceContext& context) {
  Position position;
  Put(position, [&] { return ReadPosition(context.Configuration, SelectedItem(context.Selections.cboPosition)); });
  return position;
}

PlateType SelectedTipRack(const SequenceContext& context) {
  PlateType plate;
  Put(plate, [&] { return ReadPlateType(context.Configuration.Files, SelectedItem(context.Selections.cboTipRack)); });
  return plate;
}

double CurrentSteps(const SequenceContext& context) {
  return SValueOnForm(context.Selections.txtCurrentCollect.Text());
}

bool ReadZCollision(const IniFiles& files) {
  bool zCollision = false;
  Put(zCollision, [&] { return Flag(files.ReadIni("DeviceType", "ZCollisionStatus", files.MarivaneIni(), "")); });
  return zCollision;
}

void HomeUnlessHomed(SequenceContext& context) {
  if (context.Flags.Homed) return;
  Skip([&] { HomeAll(context); });
  context.Flags.Homed = true;
}

}  // namespace OrvelCalibrateS
