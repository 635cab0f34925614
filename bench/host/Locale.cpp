#include "bench/host/Locale.h"

#include <array>
#include <cstdlib>
#include <locale>
#include <stdexcept>

namespace Helmsway::Locale {
namespace {

/// All that LC_ALL overrides, but for LC_NUMERIC.
constexpr auto OtherCategories =
    std::to_array<const char*>({"LC_CTYPE", "LC_COLLATE", "LC_MONETARY", "LC_MESSAGES", "LC_TIME", "LC_PAPER",
                                "LC_NAME", "LC_TELEPHONE", "LC_MEASUREMENT", "LC_ADDRESS", "LC_IDENTIFICATION"});

}  // namespace

void FixNumbers() {
  // LC_ALL would override LC_NUMERIC. LANG says the same for all categories that no variable of their own names.
  const char* const all = std::getenv("LC_ALL");
  if (all != nullptr && *all != '\0') {
    setenv("LANG", all, 1);
    for (const char* category : OtherCategories) unsetenv(category);
  }
  unsetenv("LC_ALL");
  setenv("LC_NUMERIC", "C", 1);
}

void Use(const std::string& name) {
  // The empty name would be the environment's own locale.
  if (name.empty()) throw std::runtime_error("a locale needs a name; \"locale -a\" lists those that are installed");
  try {
    const std::locale installed(name);
  } catch (const std::runtime_error&) {
    throw std::runtime_error("the locale " + name + " isn't installed; \"locale -a\" lists those that are");
  }
  setenv("LC_ALL", name.c_str(), 1);
}

}  // namespace Helmsway::Locale
