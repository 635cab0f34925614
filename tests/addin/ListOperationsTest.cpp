#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "addin/wizard/ListOperations.h"
#include "forms/Form.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

constexpr std::array design{
    forms::ControlDesign{.kind = forms::ControlKind::PictureBox, .name = "picFrame"},
    forms::ControlDesign{.kind = forms::ControlKind::ComboBox, .name = "cboList", .container = "picFrame"},
};

struct ListedCatalogue : Testing::TestConfiguration {
  forms::Form Form{"", design};
  forms::ComboBox& List = Form.Get<forms::ComboBox>("cboList");

  /// The entries as "item data:text", the selected one with a star.
  std::string Entries() const {
    std::string text;
    for (std::int32_t i = 0; i < List.ListCount(); ++i) {
      text += (i == 0 ? "" : " ") + std::to_string(List.ItemData(i).value()) + ":" + std::string(*List.List(i));
      if (i == List.ListIndex()) text += "*";
    }
    return text;
  }
};

using Keys = std::vector<std::pair<std::string, std::string>>;

Keys Items(int first, int last, Keys keys = {}) {
  for (int i = first; i <= last; ++i) keys.emplace_back("Item" + std::to_string(i), "n" + std::to_string(i));
  return keys;
}

constexpr std::int16_t off = ItemFilter::Off;

TEST(ListOperationsTest, ACatalogueFillsAList) {
  struct Row {
    const char* name;
    Keys keys;
    const char* entries;
    ItemFilter filter = {};
  };
  const Keys three{{"Item1", "A"}, {"Item2", "\"B\""}, {"Item3", "C"}};
  const auto with = [&](const char* key, const char* value) {
    Keys keys = three;
    keys.emplace_back(key, value);
    return keys;
  };
  const Keys kinds{{"Item1", "A,SERIALDILUTE"}, {"Item2", "B,x serialDilute y"}, {"Item3", "C,X"}, {"Item4", "D"}};
  // clang-format off
  for (const Row& row : {
           Row{"gaps below 10", {{"Item0", "A"}, {"Item2", "B"}, {"Item9", "C"}}, "0:A 2:B 9:C"},
           Row{"a gap behind 10", Items(8, 12, {{"Item14", "x"}}), "8:n8 9:n9 10:n10 11:n11 12:n12"},
           Row{"item 11 behind a gap", Items(8, 9, {{"Item11", "x"}}), "8:n8 9:n9"},
           Row{"item 10 counts only behind item 9", {{"Item1", "A"}, {"Item10", "x"}}, "1:A"},
           Row{"the name behind the equals sign", with("Default", "any text=B"), "1:A 2:B* 3:C"},
           Row{"up to the next equals sign", with("Default", "x=B=C"), "1:A 2:B* 3:C"},
           Row{"in quotes", with("Default", "\"x=B\""), "1:A 2:B* 3:C"},
           Row{"letter case counts", with("Default", "x=b"), "1:A 2:B 3:C"},
           Row{"no equals sign", with("Default", "B"), "1:A 2:B 3:C"},
           Row{"the last of that name", {{"Item1", "A"}, {"Item2", "A"}, {"Default", "x=A"}}, "1:A 2:A*"},
           Row{"Installed stands in for an absent Default", with("Installed", "x=B"), "1:A 2:B* 3:C"},
           Row{"and for an empty one", {{"Item1", "A"}, {"Default", ""}, {"Installed", "x=A"}}, "1:A*"},
           Row{"but not beside a Default", {{"Item1", "A"}, {"Default", "1"}, {"Installed", "x=A"}}, "1:A"},
           Row{"an entry without a first place is left out", {{"Item1", ",x"}, {"Item2", "B"}}, "2:B"},
           // Its name is empty and so equals the empty name to be preselected.
           Row{"a first place of quotes", {{"Item1", "\"\",x"}, {"Item2", "B"}}, "1:* 2:B"},
           Row{"included: in any letters", kinds, "1:A 2:B", {1, "Serialdilute", off, ""}},
           Row{"excluded: the place contains the text", kinds, "3:C", {off, "", 1, "serialDILUTE"}},
           Row{"included and excluded", kinds, "1:A", {1, "SERIAL", 1, "X "}},
           Row{"included by the name itself", kinds, "3:C", {0, "c", off, ""}}}) {
    // clang-format on
    SCOPED_TRACE(row.name);
    ListedCatalogue catalogue;
    catalogue.List.AddItem("old");
    for (const auto& [key, value] : row.keys) catalogue.Ini.Set("HeadType", {{key, value}});
    FillItemList(catalogue.Files, catalogue.List, "HeadType", row.filter);
    EXPECT_EQ(catalogue.Entries(), row.entries);
  }
}

TEST(ListOperationsTest, OnlyTheSelectionRunsTheHandlerAndAHostThatFailsCostsStepsOnly) {
  ListedCatalogue catalogue;
  catalogue.Ini.Set("S", {{"Item1", "A,x"}, {"Item2", "B,x"}, {"Default", "x=B"}});
  std::string picks;
  catalogue.List.OnClick = [&] { picks += catalogue.List.Text(); };
  const auto fill = [&](const ItemFilter& filter) {
    FillItemList(catalogue.Files, catalogue.List, "S", filter);
    return catalogue.Entries();
  };
  EXPECT_EQ(fill({}), "1:A 2:B*");
  EXPECT_EQ(picks, "B");
  catalogue.Ini.Marivane.erase({"S", "DEFAULT"});
  EXPECT_EQ(fill({}), "1:A 2:B") << "the selection is forgotten";
  EXPECT_EQ(picks, "B");
  // A line that can't be split has no first place, so the test for one fails and counts as passed. The entry's name is
  // empty, and so is the name to be preselected.
  catalogue.Ini.SplitsFail = true;
  EXPECT_EQ(fill({}), "1: 2:*");
  EXPECT_EQ(fill({.excludePlace = 1, .excludeText = "y"}), "");
  catalogue.List.AddItem("old");
  catalogue.Ini.ReadsFail = true;
  EXPECT_EQ(fill({}), "");
}

TEST(ListOperationsTest, AnEntryIsFoundInAnyLetterCase) {
  ListedCatalogue catalogue;
  EXPECT_EQ(FindListItem("A", catalogue.List), 0) << "an empty list";
  for (const char* entry : {"A", "Bcd", "bC", "bc", ""}) catalogue.List.AddItem(entry);
  EXPECT_EQ(FindListItem("BC", catalogue.List), 2) << "the first of two";
  EXPECT_EQ(FindListItem("", catalogue.List), 4);
  EXPECT_EQ(FindListItem("E", catalogue.List), 0) << "not listed";
}

}  // namespace
}  // namespace OrvelCalibrateS
