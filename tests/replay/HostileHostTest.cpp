#include <dlfcn.h>

#include <array>
#include <functional>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

#include "addin/shell/Identities.h"
#include "tests/replay/HostileHost.h"

namespace Helmsway::Testing {
namespace {

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

TEST_F(HostileHost, WhatTheHostReadsOfTheFormIsTheSameAtAnyTime) {
  for (const bool onMainPage : {false, true}) {
    Begin();
    if (onMainPage) ToMainPage();
    std::int32_t helpContextId = 0;
    HelmswayCmds::Boolean statusBar = HelmswayCmds::False;
    HelmswayCmds::Boolean buttons = HelmswayCmds::False;
    EXPECT_EQ(session->Form().GetHelpContextID(&helpContextId), Result::Ok);
    EXPECT_EQ(session->Form().GetShowStatusBar(&statusBar), Result::Ok);
    EXPECT_EQ(session->Form().GetShowButtons(&buttons), Result::Ok);
    EXPECT_EQ(std::tuple(helpContextId, statusBar, buttons), std::tuple(9014, HelmswayCmds::True, HelmswayCmds::True));
    session.reset();
  }
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
  session->Form().PutObjectParent(nullptr);
  int reads = 0;
  onFile = [&] { ++reads; };
  EXPECT_EQ(factory->CreateInstance(HelmswayCmds::IHostWindow::InterfaceId, &made), Result::NoInterface);
  EXPECT_EQ(reads, 0) << "no form is loaded for it";
  onFile = nullptr;
  session.reset();
  Begin();
  ToMainPage();
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

}  // namespace
}  // namespace Helmsway::Testing
