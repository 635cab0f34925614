#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "addin/config/Configuration.h"
#include "tests/support/FakeIniService.h"

namespace OrvelCalibrateS::Testing {

/// The path of the fake's second file. A reader with this path reads the content of `Ini.Helmsway`.
inline constexpr std::string_view otherFile = "/elsewhere/Helmsway.ini";

/// Shared records over files in memory.
struct TestConfiguration {
  FakeFiles Fake;
  FakeIniService& Ini = *Fake.Service;
  IniFiles& Files = Fake.Files;
  SharedRecords Records;
  Configuration Config{Fake.Files, Records};
};

/// An item line with the text at that place, and nothing at the places before it.
inline std::string LineWith(std::size_t place, std::string_view text) {
  return std::string(place, ',') + std::string(text);
}

}  // namespace OrvelCalibrateS::Testing
