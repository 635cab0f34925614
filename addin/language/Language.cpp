#include "addin/language/Language.h"

#include <array>

#include "addin/base/Steps.h"
#include "addin/config/Conversions.h"

namespace OrvelCalibrateS {
namespace {

/// A rule that derives the key of a control's text from the control.
struct KeyForm {
  std::string_view typeName;
  std::string_view name;  ///< empty: any
  std::string_view digits;
  bool withIndex;
};

/// The first row that matches a control applies. A picture control would take a picture by its name instead of a text;
/// the library has no pictures and the form has no such control.
constexpr std::array<KeyForm, 6> keyForms{{
    {"Label", "lblField", "2", true},
    {"Label", "lblTitle", "101", false},
    {"Frame", "", "5", true},
    {"CommandButton", "", "7", true},
    {"CheckBox", "", "6", true},
    {"OptionButton", "", "8", true},
}};

std::string Language(const IniFiles& files) {
  std::string language;
  Put(language, [&] { return files.ReadIni("General", "Language", files.HelmswayIni(), "1"); });
  return language;
}

/// Fails when `number` isn't a number, is outside 16 bits, or isn't in the table.
std::string_view TextOf(const std::string& number, const TextTable& texts) {
  const auto found = texts.find(StrictWhole<std::int16_t>(number));
  Require(found != texts.end());
  return found->second;
}

/// Fails for a control outside an array.
std::string IndexDigits(const forms::Control& control) {
  Require(control.Index().has_value());
  const std::string digits = std::to_string(*control.Index());
  return digits.size() == 1 ? "0" + digits : digits;
}

void ApplyTo(forms::Control& control, const std::string& language, const TextTable& texts) {
  for (const KeyForm& form : keyForms) {
    if (form.typeName != forms::TypeName(control.Kind())) continue;
    if (!form.name.empty() && form.name != control.Name()) continue;
    std::string number = language + std::string(form.digits);
    if (form.withIndex) number += IndexDigits(control);
    control.SetCaption(TextOf(number, texts));
    return;
  }
}

}  // namespace

const TextTable& LibraryTexts() {
  static const TextTable texts{
      {1101, "Calibrate Syringe Axis"},
  };
  return texts;
}

void ApplyLanguage(forms::Form& form, const IniFiles& files, const TextTable& texts) {
  const std::string language = Language(files);
  for (const auto& control : form.Controls()) {
    Skip([&] { ApplyTo(*control, language, texts); });
  }
}

std::string LanguageText(std::int16_t key, const IniFiles& files, const TextTable& texts) {
  const std::string language = Language(files);
  std::string text;
  Put(text, [&] { return std::string(TextOf(language + std::to_string(key), texts)); });
  return text;
}

}  // namespace OrvelCalibrateS
