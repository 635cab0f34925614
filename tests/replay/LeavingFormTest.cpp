#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/replay/HostileHost.h"

namespace Helmsway::Testing {
namespace {

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

}  // namespace
}  // namespace Helmsway::Testing
