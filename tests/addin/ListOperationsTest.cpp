#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "addin/config/ListOperations.h"
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
    std::string entries;
    for (std::int32_t i = 0; i < List.ListCount(); ++i) {
      entries += (i == 0 ? "" : " ") + std::to_string(List.ItemData(i).value()) + ":" + std::string(*List.List(i)) +
                 (i == List.ListIndex() ? "*" : "");
    }
    return entries;
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
  const Keys kinds{{"Item1", "A,SERIALDILUTE"},
                   {"Item2", "B,x serialDilute y,2"},
                   {"Item3", "C,MICROTITER,SERIALDILUTE"},
                   {"Item4", "D"},
                   {"Item5", "E,"}};
  for (const Row& row : {
           Row{"no section", {}, ""},
           Row{"gaps below 10", {{"Item0", "A"}, {"Item2", "B"}, {"Item9", "C"}}, "0:A 2:B 9:C"},
           Row{"12 items, then a gap", Items(1, 12, {{"Item14", "x"}}),
               "1:n1 2:n2 3:n3 4:n4 5:n5 6:n6 7:n7 8:n8 9:n9 10:n10 11:n11 12:n12"},
           Row{"item 11 behind a gap is never read", Items(1, 9, {{"Item11", "x"}}),
               "1:n1 2:n2 3:n3 4:n4 5:n5 6:n6 7:n7 8:n8 9:n9"},
           Row{"item 10 counts only behind item 9", {{"Item1", "A"}, {"Item10", "x"}}, "1:A"},
           Row{"keys with leading zeros are no items", {{"Item1", "A"}, {"Item02", "x"}, {"Item", "y"}}, "1:A"},
           Row{"an item number preselects nothing", with("Installed", "2"), "1:A 2:B 3:C"},
           Row{"the name behind the equals sign", with("Default", "any text=B"), "1:A 2:B* 3:C"},
           Row{"up to the next equals sign", with("Default", "x=B=C"), "1:A 2:B* 3:C"},
           Row{"quotes are cleaned away", with("Default", "x=\"B\""), "1:A 2:B* 3:C"},
           Row{"blanks count", with("Default", "x= B"), "1:A 2:B 3:C"},
           Row{"letter case counts", with("Default", "x=b"), "1:A 2:B 3:C"},
           Row{"no equals sign", with("Default", "B"), "1:A 2:B 3:C"},
           Row{"the last entry of that name", Items(4, 4, {{"Item1", "A"}, {"Item2", "A"}, {"Default", "x=A"}}),
               "1:A 2:A* 4:n4"},
           Row{"Installed stands in for an absent Default", with("Installed", "x=B"), "1:A 2:B* 3:C"},
           Row{"Installed stands in for an empty Default",
               {{"Item1", "A"}, {"Default", ""}, {"Installed", "x=A"}},
               "1:A*"},
           Row{"Installed doesn't count beside a Default",
               {{"Item1", "A"}, {"Default", "1"}, {"Installed", "x=A"}},
               "1:A"},
           Row{"an entry without a first place is left out", {{"Item1", ",x"}, {"Item2", "B"}}, "2:B"},
           Row{"a first place of quotes is an empty name, which nothing preselected equals",
               {{"Item1", "\"\",x"}, {"Item2", "B"}},
               "1:* 2:B"},
           Row{"a comma inside quotes ends the name", {{"Item1", "\"A, b\",x"}}, "1:A"},
           Row{"included: the place contains the text", kinds, "1:A 2:B", {1, "SERIALDILUTE", off, ""}},
           Row{"included: in any letters", kinds, "1:A 2:B", {1, "Serialdilute", off, ""}},
           Row{"included: by another place", kinds, "3:C", {2, "SERIALDILUTE", off, ""}},
           Row{"included: by an empty text", kinds, "1:A 2:B 3:C 5:E", {1, "", off, ""}},
           Row{"excluded: the place contains the text", kinds, "3:C 5:E", {off, "", 1, "serialDILUTE"}},
           Row{"excluded: by another place", kinds, "2:B", {off, "", 2, "SERIALDILUTE"}},
           Row{"included and excluded", kinds, "1:A", {1, "SERIAL", 1, "X "}},
           Row{"included by the name itself", kinds, "3:C", {0, "c", off, ""}},
       }) {
    SCOPED_TRACE(row.name);
    ListedCatalogue catalogue;
    catalogue.List.AddItem("old");
    for (const auto& [key, value] : row.keys) catalogue.Ini.Set("HeadType", {{key, value}});
    FillItemList(catalogue.Files, catalogue.List, "HeadType", row.filter);
    EXPECT_EQ(catalogue.Entries(), row.entries);
  }
}

