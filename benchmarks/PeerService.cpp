#include "benchmarks/PeerService.h"

#include <ctime>

#include "addin/base/Boundary.h"
#include "addin/base/Steps.h"
#include "addin/base/Texts.h"

namespace Helmsway::Benchmarks {

using HelmswayCmds::Result;
using HelmswayCmds::Text;
using OrvelCalibrateS::AsText;
using OrvelCalibrateS::AsView;
using OrvelCalibrateS::AtBoundary;
using OrvelCalibrateS::Require;

Result PeerService::ReadIni(Text section, Text key, Text filePath, Text defaultValue,
                            HelmswayCmds::ITextTarget& value) noexcept {
  return AtBoundary([&] {
    Refresh(path_.assign(AsView(filePath)));
    const bool isThere = peer_->Find(section_.assign(AsView(section)), key_.assign(AsView(key)), value_);
    Require(value.Assign(isThere ? AsText(value_) : defaultValue));
  });
}

Result PeerService::WriteIni(Text section, Text key, Text filePath, Text value) noexcept {
  return AtBoundary([&] {
    Require(peer_->Save(path_.assign(AsView(filePath)), section_.assign(AsView(section)), key_.assign(AsView(key)),
                        value_.assign(AsView(value))));
  });
}

Result PeerService::SplitText(HelmswayCmds::ITextListTarget& /*parts*/, Text /*separator*/, Text /*text*/,
                              std::int32_t* /*count*/) noexcept {
  return Result::Failed;
}

void PeerService::Refresh(const std::string& path) {
  FileStamp stamp;
  Require(ReadStamp(path, stamp) == FilePresence::Present);
  if (stampSettled_ && stamp == stamp_) return;

  constexpr std::int64_t second = 1'000'000'000;
  timespec now{};
  clock_gettime(CLOCK_REALTIME_COARSE, &now);
  Require(peer_->Load(path));
  stamp_ = stamp;
  stampSettled_ = std::int64_t{now.tv_sec} * second + now.tv_nsec > stamp.changed + second / 50;
}

}  // namespace Helmsway::Benchmarks
