#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "addin/shell/Identities.h"
#include "tests/host/TemporaryFolder.h"
#include "tests/replay/HostileHost.h"

namespace Helmsway::Testing {
namespace {

/// A copy of the library, which the process loads beside the other one, and its entry points.
struct OwnCopy {
  explicit OwnCopy(const std::filesystem::path& original) {
    std::filesystem::copy_file(original, Folder.PathOf("copy.so"));
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(Folder.PathOf(""));
    Handle = dlopen("./copy.so", RTLD_NOW | RTLD_LOCAL);
    std::filesystem::current_path(before);
  }
  OwnCopy(const OwnCopy&) = delete;
  OwnCopy& operator=(const OwnCopy&) = delete;
  ~OwnCopy() { dlclose(Handle); }

  Result Call(const char* entryPoint) const {
    return reinterpret_cast<OrvelCalibrateS::EntryPointFunction>(dlsym(Handle, entryPoint))();
  }

  TemporaryFolder Folder;
  void* Handle = nullptr;
};

/// Variables of the environment for the length of a test.
struct Environment {
  Environment() = default;
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;
  ~Environment() {
    unsetenv("XDG_DATA_HOME");
    if (home) setenv("HOME", home->c_str(), 1);
  }
  std::optional<std::string> home =
      getenv("HOME") == nullptr ? std::nullopt : std::optional<std::string>(getenv("HOME"));
};

constexpr const char* Register = OrvelCalibrateS::RegisterServerName;
constexpr const char* RegistrationName = "helmsway/add-ins/OrvelCalibrateS.Connect.addin";

TEST_F(HostileHost, TheLibrarysFolderIsTheOneThatItWasLoadedFrom) {
  const Environment environment;
  const TemporaryFolder home;
  setenv("XDG_DATA_HOME", home.PathOf("").c_str(), 1);
  const OwnCopy copy(file);
  EXPECT_EQ(copy.Call(Register), Result::Ok);
  const std::string text = home.Read(RegistrationName);
  const std::string registered = text.substr(text.rfind('=') + 1);
  EXPECT_TRUE(std::filesystem::path(registered).is_absolute()) << text;
  EXPECT_TRUE(std::filesystem::equivalent(registered.substr(0, registered.size() - 1), copy.Folder.PathOf("copy.so")))
      << text;

  std::filesystem::remove_all(copy.Folder.PathOf(""));
  EXPECT_EQ(copy.Call(Register), Result::Failed);
  EXPECT_EQ(home.Read(RegistrationName), text) << "a failure changes nothing";
}

TEST_F(HostileHost, ARegistrationGoesWhereHostsLookAndAFailedOneLeavesNothing) {
  const Environment environment;
  const TemporaryFolder home;
  setenv("HOME", home.PathOf("").c_str(), 1);
  for (const char* ignored : {"", "data", "./data"}) {
    setenv("XDG_DATA_HOME", ignored, 1);
    library->Register();
    EXPECT_TRUE(std::filesystem::remove(home.PathOf(std::string(".local/share/") + RegistrationName)));
  }
  for (const char* unusable : {"", "home"}) {
    setenv("HOME", unusable, 1);
    EXPECT_THROW(library->Register(), AddInLibraryError);
  }
  setenv("HOME", home.PathOf("").c_str(), 1);
  const std::string taken = home.PathOf(std::string(".local/share/") + RegistrationName);
  std::filesystem::create_directories(taken + "/by a folder");
  EXPECT_THROW(library->Register(), AddInLibraryError);
  EXPECT_FALSE(std::filesystem::exists(taken + ".new"));
}

}  // namespace
}  // namespace Helmsway::Testing
