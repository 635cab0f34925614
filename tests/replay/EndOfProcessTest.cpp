#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>

#include "tests/replay/HostileHost.h"

namespace Helmsway::Testing {
namespace {

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

}  // namespace
}  // namespace Helmsway::Testing
