#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "addin/base/Texts.h"
#include "bench/host/AddInLibrary.h"
#include "bench/host/AddInSession.h"
#include "bench/host/ConfigurationService.h"
#include "bench/host/HostClasses.h"
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
            "[Add-in]\nProgramId=OrvelCalibrateS.Connect\nClassId={d95b74c4-2136-49ae-9fd9-69b691484557}\nLibrary=" +
                file.string() + "\n");
  library.Unregister();
  EXPECT_TRUE(std::filesystem::is_empty(folder.PathOf("helmsway/add-ins")));
  library.Unregister();  // nothing to take back is no failure
  folder.Write("in-the-way", "");
  setenv("XDG_DATA_HOME", folder.PathOf("in-the-way").c_str(), 1);
  EXPECT_THROW(library.Register(), AddInLibraryError);
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
