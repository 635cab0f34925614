#include <gtest/gtest.h>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

/// The reads so far: one word for each read of an entry, of the Z calibration, of the axes and of the collision key.
std::string Loads(Wizard& wizard) {
  std::string loads;
  for (const std::string& read : wizard.Ini().Reads) {
    const std::string key = read.substr(read.find('/') + 1);
    const bool single = key == "MountHeight" || key == "Axis1" || key == "ZCollisionStatus";
    if (single || key == "Installed" || key.starts_with("Item")) loads += (single ? key : read) + " ";
  }
  return loads;
}

TEST(SequenceLoads, EachSequenceLoadsItsRecordsInTheOrderInWhichTheyBuildOnOneAnother) {
  const std::string machine =
      "MountHeight DeviceType/Installed DeviceType/Item2 ZCollisionStatus CageType/Installed CageType/Item1 Axis1 ";
  const auto installed = [&](const std::string& head) {
    return machine + "HeadType/Installed HeadType/Item" + head +
           " TipType/Installed TipType/Item0 NestType/Installed NestType/Item2 ";
  };
  const std::string selected = "HeadType/Item2 TipType/Item1 ";
  const std::string rack = machine + selected + "Position_2/Item1 PlateType/Item1 MountHeight ";
  const std::string positions = "Position_2/Item1 Position_2/Item2 Position_2/Item3 Position_2/Item4 ";
  using Row = std::tuple<std::int16_t, std::string>;
  const std::vector<Row> rows = {
      {5, installed("1")},
      {0, "HeadType/Item1 HeadType/Item2 "},
      {7, ""},
      {13, installed("1") + machine + "NestType/Item2 " + selected + positions + "MountHeight ZCollisionStatus "},
      {3, rack + rack + "ZCollisionStatus MountHeight "},
      {2, rack + "TipType/Installed TipType/Item0 MountHeight "},
      {12, machine + selected + positions + "MountHeight ZCollisionStatus "},
      {14, installed("0") + "NestType/Item2 " + positions + "HeadType/Item1 MountHeight "},
      {4, installed("0") + "HeadType/Installed HeadType/Item0 HeadType/Item1 " + positions + "Calibration_2/Item1 "},
  };
  Wizard wizard;
  wizard.ToMainPage();
  wizard.Form->Form().Get<forms::CheckBox>("chkStageEmpty").SetValue(1);
  wizard.Boxes.Answers = {forms::MessageAnswer::Ok};
  for (const auto& [button, loads] : rows) {
    wizard.Ini().Reads.clear();
    wizard.Form->cmdButton_Click(button);
    EXPECT_EQ(Loads(wizard), loads) << button;
  }
}

TEST(SequenceLoads, WhatIsNotPickedIsNotLoadedNotEvenAsInstalled) {
  Wizard wizard;
  wizard.ToMainPage();
  for (const char* list : {"cboNestType", "cboHeadType", "cboTipType", "cboPosition", "cboTipRack"}) {
    wizard.Form->Form().Get<forms::ComboBox>(list).Clear();
  }
  wizard.Forget();
  wizard.Form->cmdButton_Click(3);
  EXPECT_EQ(Loads(wizard).find("Installed", Loads(wizard).rfind("Axis1")), std::string::npos) << Loads(wizard);
  EXPECT_EQ(Loads(wizard).find("Position"), std::string::npos);
  EXPECT_EQ(Loads(wizard).find("Plate"), std::string::npos);
  wizard.Ini().Reads.clear();
  wizard.Form->cmdButton_Click(13);
  EXPECT_EQ(Loads(wizard).find("Type", Loads(wizard).rfind("Axis1")), std::string::npos) << Loads(wizard);
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
