#include "bench/host/AddInPlace.h"

#include <system_error>

namespace Helmsway {

std::filesystem::path AddInOfPrograms(const std::filesystem::path& programFolder) {
  constexpr const char* name = "libOrvelCalibrateS.so";
  const std::filesystem::path asBuilt = programFolder / name;
  const std::filesystem::path asInstalled = (programFolder / "../lib/helmsway" / name).lexically_normal();
  std::error_code missing;
  const bool installed =
      !std::filesystem::is_regular_file(asBuilt, missing) && std::filesystem::is_regular_file(asInstalled, missing);
  return installed ? asInstalled : asBuilt;
}

}  // namespace Helmsway
