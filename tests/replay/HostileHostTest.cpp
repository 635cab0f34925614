#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "addin/base/Texts.h"
#include "addin/shell/Identities.h"
#include "bench/host/AddInLibrary.h"
#include "bench/host/AddInSession.h"
#include "bench/host/HostClasses.h"
#include "tests/host/TemporaryFolder.h"
#include "tests/replay/ReplayRun.h"
#include "tests/support/FakeHost.h"
#include "tests/support/FakeIniService.h"

/// The library in the hands of a host that does what the contract doesn't forbid, at the worst moment, and some of what
/// it forbids.
namespace Helmsway {
namespace {

using HelmswayCmds::Result;
using OrvelCalibrateS::AsView;
using OrvelCalibrateS::Ref;
using OrvelCalibrateS::Testing::Adopt;
using OrvelCalibrateS::Testing::FakeHost;
using OrvelCalibrateS::Testing::FakeIniService;
using OrvelCalibrateS::Testing::Lines;

using Event = std::function<void()>;

/// Runs the event, if there is one, where it can take itself away.
void Happen(const Event& event) {
  if (const Event held = event) held();
}

/// A service that lets something happen at each read.
struct EventfulService final : OrvelCalibrateS::Implements<HelmswayCmds::IIniService> {
  explicit EventfulService(Event& event) : event_(event) {}
  Result ReadIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                 HelmswayCmds::Text defaultValue, HelmswayCmds::ITextTarget& value) noexcept override {
    Happen(event_);
    return keys_->ReadIni(section, key, filePath, defaultValue, value);
  }
  Result WriteIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                  HelmswayCmds::Text value) noexcept override {
    Happen(event_);
    return keys_->WriteIni(section, key, filePath, value);
  }
  Result SplitText(HelmswayCmds::ITextListTarget& parts, HelmswayCmds::Text separator, HelmswayCmds::Text text,
                   std::int32_t* count) noexcept override {
    return keys_->SplitText(parts, separator, text, count);
  }

 private:
  Event& event_;
  Ref<HelmswayCmds::IIniService> keys_ = Adopt<HelmswayCmds::IIniService>(new FakeIniService());
};

/// A whole window, with a status bar whose panel lets something happen at each text. What it hands out can be nothing.
struct Window final : FakeHost::Object<HelmswayCmds::IHostWindow> {
  enum class Gives { All, NoBar, NoPanel, NullBar, NullPanel };

  struct Panel final : FakeHost::Object<HelmswayCmds::IStatusPanel> {
    Panel(FakeHost& host, const Event& event) : Object(host), Happens(event) {}
    Result PutText(HelmswayCmds::Text text) noexcept override {
      const std::string said(AsView(text));
      Happen(Happens);
      Host.Log.push_back("status " + said);
      return Result::Ok;
    }
    const Event& Happens;
  };

  struct Bar final : FakeHost::Object<HelmswayCmds::IStatusBar> {
    Bar(FakeHost& host, Gives gives, const Event& event) : Object(host), Given(gives), Happens(event) {}
    Result GetPanel(HelmswayCmds::Text key, HelmswayCmds::IStatusPanel** panel) noexcept override {
      Happen(Happens);
      if (AsView(key) != "STATUS" || Given == Gives::NoPanel) return Result::Failed;
      *panel = Given == Gives::NullPanel ? nullptr : new Panel(Host, Happens);
      return Result::Ok;
    }
    const Gives Given;
    const Event& Happens;
  };

  Window(FakeHost& host, Gives gives, const Event& event) : Object(host), Given(gives), Happens(event) {}
  Result GetStatusBar(HelmswayCmds::IStatusBar** statusBar) noexcept override {
    if (Given == Gives::NoBar) return Result::Failed;
    *statusBar = Given == Gives::NullBar ? nullptr : new Bar(Host, Given, Happens);
    return Result::Ok;
  }
  Result PutChanged(HelmswayCmds::Boolean value) noexcept override {
    Happen(Happens);
    return Host.Note("changed", value);
  }
  Result SetFocus() noexcept override {
    Happen(Happens);
    Host.Log.emplace_back("focus");
    return Result::Ok;
  }