TEST(ListOperationsTest, OnlyTheSelectionRunsTheHandler) {
  ListedCatalogue catalogue;
  catalogue.Ini.Set("S", {{"Item1", "A"}, {"Item2", "B"}, {"Default", "x=B"}});
  catalogue.List.AddItem("old");
  ASSERT_TRUE(catalogue.List.SetListIndex(0));
  std::vector<std::string> picks;
  catalogue.List.OnClick = [&] { picks.emplace_back(catalogue.List.Text()); };
  FillItemList(catalogue.Files, catalogue.List, "S", {});
  EXPECT_EQ(picks, (std::vector<std::string>{"B"}));
  catalogue.Ini.Marivane.erase({"S", "DEFAULT"});
  FillItemList(catalogue.Files, catalogue.List, "S", {});
  EXPECT_EQ(picks.size(), 1U);
  EXPECT_EQ(catalogue.List.ListIndex(), -1);
}

TEST(ListOperationsTest, AHostThatFailsCostsStepsOnly) {
  ListedCatalogue catalogue;
  catalogue.Ini.Set("S", {{"Item1", "A,x"}, {"Item2", "B,x"}, {"Default", "x=A"}});
  catalogue.List.AddItem("old");
  // A line that can't be split has no first place, so the test for one fails and passes; nothing gives it a name, and
  // nothing is what is preselected.
  catalogue.Ini.SplitsFail = true;
  FillItemList(catalogue.Files, catalogue.List, "S", {});
  EXPECT_EQ(catalogue.Entries(), "1: 2:*");
  FillItemList(catalogue.Files, catalogue.List, "S", {.includePlace = 1, .includeText = "x"});
  EXPECT_EQ(catalogue.Entries(), "");
  FillItemList(catalogue.Files, catalogue.List, "S", {.excludePlace = 1, .excludeText = "y"});
  EXPECT_EQ(catalogue.Entries(), "");
  catalogue.List.AddItem("old");
  catalogue.Ini.ReadsFail = true;
  FillItemList(catalogue.Files, catalogue.List, "S", {});
  EXPECT_EQ(catalogue.Entries(), "");
}

TEST(ListOperationsTest, AnEntryIsFoundInAnyLetterCase) {
  struct Row {
    const char* name;
    std::vector<const char*> entries;
    const char* wanted;
    std::int16_t index;
  };
  for (const Row& row : {
           Row{"as it stands", {"A", "Bc", "D"}, "Bc", 1},
           Row{"in other letters", {"A", "Bc", "D"}, "bC", 1},
           Row{"first of two", {"A", "BC", "bc"}, "bc", 1},
           Row{"a part is no match", {"A", "Bcd"}, "Bc", 0},
           Row{"not listed", {"A", "Bc", "D"}, "E", 0},
           Row{"an entry without a text", {"A", ""}, "", 1},
           Row{"empty list", {}, "A", 0},
       }) {
    ListedCatalogue catalogue;
    for (const char* entry : row.entries) catalogue.List.AddItem(entry);
    EXPECT_EQ(FindListItem(row.wanted, catalogue.List), row.index) << row.name;
  }
}

}  // namespace
}  // namespace OrvelCalibrateS
