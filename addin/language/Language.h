#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "addin/config/IniFiles.h"
#include "forms/Form.h"

namespace OrvelCalibrateS {

/// Texts by number: the language's digits followed by a key's digits.
using TextTable = std::map<std::int16_t, std::string_view>;

/// The library's table.
const TextTable& LibraryTexts();

/// Sets the caption of each control that has a text in the table, in the language that Helmsway.ini names; all other
/// controls keep their captions. In skip mode.
void ApplyLanguage(forms::Form& form, const IniFiles& files, const TextTable& texts = LibraryTexts());

/// The text with that key in the language that Helmsway.ini names; empty when the table doesn't have it. In skip mode.
std::string LanguageText(std::int16_t key, const IniFiles& files, const TextTable& texts = LibraryTexts());

}  // namespace OrvelCalibrateS
