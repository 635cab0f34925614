#include "addin/shell/FrameObject.h"

#include <utility>

#include "addin/shell/Identities.h"

namespace OrvelCalibrateS {
namespace {

/// The last created object, while it lives. An object of an earlier load may still be held beside it.
FrameObject* latest = nullptr;

}  // namespace

Ref<HelmswayCmds::IObject> FrameObject::Of(const std::shared_ptr<frmAddIn>& form) {
  if (latest != nullptr && latest->form_ == form) return Ref<HelmswayCmds::IObject>(latest);
  latest = new FrameObject(form);
  Ref<HelmswayCmds::IObject> made;
  *made.Out() = latest;
  return made;
}

FrameObject::FrameObject(std::shared_ptr<frmAddIn> form) : form_(std::move(form)) {}

FrameObject::~FrameObject() {
  if (latest == this) latest = nullptr;
}

HelmswayCmds::Result FrameObject::QueryInterface(const HelmswayCmds::Id& interfaceId, void** object) noexcept {
  if (object != nullptr && interfaceId == SurfaceInterfaceId) {
    *object = static_cast<forms::ISurface*>(&form_->Form());
    return HelmswayCmds::Result::Ok;
  }
  return Implements::QueryInterface(interfaceId, object);
}

}  // namespace OrvelCalibrateS