  const Gives Given;
  const Event& Happens;
};

/// A connection that lets something happen when it is asked what it is, and when its link is fetched.
struct EventfulConnection final : FakeHost::Object<HelmswayCmds::IParentConnection> {
  EventfulConnection(FakeHost& host, const Event& onQuery, const Event& onLink)
      : Object(host), OnQuery(onQuery), OnLink(onLink) {}
  Result QueryInterface(const HelmswayCmds::Id& interfaceId, void** object) noexcept override {
    Happen(OnQuery);
    return Object::QueryInterface(interfaceId, object);
  }
  Result GetDeviceLink(HelmswayCmds::IDeviceLink** link) noexcept override {
    Happen(OnLink);
    *link = new FakeHost::DeviceLink(Host);
    return Result::Ok;
  }
  const Event& OnQuery;
  const Event& OnLink;
};

class HostileHost : public testing::Test {
 public:
  HostileHost(const HostileHost&) = delete;
  HostileHost& operator=(const HostileHost&) = delete;

 protected:
  HostileHost() {
    HostClasses::ServeIniService(Adopt<HelmswayCmds::IIniService>(new EventfulService(onFile)));
    library.emplace(file);
  }
  ~HostileHost() override {
    session.reset();
    library.reset();
    HostClasses::ServeIniService({});
  }

  /// Creates the add-in and hands over connection and window, of which the host keeps no reference.
  void Begin(Window::Gives gives = Window::Gives::All) {
    session = std::make_unique<AddInSession>(*library);
    GiveConnection();
    session->Form().PutFormParent(Adopt(new Window(host, gives, onWindow)).Get());
  }
  void GiveConnection() { session->Form().PutObjectParent(Adopt(new EventfulConnection(host, onQuery, onLink)).Get()); }
  bool Press(std::int16_t button) { return session->Surface().Click(session->Surface().Find("cmdButton", button)); }
  void ToMainPage() {
    EXPECT_TRUE(Press(10));
    EXPECT_TRUE(session->Surface().SetChecked(session->Surface().Find("chkToolInstalled", forms::NoIndex), true));
    EXPECT_TRUE(Press(9));
    host.Log.clear();
  }

  const std::filesystem::path file = OptionsFor("").addIn;
  FakeHost host;
  Event onFile;
  Event onWindow;
  Event onQuery;
  Event onLink;
  std::optional<AddInLibrary> library;
  std::unique_ptr<AddInSession> session;
};

TEST_F(HostileHost, TheLibraryStaysForAsLongAsItsCodeRunsWhateverIsReleased) {
  Begin();
  ToMainPage();
  bool mayGo = true;
  host.Meanwhile["HOME ALL"] = [&] {
    session.reset();
    mayGo = library->CanUnload();
  };
  EXPECT_TRUE(Press(5));
  EXPECT_FALSE(mayGo) << "in a command";
  EXPECT_TRUE(library->CanUnload());
  EXPECT_EQ(host.Log.back(), "sent HOME ALL");

  using Step = std::pair<const char*, std::function<void()>>;
  const std::vector<Step> steps = {
      {"while the class is made", [&] { Begin(); }},
      {"in the host's own call",
       [&] {
         Begin();
         session->Form().SaveChanges();  // its question counts as cancelled without message boxes
         session->Form().PutObjectParent(nullptr);
       }},
      {"in a button", [&] { Begin(), Press(10); }},
  };
  for (const auto& [name, step] : steps) {
    SCOPED_TRACE(name);
    int asked = 0;
    onFile = onWindow = [&] {
      ++asked;
      EXPECT_FALSE(library->CanUnload());
    };
    step();
    EXPECT_GT(asked, 0);
    onFile = onWindow = nullptr;
    session.reset();
    EXPECT_TRUE(library->CanUnload());
  }
}

