#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "addin/base/Texts.h"
#include "bench/host/AddInLibrary.h"
#include "bench/host/AddInSession.h"
#include "bench/host/ConfigurationService.h"
#include "bench/host/DataFolder.h"
#include "bench/host/HostClasses.h"
#include "bench/host/Registration.h"
#include "tests/host/TemporaryFolder.h"
#include "tests/replay/ReplayRun.h"
#include "tests/support/FakeHost.h"

namespace Helmsway {
namespace {

using HelmswayCmds::Result;
using OrvelCalibrateS::Ref;
using OrvelCalibrateS::Testing::FakeHost;

/// The library as a host sees it, with no more of a host than the test needs.
class AddInLibraryTest : public testing::Test {
 protected:
  AddInLibraryTest() {
    Ref<HelmswayCmds::IIniService> service;
    *service.Out() = new ConfigurationService;
    HostClasses::ServeIniService(service);
  }
  ~AddInLibraryTest() override { HostClasses::ServeIniService({}); }

  const std::filesystem::path file = OptionsFor("").addIn;
};

TEST_F(AddInLibraryTest, RegistersItselfForTheUserAndTakesItBack) {
  const TemporaryFolder folder;
  setenv("XDG_DATA_HOME", folder.PathOf("").c_str(), 1);
  const AddInLibrary library(file);
  library.Register();
  EXPECT_EQ(folder.Read("helmsway/add-ins/OrvelCalibrateS.Connect.addin"),
            "[Add-in]\nProgramId=OrvelCalibrateS.Connect\nClassId={d95b74c4-2136-49ae-9fd9-69b691484557}\n"
            "Version=" HELMSWAY_VERSION "\nLibrary=" +
                file.string() + "\n");
  library.Unregister();
  EXPECT_TRUE(std::filesystem::is_empty(folder.PathOf("helmsway/add-ins")));
  library.Unregister();  // nothing to take back is no failure
  folder.Write("in-the-way", "");
  setenv("XDG_DATA_HOME", folder.PathOf("in-the-way").c_str(), 1);
  EXPECT_THROW(library.Register(), AddInLibraryError);
  unsetenv("XDG_DATA_HOME");
}

TEST_F(AddInLibraryTest, IsFoundByARegistrationThatOthersCantChange) {
  namespace fs = std::filesystem;
  const TemporaryFolder folder;
  setenv("XDG_DATA_HOME", folder.PathOf("").c_str(), 1);
  const fs::path none = folder.PathOf("none.so");
  EXPECT_THROW(Registration::FindAddIn(none), std::runtime_error);
  const mode_t mask = umask(S_IWOTH);  // new files are for the user's group as well
  EXPECT_TRUE(Registration::FindAddIn(file).registeredNow);
  umask(mask);
  // Beside the program, where others may write as they may to the program: nothing is gained by a refusal.
  EXPECT_FALSE(Registration::FindAddIn(file).registeredNow);

  const fs::path library = folder.PathOf("own/library.so");
  fs::create_directory(library.parent_path());
  fs::copy_file(file, library);
  const std::string registration = "helmsway/add-ins/OrvelCalibrateS.Connect.addin";
  const auto found = [&]() -> std::string {
    try {
      return Registration::FindAddIn(none).library;
    } catch (const AddInLibraryError& error) {
      return error.what();
    }
  };
  folder.Write(registration, "[Add-in]\nLibrary=own/library.so\n");
  EXPECT_NE(found().find("own/library.so, which isn't a full path"), std::string::npos) << found();
  folder.Write(registration, "[Add-in]\nLibrary=" + library.string() + "\n");
  for (const fs::path& open : {library, library.parent_path(), fs::path(folder.PathOf(registration)),
                               fs::path(folder.PathOf(registration)).parent_path()}) {
    fs::permissions(open, fs::perms::group_write | fs::perms::others_write, fs::perm_options::remove);
    EXPECT_EQ(found(), library);
    for (const auto who : {fs::perms::group_write, fs::perms::others_write}) {
      fs::permissions(open, who, fs::perm_options::add);
      EXPECT_NE(found().find("other users may write " + open.string()), std::string::npos) << found();
      fs::permissions(open, who, fs::perm_options::remove);
    }
  }
  unsetenv("XDG_DATA_HOME");
}

TEST_F(AddInLibraryTest, TheDataFolderIsNamedByFullPathsOnly) {
  const std::string home = getenv("HOME") == nullptr ? "" : getenv("HOME");
  const TemporaryFolder folder;
  setenv("HOME", folder.PathOf("").c_str(), 1);
  setenv("XDG_DATA_HOME", "data", 1);
  EXPECT_EQ(Registration::File(), folder.PathOf(".local/share/helmsway/add-ins/OrvelCalibrateS.Connect.addin"));
  for (const char* wrong : {"", "home"}) {
    setenv("HOME", wrong, 1);
    EXPECT_THROW(DataFolder(), std::runtime_error) << wrong;
  }
  setenv("HOME", home.c_str(), 1);
  unsetenv("XDG_DATA_HOME");
}

TEST_F(AddInLibraryTest, StaysForAsLongAsAnObjectOfItLivesAndThenReallyGoes) {
  {
    const AddInLibrary library(file);
    EXPECT_TRUE(library.CanUnload());
    Ref<HelmswayCmds::IObject> frame;
    {
      AddInSession session(library);
      session.Form().GetFrame(frame.Out());
      EXPECT_FALSE(library.CanUnload());
    }
    EXPECT_FALSE(library.CanUnload());
    frame = {};
    EXPECT_TRUE(library.CanUnload());
  }
  EXPECT_EQ(dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST_F(AddInLibraryTest, AFormThatHasBeenUnloadedFailsAndLeavesOutValuesAlone) {
  const AddInLibrary library(file);
  AddInSession session(library);
  session.Surface().SetWindowHandle(77);
  std::int32_t handle = 0;
  EXPECT_EQ(session.Form().GetHwnd(&handle), Result::Ok);
  EXPECT_EQ(handle, 77);
  EXPECT_EQ(session.Form().GetHwnd(nullptr), Result::InvalidPointer);

  EXPECT_EQ(session.Form().PutObjectParent(nullptr), Result::Ok);
  std::string caption = "before";
  OrvelCalibrateS::StringTarget target(caption);
  EXPECT_EQ(session.Connect().GetCaption(target), Result::Failed);
  EXPECT_EQ(caption, "before");
  EXPECT_EQ(session.Form().GetHwnd(&handle), Result::Failed);
  EXPECT_EQ(session.Form().SaveChanges(), Result::Failed);
}

TEST_F(AddInLibraryTest, AnObjectOfTheWrongKindIsNotTaken) {
  FakeHost host;
  const auto connection = OrvelCalibrateS::Testing::Adopt(new FakeHost::Connection(host));
  const auto window = OrvelCalibrateS::Testing::Adopt(new FakeHost::Window(host));
  const AddInLibrary library(file);
  AddInSession session(library);
  EXPECT_EQ(session.Form().PutObjectParent(connection.Get()), Result::Ok);
  EXPECT_EQ(session.Form().PutObjectParent(window.Get()), Result::Ok);    // no connection
  EXPECT_EQ(session.Form().PutFormParent(connection.Get()), Result::Ok);  // no window
  EXPECT_EQ(session.Form().PutFormParent(window.Get()), Result::Ok);      // its status bar fails
  EXPECT_TRUE(session.Surface().Click(0));
  EXPECT_TRUE(session.Surface().Click(session.Surface().Find("cmdButton", 10)));
  session.Form().PutObjectParent(nullptr);
  EXPECT_EQ(host.Log, (std::vector<std::string>{"focus", "stop False", "stop False", "active True", "send REV",
                                                "sent REV", "changed False", "active False"}));
}

}  // namespace
}  // namespace Helmsway
