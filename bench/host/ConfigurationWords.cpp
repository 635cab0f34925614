#include "bench/host/ConfigurationWords.h"

#include "bench/host/Utf16.h"

namespace Helmsway {
std::string WhyNothingIsFound(std::string_view name, std::optional<std::string_view> bytes) {
  const std::string file(name);
  if (!bytes) return file + " is missing: every value is a default.";
  if (bytes->empty()) return file + " is empty: every value is a default.";
  if (IsUtf16(*bytes)) {
    return file + " is UTF-16 and can't be understood: every value is a default. Save it as 8-bit text.";
  }
  if (bytes->find('[') == std::string_view::npos) return file + " has no sections: every value is a default.";
  return "";
}

}  // namespace Helmsway