TEST_F(HostileHost, AFormOfTheNextConnectWaitsForTheLineOfTheFormBefore) {
  Begin();
  ToMainPage();
  Lines meanwhile;
  host.Meanwhile["HOME ALL"] = [&] {
    session.reset();
    Begin();
    host.Log.clear();
    EXPECT_TRUE(Press(10));
    meanwhile = host.Log;
  };
  EXPECT_TRUE(Press(5));
  EXPECT_EQ(meanwhile, Lines{}) << "a press during a line does nothing";
  EXPECT_EQ(host.Log, Lines{"sent HOME ALL"});
  EXPECT_TRUE(Press(10));
  EXPECT_EQ(host.Sent(), Lines{"REV"}) << "and the new form is at its beginning";
}

TEST_F(HostileHost, WhatIsRefusedChangesNothingForTheFormThatLives) {
  Begin();
  ToMainPage();
  void* const handle = dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD);
  const auto getClassObject =
      reinterpret_cast<HelmswayCmds::GetClassObjectFunction>(dlsym(handle, OrvelCalibrateS::GetClassObjectName));
  dlclose(handle);
  void* made = nullptr;
  ASSERT_EQ(getClassObject(&OrvelCalibrateS::ConnectClassId, &HelmswayCmds::IClassFactory::InterfaceId, &made),
            Result::Ok);
  Ref<HelmswayCmds::IClassFactory> factory;
  *factory.Out() = static_cast<HelmswayCmds::IClassFactory*>(made);
  made = this;
  EXPECT_EQ(factory->CreateInstance(HelmswayCmds::IHostWindow::InterfaceId, &made), Result::NoInterface);
  EXPECT_EQ(made, this);
  EXPECT_EQ(host.Log, Lines{});
  EXPECT_TRUE(Press(5));
  EXPECT_EQ(host.Sent(), Lines{"HOME ALL"});
}

TEST_F(HostileHost, AllConnectsShareOneFormWhichGoesWithTheLast) {
  Begin();
  auto second = std::make_unique<AddInSession>(*library);
  EXPECT_EQ(&second->Form(), &session->Form());
  EXPECT_EQ(&second->Surface(), &session->Surface());
  std::array<Ref<HelmswayCmds::IObject>, 2> frames;
  session->Form().GetFrame(frames[0].Out());
  second->Form().GetFrame(frames[1].Out());
  EXPECT_EQ(frames[0].Get(), frames[1].Get());
  frames = {};

  session.swap(second);
  second.reset();
  EXPECT_EQ(host.Log, Lines{});
  EXPECT_TRUE(Press(10));
  EXPECT_EQ(host.Sent(), Lines{"REV"});
  host.Log.clear();
  session.reset();
  EXPECT_EQ(host.Log, Lines{"active False"});
}

TEST_F(HostileHost, AConnectWhoseFormTheHostEndedSharesTheNextOne) {
  Begin();
  const Ref<HelmswayCmds::IAddIn> old(&session->Connect());
  session->Form().PutObjectParent(nullptr);
  session.reset();
  Begin();
  std::string caption;
  OrvelCalibrateS::StringTarget target(caption);
  EXPECT_EQ(old->GetCaption(target), Result::Ok);
  Ref<HelmswayCmds::IAddInForm> form;
  EXPECT_EQ(old->GetForm(form.Out()), Result::Ok);
  session.reset();
  EXPECT_EQ(form->LoadDefaults(), Result::Ok) << "the form goes with the last of them";
}

TEST_F(HostileHost, AConnectMadeWhileTheFormLoadsSharesThatForm) {
  std::optional<AddInSession> nested;
  onFile = [&] {
    onFile = nullptr;
    nested.emplace(*library);
  };
  Begin();
  ASSERT_TRUE(nested.has_value());
  EXPECT_EQ(&nested->Surface(), &session->Surface());
}

