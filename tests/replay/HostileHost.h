#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "addin/base/Texts.h"
#include "bench/host/AddInLibrary.h"
#include "bench/host/AddInSession.h"
#include "bench/host/HostClasses.h"
#include "tests/replay/ReplayRun.h"
#include "tests/support/FakeHost.h"
#include "tests/support/FakeIniService.h"

/// The library in the hands of a host that does what the contract doesn't forbid, at the worst moment, and some of what
/// it forbids.
namespace Helmsway::Testing {

using HelmswayCmds::Result;
using OrvelCalibrateS::AsView;
using OrvelCalibrateS::Ref;
using OrvelCalibrateS::Testing::Adopt;
using OrvelCalibrateS::Testing::FakeHost;
using OrvelCalibrateS::Testing::FakeIniService;
using OrvelCalibrateS::Testing::Lines;

using Event = std::function<void()>;

/// Runs the event, if there is one, where it can take itself away.
inline void Happen(const Event& event) {
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

}  // namespace Helmsway::Testing
