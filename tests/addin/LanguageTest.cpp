#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>
#include <vector>

#include "addin/language/Language.h"
#include "addin/wizard/frmAddInDesign.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

using forms::ControlKind;

constexpr forms::ControlDesign Row(ControlKind kind, std::string_view name, std::int16_t index) {
  return {.kind = kind, .name = name, .index = index, .caption = "as designed"};
}

/// One control of each sort that the rule tells apart.
constexpr std::array design{
    Row(ControlKind::PictureBox, "lblTitle", forms::NoIndex),
    Row(ControlKind::Label, "lblTitle", forms::NoIndex),
    Row(ControlKind::Label, "lblField", 5),
    Row(ControlKind::Label, "lblField", 28),
    Row(ControlKind::Label, "lblField", 123),
    Row(ControlKind::Label, "lblField", forms::NoIndex),
    Row(ControlKind::Label, "lblContinue", 5),
    Row(ControlKind::Label, "LBLFIELD", 5),
    Row(ControlKind::CommandButton, "cmdButton", 5),
    Row(ControlKind::CommandButton, "lblField", 0),
    Row(ControlKind::Frame, "fraTest", 5),
    Row(ControlKind::Frame, "fraTest", forms::NoIndex),
    Row(ControlKind::CheckBox, "chkTest", 5),
    Row(ControlKind::CheckBox, "chkTest", forms::NoIndex),
    Row(ControlKind::ComboBox, "lblField", 6),
    Row(ControlKind::TextBox, "lblField", 7),
};

/// The controls whose caption isn't that of the design, as "name(index)=caption".
std::vector<std::string> Changed(const forms::Form& form) {
  std::vector<std::string> changed;
  for (const auto& control : form.Controls()) {
    if (control->Caption() == control->Design().caption) continue;
    const std::string index = control->Index() ? "(" + std::to_string(*control->Index()) + ")" : "";
    changed.push_back(std::string(control->Name()) + index + "=" + control->Caption());
  }
  return changed;
}

using Captions = std::vector<std::string>;

TEST(LanguageTest, LanguageAndControlMakeTheNumberOfTheText) {
  struct Case {
    const char* name;
    TextTable texts;
    Captions changed;
    const char* language = "1";
  };
  for (const Case& row : {
           Case{"title", {{1101, "T"}}, {"lblTitle=T"}},
           Case{"field, two digits at least", {{1205, "F"}, {125, "x"}}, {"lblField(5)=F"}},
           Case{"field of two digits", {{1228, "F"}}, {"lblField(28)=F"}},
           Case{"field of three digits", {{12123, "F"}}, {"lblField(123)=F"}},
           Case{"button", {{1705, "B"}, {1700, "C"}}, {"cmdButton(5)=B", "lblField(0)=C"}},
           Case{"frame in an array", {{1505, "P"}, {15, "x"}}, {"fraTest(5)=P"}},
           Case{"check box in an array", {{1605, "K"}, {16, "x"}}, {"chkTest(5)=K"}},
           Case{"an empty text is a text", {{1101, ""}}, {"lblTitle="}},
           Case{"nothing asks for these", {{1206, "x"}, {1207, "x"}, {1805, "x"}, {12, "x"}, {1, "x"}, {101, "x"}}, {}},
           Case{"two digits of language", {{12205, "F"}, {12101, "T"}}, {"lblTitle=T", "lblField(5)=F"}, "12"},
           Case{"largest number", {{32205, "F"}, {32705, "B"}}, {"lblField(5)=F", "cmdButton(5)=B"}, "32"},
           Case{"numbers above 16 bits change nothing, the others do", {{331, "x"}, {3101, "T"}}, {"lblTitle=T"}, "3"},
           Case{"a language above 16 bits changes nothing", {{1101, "x"}, {101, "x"}}, {}, "33"},
           Case{"a leading zero", {{1101, "T"}}, {"lblTitle=T"}, "01"},
           Case{"a number that letters follow", {{1101, "x"}}, {}, "1101x"},
           Case{"no number", {{1101, "x"}, {101, "x"}}, {}, "German"},
           Case{
               "an empty language leaves the key alone", {{101, "T"}, {205, "F"}}, {"lblTitle=T", "lblField(5)=F"}, ""},
       }) {
    SCOPED_TRACE(row.name);
    Testing::TestConfiguration machine;
    machine.Ini.Helmsway[{"GENERAL", "LANGUAGE"}] = row.language;
    forms::Form form("", design);
    ApplyLanguage(form, machine.Files, row.texts);
    EXPECT_EQ(Changed(form), row.changed);
  }
}

TEST(LanguageTest, TheLibraryHoldsTheTitleInItsFirstLanguage) {
  enum class File { Reads, Fails };
  struct Case {
    const char* name;
    const char* language;  ///< null where the key is absent
    const char* title;
    File file = File::Reads;
  };
  for (const Case& row : {Case{"absent key: the first language", nullptr, "Calibrate Syringe Axis"},
                          Case{"first language", "1", "Calibrate Syringe Axis"}, Case{"second language", "2", ""},
                          Case{"language that makes too large a number", "33", ""}, Case{"no number", "x", ""},
                          Case{"empty", "", ""}, Case{"file that can't be read", "1", "", File::Fails}}) {
    SCOPED_TRACE(row.name);
    Testing::TestConfiguration machine;
    if (row.language != nullptr) machine.Ini.Helmsway[{"GENERAL", "LANGUAGE"}] = row.language;
    machine.Ini.Set("General", {{"Language", "9"}});  // of the other file
    machine.Ini.ReadsFail = row.file == File::Fails;
    EXPECT_EQ(LanguageText(101, machine.Files), row.title);
    forms::Form form("", FormDesign());
    form.Get("lblTitle").SetCaption("as designed");
    ApplyLanguage(form, machine.Files);
    EXPECT_EQ(form.Get("lblTitle").Caption(), *row.title == '\0' ? "as designed" : row.title);
    form.Get("lblTitle").SetCaption("Calibrate Syringe Axis");
    EXPECT_EQ(Changed(form), Captions());
  }
}

TEST(LanguageTest, EachTextIsLookedUpAnew) {
  Testing::TestConfiguration machine;
  const TextTable texts{{17, "a"}, {27, "b"}, {1, "c"}};
  EXPECT_EQ(LanguageText(7, machine.Files, texts), "a") << "the key in plain decimal";
  machine.Ini.Helmsway[{"GENERAL", "LANGUAGE"}] = "2";
  EXPECT_EQ(LanguageText(7, machine.Files, texts), "b");
  EXPECT_EQ(LanguageText(32767, machine.Files, texts), "");
  EXPECT_EQ(LanguageText(-7, machine.Files, texts), "");
  EXPECT_EQ(machine.Ini.Reads.size(), 4U);
}

}  // namespace
}  // namespace OrvelCalibrateS
