#include "addin/shell/Platform.h"

#include <dlfcn.h>

#include <cstdlib>
#include <exception>

#include "addin/base/Steps.h"
#include "addin/contract/HelmswayCmds.h"

namespace OrvelCalibrateS::Platform {
namespace {

std::filesystem::path PathIn(const char* variable) {
  const char* const value = std::getenv(variable);
  return value == nullptr ? std::filesystem::path() : std::filesystem::path(value);
}

std::filesystem::path UserDataFolder() {
  // The rules for this variable say that a relative path is ignored.
  if (auto dataHome = PathIn("XDG_DATA_HOME"); dataHome.is_absolute()) return dataHome;
  const std::filesystem::path home = PathIn("HOME");
  Require(home.is_absolute());
  return home / ".local" / "share";
}

std::filesystem::path FindLibraryFile() noexcept {
  try {
    Dl_info info{};
    // Any address inside the library works.
    static const char inside = 0;
    if (dladdr(&inside, &info) == 0 || info.dli_fname == nullptr) return {};
    return std::filesystem::absolute(info.dli_fname);
  } catch (const std::exception&) {
    return {};
  }
}

/// Looked up while the library is being loaded, because the runtime reports the path as the host gave it, which may be
/// relative.
const std::filesystem::path libraryFile = FindLibraryFile();

}  // namespace

const std::filesystem::path& LibraryFile() noexcept { return libraryFile; }

std::string AddInFolder() { return libraryFile.parent_path().string(); }

HelmswayCmds::GetClassObjectFunction HostClassObjectFunction() {
  void* const symbol = dlsym(RTLD_DEFAULT, HelmswayCmds::HostClassObjectFunctionName);
  return reinterpret_cast<HelmswayCmds::GetClassObjectFunction>(symbol);
}

std::filesystem::path RegistrationFolder() { return UserDataFolder() / "helmsway" / "add-ins"; }

}  // namespace OrvelCalibrateS::Platform
