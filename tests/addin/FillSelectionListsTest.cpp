#include <gtest/gtest.h>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

const std::string retrieving = "status Retrieving configuration settings from Marivane\n";

/// Entries with their item data, a star at the selected one: "Nest A=1, *Nest B=2".
std::string List(Wizard& wizard, std::string_view name) {
  const forms::ControlId list = wizard.Find(name);
  const forms::ControlState state = wizard.Screen().State(list);
  std::string text;
  for (std::int32_t i = 0; i < state.listCount; ++i) {
    text += (i == 0 ? "" : ", ") + std::string(i == state.listIndex ? "*" : "");
    text += std::string(wizard.Screen().Entry(list, i)) + "=" + std::to_string(wizard.Screen().ItemData(list, i));
  }
  return text;
}

Lines AllLists(Wizard& wizard) {
  Lines lists;
  for (const char* name : {"cboNestType", "cboHeadType", "cboPosition", "cboTipRack", "cboTipType", "cboCollectStep"}) {
    lists.push_back(List(wizard, name));
  }
  lists.push_back(wizard.CurrentSteps());
  return lists;
}

// clang-format off
const std::string stepSizes = "0.1 mm=0, 1 mm=0";
const Lines asInstalled = {"Nest A=1, *Nest B=2", "*8 Channel=2, 1 Channel=4", "*Left rack=1, Right rack=3",
                           "*Rack A=1, Rack B=5", "Tip A=1, *Tip D=4", "*" + stepSizes, "500"};
// clang-format on
const Lines untouched = {"", "", "", "", "", stepSizes, ""};
const Lines withoutFile = {"", "", "", "", "", "*" + stepSizes, ""};

TEST(FillSelectionLists, EachCatalogueMayHoldSurprises) {
  using Row = std::tuple<const char*, Given, const char*, const char*>;
  // clang-format off
  const std::vector<Row> rows = {
      {"a head that isn't listed", Key("HeadType", "Installed", "1"), "cboHeadType", "*8 Channel=2, 1 Channel=4"},
      {"the name in any letter case, at its first entry", Key("NestType", "Item1", "NEST B"),
       "cboNestType", "*NEST B=1, Nest B=2"},
      {"a kind that isn't the whole word", Key("Position_2", "Item3", "S,Bin,TIPRACKS"), "cboPosition", "*Left rack=1"},
      {"a gap ends the positions", Key("Position_2", "Item2", ""), "cboPosition", "*Left rack=1"},
      {"a rack without a name is listed, then ends them", Key("Position_2", "Item2", "STAGE2,\"\",TIPRACK"),
       "cboPosition", "*Left rack=1, =2"},
      {"the positions belong to the device", Key("DeviceType", "Installed", "3"), "cboPosition", ""},
  };
  // clang-format on
  for (const auto& [name, given, list, expected] : rows) {
    SCOPED_TRACE(name);
    Wizard wizard;
    given(wizard);
    wizard.Press(10);
    EXPECT_EQ(List(wizard, list), expected);
  }
}

TEST(FillSelectionLists, TheFirstSerialDiluteHeadGivesTheValueOnRecord) {
  using Row = std::tuple<const char*, Given, const char*>;
  const auto head2 = [](const char* line) { return Key("HeadType", "Item2", line); };
  const Given reversed = [](Wizard& wizard) { wizard.SetAxisS("0.05", "-1,1"); };
  // clang-format off
  const std::vector<Row> rows = {
      {"the sign is that of a Down step", reversed, "700"},
      {"a negative value", head2("A,SERIALDILUTE,,,,,,,,,,,-250"), "-350"},
      {"a head without a name counts when it is of that kind", head2(",SERIALDILUTE,,,,,,,,,,,300"), "200"},
      {"behind a head without a name nothing is looked at", Key("HeadType", "Item1", ""), "before"},
      {"no such head leaves the value", Both(head2("A,MICROTITER"), Key("HeadType", "Item4", "B,CALIBRATE")), "before"},
  };
  // clang-format on
  for (const auto& [name, given, steps] : rows) {
    SCOPED_TRACE(name);
    Wizard wizard;
    given(wizard);
    wizard.Form->Form().Get<forms::TextBox>("txtCurrentCollect").SetText("before");
    wizard.Press(10);
    EXPECT_EQ(wizard.CurrentSteps(), steps);
  }
}

TEST(FillSelectionLists, ARefillForgetsPicksAndUnsavedSteps) {
  Wizard wizard;
  wizard.ToMainPage();
  for (const char* list : {"cboHeadType", "cboPosition", "cboTipRack", "cboTipType"}) wizard.Pick(list, 1);
  wizard.Pick("cboNestType", 0);
  wizard.Pick("cboCollectStep", 1);
  for (const std::int16_t button : std::vector<std::int16_t>{7, 5, 14}) wizard.Press(button);
  EXPECT_EQ(wizard.CurrentSteps(), "520");
  wizard.Press(9);
  Lines expected = asInstalled;  // but now the teach tool is installed, without a tip: neither is listed
  expected[4] = "*Tip A=1, Tip D=4";
  EXPECT_EQ(AllLists(wizard), expected);
  EXPECT_FALSE(wizard.Form->Flags().Homed) << "the selections changed";
}

TEST(RetrieveConfiguration, AsksTheInstrumentAndFillsTheListsUnlessStopped) {
  const std::string ordinary = "stop False\n" + retrieving + Line("REV") + "changed False\nstatus \n";
  using Row = std::tuple<const char*, Given, std::string, Lines>;
  // clang-format off
  const std::vector<Row> rows = {
      {"all goes well", Nothing, ordinary, asInstalled},
      {"a refusal doesn't matter", Refuse("REV"), ordinary, asInstalled},
      {"a Stop: empty lists", StopDuring("REV"), "stop False\n" + retrieving + StoppedLine("REV") + "status \n",
       untouched},
      {"no link: a Stop not read is none", LinkDown, retrieving + "changed False\nstatus \n", asInstalled},
      {"no status panel", NoStatusPanel, "stop False\n" + Line("REV") + "changed False\n", asInstalled},
      {"no host window", NoHostWindow, "stop False\n" + retrieving + Line("REV") + "status \n", asInstalled},
      {"the file can't be read", ReadsFail, ordinary, withoutFile},
      // Without a filter a failed test admits the entry: the nests appear as entries without a name.
      {"nothing can be split", SplitsFail, ordinary, {"*=1, =2", "", "", "", "", "*" + stepSizes, ""}},
  };
  // clang-format on
  for (const auto& [name, given, transcript, lists] : rows) {
    SCOPED_TRACE(name);
    Wizard wizard;
    given(wizard);
    EXPECT_TRUE(wizard.Press(10));
    EXPECT_EQ(wizard.Transcript(), transcript);
    EXPECT_EQ(AllLists(wizard), lists);
    EXPECT_EQ(wizard.Records.DeviceType.HasXAxis, lists == asInstalled) << "the shared records go with the lists";
    EXPECT_EQ(wizard.VisiblePanels(), "fraWarning");
  }
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
