#include "addin/shell/Platform.h"

#include <dlfcn.h>

#include <cstdlib>

#include "addin/contract/HelmswayCmds.h"

namespace OrvelCalibrateS::Platform {
namespace {

std::filesystem::path UserDataFolder() {
  const char* const dataHome = std::getenv("XDG_DATA_HOME");
  if (dataHome != nullptr && *dataHome != '\0') return dataHome;
  const char* const home = std::getenv("HOME");
  return std::filesystem::path(home == nullptr ? "/" : home) / ".local" / "share";
}

}  // namespace

std::filesystem::path LibraryFile() {
  Dl_info info{};
  // Any address inside the library will do.
  static const char inside = 0;
  if (dladdr(&inside, &info) == 0 || info.dli_fname == nullptr) return {};
  return std::filesystem::absolute(info.dli_fname);
}

HelmswayCmds::GetClassObjectFunction HostClassObjectFunction() {
  void* const symbol = dlsym(RTLD_DEFAULT, HelmswayCmds::HostClassObjectFunctionName);
  return reinterpret_cast<HelmswayCmds::GetClassObjectFunction>(symbol);
}

std::filesystem::path RegistrationFolder() {
  std::filesystem::path folder = UserDataFolder() / "helmsway" / "add-ins";
  std::filesystem::create_directories(folder);
  return folder;
}

}  // namespace OrvelCalibrateS::Platform
