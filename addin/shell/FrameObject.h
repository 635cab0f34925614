#pragma once

#include <memory>

#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/contract/Component.h"
#include "addin/shell/InProcessServer.h"
#include "addin/wizard/frmAddIn.h"

namespace OrvelCalibrateS {

/// The picture box that holds every control, as an object that can be handed out and outlives the form's unloading.
class FrameObject final : public Implements<HelmswayCmds::IObject> {
 public:
  /// Returns the only object of that form: all references held at a time are to the same one.
  static Ref<HelmswayCmds::IObject> Of(const std::shared_ptr<frmAddIn>& form);

  FrameObject(const FrameObject&) = delete;
  FrameObject& operator=(const FrameObject&) = delete;

  /// Also offers the form's surface, uncounted.
  HelmswayCmds::Result QueryInterface(const HelmswayCmds::Id& interfaceId, void** object) noexcept override;

 private:
  explicit FrameObject(std::shared_ptr<frmAddIn> form);
  ~FrameObject() override;

  InProcessServer::InUse inUse_;
  std::shared_ptr<frmAddIn> form_;
};

}  // namespace OrvelCalibrateS