TEST_F(HostileHost, NothingHandedOutIsAFailedStep) {
  for (const auto gives :
       {Window::Gives::NoBar, Window::Gives::NoPanel, Window::Gives::NullBar, Window::Gives::NullPanel}) {
    Begin();
    // The panel that is known stays.
    session->Form().PutFormParent(Adopt(new Window(host, gives, onWindow)).Get());
    host.Log.clear();
    EXPECT_TRUE(Press(10));
    EXPECT_EQ(host.Log.front(), "stop False");
    EXPECT_EQ(host.Log.at(1), "status Retrieving configuration settings from Marivane");
    session.reset();
  }
}

TEST_F(HostileHost, AHostThatTakesItselfBackInsideACallIsKeptUntilTheCallReturns) {
  for (const std::int16_t button : {std::int16_t{10}, std::int16_t{5}, std::int16_t{0}}) {
    SCOPED_TRACE(button);
    Begin();
    if (button != 10) ToMainPage();
    onWindow = [&] {
      onWindow = nullptr;
      session->Form().PutFormParent(nullptr);
      session->Form().PutObjectParent(nullptr);
    };
    EXPECT_TRUE(Press(button));
    EXPECT_EQ(onWindow, nullptr);
    EXPECT_EQ(host.Sent(), Lines{}) << "there is no connection any more";
    session.reset();
    host.Log.clear();
  }
  Begin();
  onWindow = [&] {
    onWindow = nullptr;
    session->Form().PutFormParent(nullptr);
  };
  EXPECT_TRUE(session->Surface().Click(0));
  EXPECT_EQ(host.Log, Lines{"focus"});
}

TEST_F(HostileHost, AFormThatIsEndedWhileItsLinkIsFetchedWritesAndSendsNothingMore) {
  // The fetches of a press: for the press itself, the flag's read, and the three steps of the send.
  for (int fetch = 1; fetch <= 5; ++fetch) {
    SCOPED_TRACE(fetch);
    Begin();
    ToMainPage();
    int left = fetch;
    onLink = [&] {
      if (--left > 0) return;
      onLink = nullptr;
      session->Form().PutObjectParent(nullptr);
    };
    EXPECT_TRUE(Press(5));
    EXPECT_EQ(host.Log.back(), "active False");
    session.reset();
  }
}

TEST_F(HostileHost, AFormThatIsEndedWhileItIsGivenAnObjectDoesNotTakeIt) {
  const Event end = [&] { session->Form().PutObjectParent(nullptr); };
  Begin();
  ToMainPage();
  host.Meanwhile["MOVE SD_Y 0"] = [&] {
    onQuery = end;
    GiveConnection();
    onQuery = nullptr;
  };
  EXPECT_TRUE(Press(0));
  EXPECT_EQ(host.Log.back(), "sent MOVE SD_Y 0") << "the instrument gets no further line";
  session.reset();

  Begin();
  ToMainPage();
  EXPECT_TRUE(Press(14) && Press(9));
  host.Log.clear();
  host.Meanwhile["HOME ALL"] = [&] {
    const auto window = Adopt(new Window(host, Window::Gives::All, onWindow));
    onWindow = end;
    session->Form().PutFormParent(window.Get());
    onWindow = nullptr;
  };
  EXPECT_TRUE(Press(13));
  EXPECT_EQ(host.Log.back(), "sent HOME ALL") << "the panel gets no further text";
}

TEST_F(HostileHost, AWindowThatIsReplacedWhileItsPanelIsLookedUpGivesNoPanel) {
  FakeHost late;
  Begin();
  onWindow = [&] {
    onWindow = nullptr;
    session->Form().PutFormParent(Adopt(new Window(host, Window::Gives::All, onWindow)).Get());
  };
  session->Form().PutFormParent(Adopt(new Window(late, Window::Gives::All, onWindow)).Get());
  EXPECT_TRUE(Press(10));
  EXPECT_EQ(late.Log, Lines{});
}

