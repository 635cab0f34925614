#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>

#include "addin/language/Language.h"
#include "addin/wizard/frmAddInDesign.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

using forms::ControlKind;
using forms::NoIndex;
using Testing::Lines;

constexpr forms::ControlDesign Control(ControlKind kind, std::string_view name, std::int16_t index) {
  return {.kind = kind, .name = name, .index = index, .caption = "as designed"};
}

/// One control of each kind that the rule distinguishes.
// clang-format off
constexpr std::array design{
    Control(ControlKind::PictureBox, "lblTitle", NoIndex), Control(ControlKind::Label, "lblTitle", NoIndex),
    Control(ControlKind::Label, "lblField", 5),            Control(ControlKind::Label, "lblField", 28),
    Control(ControlKind::Label, "lblField", 123),          Control(ControlKind::Label, "lblField", NoIndex),
    Control(ControlKind::Label, "lblContinue", 5),         Control(ControlKind::Label, "LBLFIELD", 5),
    Control(ControlKind::CommandButton, "cmdButton", 5),   Control(ControlKind::CommandButton, "lblField", 0),
    Control(ControlKind::Frame, "fraTest", 5),             Control(ControlKind::Frame, "fraTest", NoIndex),
    Control(ControlKind::CheckBox, "chkTest", 5),          Control(ControlKind::CheckBox, "chkTest", NoIndex),
    Control(ControlKind::ComboBox, "lblField", 6),         Control(ControlKind::TextBox, "lblField", 7),
};
// clang-format on

/// The controls whose caption differs from the design, as "name(index)=caption".
Lines Changed(const forms::Form& form) {
  Lines changed;
  for (const auto& control : form.Controls()) {
    if (control->Caption() == control->Design().caption) continue;
    const std::string index = control->Index() ? "(" + std::to_string(*control->Index()) + ")" : "";
    changed.push_back(std::string(control->Name()) + index + "=" + control->Caption());
  }
  return changed;
}

TEST(LanguageTest, LanguageAndControlMakeTheNumberOfTheText) {
  using Row = std::tuple<const char*, const char*, TextTable, Lines>;
  // clang-format off
  for (const auto& [name, language, texts, changed] : {
           Row{"title, and an empty text is a text", "1", {{1101, ""}}, {"lblTitle="}},
           Row{"field, two digits at least", "1", {{1205, "F"}, {125, "x"}}, {"lblField(5)=F"}},
           Row{"of two and three digits", "1", {{1228, "F"}, {12123, "G"}}, {"lblField(28)=F", "lblField(123)=G"}},
           Row{"button", "1", {{1705, "B"}, {1700, "C"}}, {"cmdButton(5)=B", "lblField(0)=C"}},
           Row{"frame and check box in an array", "1", {{1505, "P"}, {1605, "K"}}, {"fraTest(5)=P", "chkTest(5)=K"}},
           Row{"asked for by none", "1", {{1206, "x"}, {1207, "x"}, {1805, "x"}, {12, "x"}, {15, "x"}, {101, "x"}}, {}},
           Row{"two digits of language", "12", {{12205, "F"}, {12101, "T"}}, {"lblTitle=T", "lblField(5)=F"}},
           Row{"largest number", "32", {{32205, "F"}, {32705, "B"}}, {"lblField(5)=F", "cmdButton(5)=B"}},
           Row{"numbers above 16 bits change nothing, the others do", "3", {{331, "x"}, {3101, "T"}}, {"lblTitle=T"}},
           Row{"no number", "1x", {{1101, "x"}, {101, "x"}}, {}},
           Row{"no language: the key alone", "", {{101, "T"}, {205, "F"}}, {"lblTitle=T", "lblField(5)=F"}}}) {
    // clang-format on
    SCOPED_TRACE(name);
    Testing::TestConfiguration machine;
    machine.Ini.Helmsway[{"GENERAL", "LANGUAGE"}] = language;
    forms::Form form("", design);
    ApplyLanguage(form, machine.Files, texts);
    EXPECT_EQ(Changed(form), changed);
  }
}

TEST(LanguageTest, TheLibraryHoldsTheTitleInItsFirstLanguage) {
  Testing::TestConfiguration machine;
  machine.Ini.Set("General", {{"Language", "9"}});  // a key of the other file
  forms::Form form("", FormDesign());
  form.Get("lblTitle").SetCaption("");
  ApplyLanguage(form, machine.Files);
  EXPECT_EQ(form.Get("lblTitle").Caption(), "Calibrate Syringe Axis");
  EXPECT_EQ(LanguageText(101, machine.Files), "Calibrate Syringe Axis");
  machine.Ini.Helmsway[{"GENERAL", "LANGUAGE"}] = "2";
  EXPECT_EQ(LanguageText(101, machine.Files), "");
  machine.Ini.ReadsFail = true;
  EXPECT_EQ(LanguageText(101, machine.Files), "");
}

}  // namespace
}  // namespace OrvelCalibrateS
