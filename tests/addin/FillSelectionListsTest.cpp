#include <gtest/gtest.h>

#include <functional>

#include "tests/support/WizardFixture.h"

namespace OrvelCalibrateS::Testing {
namespace {

const std::string retrieving = "status Retrieving configuration settings from Marivane\n";

/// Entries with their item data, a star at the selected one: "Nest A=1, *Nest B=2".
std::string List(Wizard& wizard, std::string_view name) {
  const forms::ControlId list = wizard.Screen().Find(name, forms::NoIndex);
  const forms::ControlState state = wizard.Screen().State(list);
  std::string text;
  for (std::int32_t i = 0; i < state.listCount; ++i) {
    text += (i == 0 ? "" : ", ") + std::string(i == state.listIndex ? "*" : "");
    text += std::string(wizard.Screen().Entry(list, i)) + "=" + std::to_string(wizard.Screen().ItemData(list, i));
  }
  return text;
}

const std::vector<const char*> filledLists = {"cboNestType", "cboHeadType", "cboPosition", "cboTipRack", "cboTipType"};

Lines AllLists(Wizard& wizard) {
  Lines lists;
  for (const char* name : filledLists) lists.push_back(List(wizard, name));
  lists.push_back(List(wizard, "cboCollectStep"));
  lists.push_back(wizard.CurrentSteps());
  return lists;
}

const Lines asInstalled = {"Nest A=1, *Nest B=2",
                           "*8 Channel=2, 1 Channel=4",
                           "*Left rack=1, Right rack=3",
                           "*Rack A=1, Rack B=5",
                           "Tip A=1, *Tip D=4",
                           "*0.1 mm=0, 1 mm=0",
                           "500"};
const Lines untouched = {"", "", "", "", "", "0.1 mm=0, 1 mm=0", ""};
const Lines withoutFile = {"", "", "", "", "", "*0.1 mm=0, 1 mm=0", ""};

TEST(FillSelectionLists, TheListsOfferTheCataloguesWithTheInstalledEntriesSelected) {
  Wizard wizard;
  EXPECT_EQ(AllLists(wizard), untouched);
  EXPECT_TRUE(wizard.Press(10));
  EXPECT_EQ(AllLists(wizard), asInstalled);
}

TEST(FillSelectionLists, ReadsTheRecordsFirstAndThenTheLists) {
  Wizard wizard;
  wizard.Forget();
  wizard.Press(10);
  Lines sections;
  for (const std::string& read : wizard.Ini().Reads) {
    const std::string section = UpperCased(read.substr(0, read.find('/')));
    if (sections.empty() || sections.back() != section) sections.push_back(section);
  }
  EXPECT_EQ(sections, (Lines{"Z_CALIBRATION", "DEVICETYPE", "CAGETYPE", "DEVICE_TYPE2_CAGE1", "HEADTYPE", "TIPTYPE",
                             "NESTTYPE",  // the shared records
                             "HEADTYPE",  // the value on record
                             "NESTTYPE", "HEADTYPE", "POSITION_2", "PLATETYPE", "TIPTYPE"}));
}

TEST(FillSelectionLists, EachCatalogueMayHoldSurprises) {
  struct Row {
    const char* name;
    std::function<void(FakeIniService&)> given;
    const char* list;
    const char* expected;
  };
  const std::vector<Row> rows = {
      {"a name that isn't listed selects the first entry",
       [](FakeIniService& ini) {
         ini.Set("HeadType", {{"Installed", "1"}});
       },
       "cboHeadType", "*8 Channel=2, 1 Channel=4"},
      {"nothing installed selects the first entry",
       [](FakeIniService& ini) {
         ini.Set("TipType", {{"Installed", "0"}});
       },
       "cboTipType", "*Tip A=1, Tip D=4"},
      {"the installed name is found in any letter case, at its first entry",
       [](FakeIniService& ini) {
         ini.Set("NestType", {{"Item1", "NEST B"}});
       },
       "cboNestType", "*NEST B=1, Nest B=2"},
      {"no plate that is a tip rack",
       [](FakeIniService& ini) {
         ini.Set("PlateType", {{"Item1", ""}, {"Item5", ""}});
       },
       "cboTipRack", ""},
      {"no position with a tip rack",
       [](FakeIniService& ini) {
         ini.Set("Position_2", {{"Item1", "S,Plate,PLATE"}, {"Item3", "S,Bin,TIPRACKS"}});
       },
       "cboPosition", ""},
      {"a gap ends the positions",
       [](FakeIniService& ini) {
         ini.Set("Position_2", {{"Item2", ""}});
       },
       "cboPosition", "*Left rack=1"},
      {"a tip rack without a name is listed before it ends the positions",
       [](FakeIniService& ini) {
         ini.Set("Position_2", {{"Item2", "STAGE2,\"\",TIPRACK"}});
       },
       "cboPosition", "*Left rack=1, =2"},
      {"the positions belong to the device",
       [](FakeIniService& ini) {
         ini.Set("DeviceType", {{"Installed", "3"}});
       },
       "cboPosition", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    row.given(wizard.Ini());
    wizard.Press(10);
    EXPECT_EQ(List(wizard, row.list), row.expected);
  }
}

TEST(FillSelectionLists, TheFirstSerialDiluteHeadGivesTheValueOnRecord) {
  struct Row {
    const char* name;
    std::vector<std::pair<std::string_view, std::string_view>> heads;
    const char* signs;
    const char* steps;
  };
  const std::vector<Row> rows = {
      {"offset times sign plus position", {}, "1,-1", "500"},
      {"the sign is that of a Down step", {}, "-1,1", "700"},
      {"a negative value", {{"Item2", "A,SERIALDILUTE,,,,,,,,,,,-250"}}, "1,-1", "-350"},
      {"the value 0", {{"Item2", "A,SERIALDILUTE,,,,,,,,,,,100"}}, "1,-1", "0"},
      {"a head without a name counts when it is of that kind",
       {{"Item2", ",SERIALDILUTE,,,,,,,,,,,300"}},
       "1,-1",
       "200"},
      {"behind a head without a name nothing is looked at", {{"Item1", ""}}, "1,-1", "before"},
      {"no such head leaves the value", {{"Item2", "A,MICROTITER"}, {"Item4", "B,CALIBRATE"}}, "1,-1", "before"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    wizard.Ini().Set("HeadType", row.heads);
    wizard.SetAxisS("0.05", row.signs);
    wizard.Form->Form().Get<forms::TextBox>("txtCurrentCollect").SetText("before");
    wizard.Press(10);
    EXPECT_EQ(wizard.CurrentSteps(), row.steps);
  }
}

TEST(FillSelectionLists, ARefillForgetsPicksAndUnsavedSteps) {
  Wizard wizard;
  wizard.ToMainPage();
  for (const char* list : {"cboNestType", "cboHeadType", "cboPosition", "cboTipRack", "cboTipType"}) {
    EXPECT_TRUE(wizard.Pick(list, List(wizard, list).starts_with("*") ? 1 : 0)) << list;
  }
  wizard.Pick("cboCollectStep", 1);
  wizard.Press(7);
  EXPECT_EQ(wizard.CurrentSteps(), "520");
  wizard.Press(5);
  wizard.Press(14);
  wizard.Forget();
  EXPECT_TRUE(wizard.Press(9));
  Lines expected = asInstalled;  // but what is installed now is the teach tool without a tip: neither is listed
  expected[4] = "*Tip A=1, Tip D=4";
  EXPECT_EQ(AllLists(wizard), expected);
  EXPECT_FALSE(wizard.Form->Flags().Homed) << "the selections changed";
  EXPECT_EQ(wizard.Transcript(), "stop False\nchanged False\n");
}

TEST(RetrieveConfiguration, AsksTheInstrumentAndFillsTheListsUnlessStopped) {
  const std::string ordinary = "stop False\n" + retrieving + Line("REV") + "changed False\nstatus \n";
  struct Row {
    const char* name;
    Given given;
    std::string transcript;
    Lines lists;
  };
  const std::vector<Row> rows = {
      {"all goes well", Nothing, ordinary, asInstalled},
      {"the answer doesn't matter", [](Wizard& wizard) { wizard.Host.Replies["REV"] = "CLOSED"; }, ordinary,
       asInstalled},
      {"nor does a refusal", Refuse("REV"), ordinary, asInstalled},
      {"nor a failure", [](Wizard& wizard) { wizard.Host.Outcomes["REV"] = FakeHost::Outcome::Failed; }, ordinary,
       asInstalled},
      {"a Stop leaves the lists empty", StopDuring("REV"),
       "stop False\n" + retrieving + "stop False\nactive True\nsend REV\nstop False\nstop True\nsent REV\nstatus \n",
       untouched},
      {"the link is down: a Stop that can't be read is none", LinkDown, retrieving + "changed False\nstatus \n",
       asInstalled},
      {"no status panel", NoStatusPanel, "stop False\n" + Line("REV") + "changed False\n", asInstalled},
      {"no host window", NoHostWindow, "stop False\n" + retrieving + Line("REV") + "status \n", asInstalled},
      {"an empty file", EmptyFile, ordinary, withoutFile},
      {"the file can't be read", ReadsFail, ordinary, withoutFile},
      // Without a filter a test that fails lets the entry in: the nests show as entries without a name.
      {"nothing can be split", SplitsFail, ordinary, {"*=1, =2", "", "", "", "", "*0.1 mm=0, 1 mm=0", ""}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Wizard wizard;
    row.given(wizard);
    EXPECT_TRUE(wizard.Press(10));
    EXPECT_EQ(wizard.Transcript(), row.transcript);
    EXPECT_EQ(AllLists(wizard), row.lists);
    EXPECT_TRUE(wizard.State("fraWarning").visible);
    EXPECT_FALSE(wizard.State("fraInitial").visible);
  }
}

TEST(RetrieveConfiguration, AStopLeavesTheSharedRecordsEmptyToo) {
  Wizard wizard;
  StopDuring("REV")(wizard);
  wizard.Press(10);
  EXPECT_FALSE(wizard.Records.DeviceType.HasXAxis);
  EXPECT_EQ(wizard.Records.AxisS.MmPerStep, 0.0F);
  EXPECT_EQ(wizard.Ini().Reads.size(), 2U) << "only the two readings of the language at the form's load";
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