TEST_F(HostileHost, NothingThatIsDoneWhileTheFormLeavesTakesAddInActiveBack) {
  for (const bool byConnect : {false, true}) {
    for (const std::int16_t button : {std::int16_t{5}, std::int16_t{14}, std::int16_t{16}, std::int16_t{-1}}) {
      SCOPED_TRACE(std::to_string(button) + (byConnect ? " as Connect goes" : " as the connection goes"));
      Begin();
      ToMainPage();
      HelmswayCmds::IAddInForm& form = session->Form();
      forms::ISurface& surface = session->Surface();
      int asked = 0;
      onLink = [&] {
        if (asked++ > 0) return;
        if (button >= 0) surface.Click(surface.Find("cmdButton", button));
        if (!byConnect && button < 0) {
          EXPECT_EQ(form.SaveChanges(), Result::Failed);
        }
      };
      byConnect ? session.reset() : static_cast<void>(form.PutObjectParent(nullptr));
      onLink = nullptr;
      EXPECT_EQ(asked, 1);
      EXPECT_EQ(host.Log, Lines{"active False"});
      session.reset();
    }
  }
}

/// Ends the process with another status when it is called after the host's end.
struct MortalService final : HelmswayCmds::IIniService {
  static inline bool hostHasEnded = false;
  static inline Event OnRelease;
  static void Touch() {
    if (hostHasEnded) _exit(7);
  }
  Result QueryInterface(const HelmswayCmds::Id&, void** object) noexcept override {
    Touch();
    *object = this;
    return Result::Ok;
  }
  std::uint32_t AddRef() noexcept override { return Touch(), 1; }
  std::uint32_t Release() noexcept override {
    Touch();
    Happen(OnRelease);
    return 1;
  }
  Result ReadIni(HelmswayCmds::Text, HelmswayCmds::Text, HelmswayCmds::Text, HelmswayCmds::Text,
                 HelmswayCmds::ITextTarget&) noexcept override {
    return Result::Failed;
  }
  Result WriteIni(HelmswayCmds::Text, HelmswayCmds::Text, HelmswayCmds::Text, HelmswayCmds::Text) noexcept override {
    return Result::Failed;
  }
  Result SplitText(HelmswayCmds::ITextListTarget&, HelmswayCmds::Text, HelmswayCmds::Text,
                   std::int32_t*) noexcept override {
    return Result::Failed;
  }
};

TEST_F(HostileHost, TheEndOfTheProcessCallsNoHostThatHasEnded) {
  static MortalService service;
  const auto live = [&](bool released) {
    HostClasses::ServeIniService(Ref<HelmswayCmds::IIniService>(&service));
    Begin();
    if (released) session.reset();
    HostClasses::ServeIniService({});
    MortalService::hostHasEnded = true;
    std::exit(0);
  };
  EXPECT_EXIT(live(true), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(live(false), testing::ExitedWithCode(0), "");
}

TEST_F(HostileHost, TheLibraryStaysWhenTheEndOfTheServiceMakesItTakeAnother) {
  static MortalService service;
  HostClasses::ServeIniService(Ref<HelmswayCmds::IIniService>(&service));
  Begin();
  session.reset();
  MortalService::OnRelease = [&] {
    MortalService::OnRelease = nullptr;
    Begin();
    session.reset();
  };
  EXPECT_FALSE(library->CanUnload());
  EXPECT_TRUE(library->CanUnload());
}

/// What objects with static storage of a host do when the process ends: the library's own have gone by then.
struct LateHost {
  ~LateHost() {
    if (AtTheEnd) AtTheEnd();
  }
  static inline Event AtTheEnd;
};
const LateHost lateHost;

TEST_F(HostileHost, AHostMayWorkTheLibraryUntilItsVeryEnd) {
  const auto end = [&](bool released) {
    Begin();
    if (released) session.reset();
    LateHost::AtTheEnd = [&] {
      session.reset();
      if (!library->CanUnload()) _exit(7);
      try {
        const AddInSession tooLate(*library);
        _exit(8);
      } catch (const AddInLibraryError&) {
      }
      if (!library->CanUnload()) _exit(9);
      _exit(0);
    };
    std::exit(1);
  };
  EXPECT_EXIT(end(true), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(end(false), testing::ExitedWithCode(0), "");
}

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
}  // namespace Helmsway
