#pragma once

#include <functional>
#include <utility>

#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/contract/HelmswayCmds.h"

namespace Helmsway {

/// A connection whose link can be out of reach for a reason of its own, which is asked for at every read of the link.
class LosableConnection final : public OrvelCalibrateS::Implements<HelmswayCmds::IParentConnection> {
 public:
  /// `reachable` mustn't throw; it must outlive the connection.
  LosableConnection(OrvelCalibrateS::Ref<HelmswayCmds::IParentConnection> connection, std::function<bool()> reachable)
      : connection_(std::move(connection)), reachable_(std::move(reachable)) {}

  HelmswayCmds::Result GetDeviceLink(HelmswayCmds::IDeviceLink** link) noexcept override {
    return reachable_() ? connection_->GetDeviceLink(link) : HelmswayCmds::Result::Failed;
  }

 private:
  OrvelCalibrateS::Ref<HelmswayCmds::IParentConnection> connection_;
  std::function<bool()> reachable_;
};

}  // namespace Helmsway
