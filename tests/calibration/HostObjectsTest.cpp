#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "bench/host/AddInLibrary.h"
#include "bench/host/AddInSession.h"
#include "bench/host/HostClasses.h"
#include "tests/replay/ReplayRun.h"
#include "tests/support/FakeHost.h"
#include "tests/support/FakeIniService.h"

namespace Helmsway {
namespace {

using HelmswayCmds::Result;
using OrvelCalibrateS::Ref;
using OrvelCalibrateS::Testing::Adopt;
using OrvelCalibrateS::Testing::FakeHost;
using OrvelCalibrateS::Testing::FakeIniService;
using OrvelCalibrateS::Testing::Lines;

/// The part of a host window that works.
enum class Parts { All, NoStatusBar, NoPanel };

/// A host window that writes its panel's texts, and every other call, into the host's log, after its name.
struct NamedWindow final : FakeHost::Object<HelmswayCmds::IHostWindow> {
  struct Panel final : Object<HelmswayCmds::IStatusPanel> {
    Panel(FakeHost& host, std::string name) : Object(host), Name(std::move(name)) {}
    Result PutText(HelmswayCmds::Text text) noexcept override {
      Host.Log.push_back(Name + " says " + std::string(OrvelCalibrateS::AsView(text)));
      return Result::Ok;
    }
    std::string Name;
  };

  struct StatusBar final : Object<HelmswayCmds::IStatusBar> {
    StatusBar(FakeHost& host, std::string name, Parts parts) : Object(host), Name(std::move(name)), Working(parts) {}
    Result GetPanel(HelmswayCmds::Text key, HelmswayCmds::IStatusPanel** panel) noexcept override {
      if (Working != Parts::All || OrvelCalibrateS::AsView(key) != "STATUS") return Result::Failed;
      *panel = new Panel(Host, Name);
      return Result::Ok;
    }
    std::string Name;
    Parts Working;
  };

  NamedWindow(FakeHost& host, std::string name, Parts parts) : Object(host), Name(std::move(name)), Working(parts) {}
  Result GetStatusBar(HelmswayCmds::IStatusBar** statusBar) noexcept override {
    if (Working == Parts::NoStatusBar) return Result::Failed;
    *statusBar = new StatusBar(Host, Name, Working);
    return Result::Ok;
  }
  Result PutChanged(HelmswayCmds::Boolean value) noexcept override { return Host.Note(Name + " changed", value); }
  Result SetFocus() noexcept override {
    Host.Log.push_back(Name + " focus");
    return Result::Ok;
  }
  std::string Name;
  Parts Working;
};

/// Counts how often it has been handed out.
struct CountedService final : OrvelCalibrateS::Implements<HelmswayCmds::IIniService> {
  Result QueryInterface(const HelmswayCmds::Id& interfaceId, void** object) noexcept override {
    ++HandedOut;
    return Implements::QueryInterface(interfaceId, object);
  }
  Result ReadIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                 HelmswayCmds::Text defaultValue, HelmswayCmds::ITextTarget& value) noexcept override {
    return Files->ReadIni(section, key, filePath, defaultValue, value);
  }
  Result WriteIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                  HelmswayCmds::Text value) noexcept override {
    return Files->WriteIni(section, key, filePath, value);
  }
  Result SplitText(HelmswayCmds::ITextListTarget& parts, HelmswayCmds::Text separator, HelmswayCmds::Text text,
                   std::int32_t* count) noexcept override {
    return Files->SplitText(parts, separator, text, count);
  }
  Ref<HelmswayCmds::IIniService> Files = Adopt<HelmswayCmds::IIniService>(new FakeIniService);
  int HandedOut = 0;
};

/// The library in a host whose objects record their use.
class HostObjects : public testing::Test {
 public:
  HostObjects(const HostObjects&) = delete;
  HostObjects& operator=(const HostObjects&) = delete;

 protected:
  HostObjects() { HostClasses::ServeIniService(held_); }
  ~HostObjects() override { HostClasses::ServeIniService({}); }

  static void PressContinue(AddInSession& session) {
    EXPECT_TRUE(session.Surface().Click(session.Surface().Find("cmdButton", 10)));
  }

  CountedService* Service = new CountedService;

 private:
  Ref<HelmswayCmds::IIniService> held_ = Adopt<HelmswayCmds::IIniService>(Service);
};

TEST_F(HostObjects, AWindowThatIsEmptyOrHasNoPanelLeavesTheOldPanel) {
  const std::string retrieving = "Retrieving configuration settings from Marivane";
  const AddInLibrary library(OptionsFor("").addIn);
  FakeHost host;
  const auto window = [&](const char* name, Parts parts) { return Adopt(new NamedWindow(host, name, parts)); };
  const auto first = window("first", Parts::All);
  using Row = std::pair<Ref<HelmswayCmds::IHostWindow>, Lines>;
  const Lines toOld = {"first says " + retrieving, "second changed False", "first says ", "second focus"};
  for (const auto& [second, log] :
       {Row{{}, {"first says " + retrieving, "first says "}}, Row{window("second", Parts::NoStatusBar), toOld},
        Row{window("second", Parts::NoPanel), toOld},
        Row{window("second", Parts::All),
            {"second says " + retrieving, "second changed False", "second says ", "second focus"}}}) {
    AddInSession session(library);
    EXPECT_EQ(session.Form().PutFormParent(first.Get()), Result::Ok);
    EXPECT_EQ(session.Form().PutFormParent(second.Get()), Result::Ok);
    host.Log.clear();
    PressContinue(session);
    session.Surface().Click(0);
    EXPECT_EQ(host.Log, log);
  }
}

TEST_F(HostObjects, OnlyTheConnectionThatIsHeldHearsThatTheAddInLeaves) {
  const AddInLibrary library(OptionsFor("").addIn);
  FakeHost replaced;
  FakeHost held;
  const auto first = Adopt(new FakeHost::Connection(replaced));
  const auto second = Adopt(new FakeHost::Connection(held));
  for (const bool byRelease : {false, true}) {
    held.Log.clear();
    {
      AddInSession session(library);
      EXPECT_EQ(session.Form().PutObjectParent(first.Get()), Result::Ok);
      EXPECT_EQ(session.Form().PutObjectParent(second.Get()), Result::Ok);
      EXPECT_EQ(held.Log, Lines{}) << "taking it sends nothing";
      if (!byRelease) session.Form().PutObjectParent(nullptr);
    }
    EXPECT_EQ(held.Log, Lines{"active False"}) << byRelease;
  }
  EXPECT_EQ(replaced.Log, Lines{});
}

TEST_F(HostObjects, TheConfigurationServiceIsMadeOnceForTheWholeLibrary) {
  const AddInLibrary library(OptionsFor("").addIn);
  for (int life = 1; life <= 2; ++life) {
    AddInSession session(library);
    PressContinue(session);
    EXPECT_EQ(Service->HandedOut, 1) << "life " << life;
  }
}

}  // namespace
}  // namespace Helmsway
