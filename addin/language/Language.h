#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "addin/config/IniFiles.h"
#include "forms/Form.h"

namespace OrvelCalibrateS {

/// Texts by number: the language's digits in front of a key's digits.
using TextTable = std::map<std::int16_t, std::string_view>;

/// The table that the library holds.
const TextTable& LibraryTexts();

/// Gives each control that the table has a text for its caption in the language that Helmsway.ini names; all others
/// keep theirs. In skip mode.
void ApplyLanguage(forms::Form& form, const IniFiles& files, const TextTable& texts = LibraryTexts());

/// The text of that key in the language that Helmsway.ini names; empty when the table doesn't hold it. In skip mode.
std::string LanguageText(std::int16_t key, const IniFiles& files, const TextTable& texts = LibraryTexts());

}  // namespace OrvelCalibrateS
