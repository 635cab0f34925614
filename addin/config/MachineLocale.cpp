#include "addin/config/MachineLocale.h"

#include <cstdint>
#include <locale>
#include <stdexcept>

namespace OrvelCalibrateS {
namespace {

std::locale EnvironmentLocale() {
  try {
    return std::locale("");
  } catch (const std::runtime_error&) {
    return std::locale::classic();  // the environment names a locale that isn't installed
  }
}

std::string Utf8(wchar_t character) {
  const std::uint32_t code = static_cast<char32_t>(character);
  const auto byte = [](std::uint32_t bits) { return static_cast<char>(static_cast<unsigned char>(bits)); };
  if (code < 0x80) return {byte(code)};
  if (code < 0x800) return {byte(0xc0 | code >> 6), byte(0x80 | (code & 0x3f))};
  return {byte(0xe0 | code >> 12), byte(0x80 | (code >> 6 & 0x3f)), byte(0x80 | (code & 0x3f))};
}

}  // namespace

const std::string& MachineDecimalSeparator() {
  static const std::string separator =
      Utf8(std::use_facet<std::numpunct<wchar_t>>(EnvironmentLocale()).decimal_point());
  return separator;
}

}  // namespace OrvelCalibrateS
