#include "addin/shell/AddInForm.h"

#include <utility>

#include "addin/base/Boundary.h"
#include "addin/base/Ref.h"
#include "addin/base/Steps.h"
#include "addin/base/Texts.h"
#include "addin/shell/Identities.h"

namespace OrvelCalibrateS {
namespace {

using HelmswayCmds::Result;

constexpr std::int32_t helpContextIdOfTheForm = 9014;

/// The picture box that holds every control, as an object that can be handed out and outlives the form.
class FrameObject final : public Implements<HelmswayCmds::IObject> {
 public:
  explicit FrameObject(std::shared_ptr<frmAddIn> form) : form_(std::move(form)) {}

  Result QueryInterface(const HelmswayCmds::Id& interfaceId, void** object) noexcept override {
    if (object != nullptr && interfaceId == SurfaceInterfaceId) {
      *object = static_cast<forms::ISurface*>(&form_->Form());
      return Result::Ok;
    }
    return Implements::QueryInterface(interfaceId, object);
  }

 private:
  std::shared_ptr<frmAddIn> form_;
  InProcessServer::LivingObject living_;
};

/// Runs an operation on a loaded form. The reference held here keeps the form alive until the operation returns, even
/// if the host lets go of everything in the middle of it.
template <class Operation>
Result OnForm(const std::shared_ptr<frmAddIn>& form, Operation&& operation) noexcept {
  return AtBoundary([&] {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is what keeps the form alive
    const std::shared_ptr<frmAddIn> held = form;
    Require(held->Loaded());
    operation(*held);
  });
}

template <class Value>
Result Give(const std::shared_ptr<frmAddIn>& form, Value* target, Value value) noexcept {
  if (target == nullptr) return Result::InvalidPointer;
  return OnForm(form, [&](frmAddIn&) { *target = value; });
}

/// The status panel of a host window, found by name.
Ref<HelmswayCmds::IStatusPanel> FindStatusPanel(const Ref<HelmswayCmds::IHostWindow>& window) {
  Require(static_cast<bool>(window));
  Ref<HelmswayCmds::IStatusBar> sbstatusbar;
  Require(window->GetStatusBar(sbstatusbar.Out()));
  Require(static_cast<bool>(sbstatusbar));
  Ref<HelmswayCmds::IStatusPanel> panel;
  Require(sbstatusbar->GetPanel(AsText("STATUS"), panel.Out()));
  return panel;
}

}  // namespace

Result AddInForm::SaveChanges() noexcept {
  return OnForm(form_, [](frmAddIn& form) { form.SaveChanges(); });
}

Result AddInForm::LoadDefaults() noexcept {
  return OnForm(form_, [](frmAddIn& form) { form.ResetProgressFlags(); });
}

Result AddInForm::PutObjectParent(HelmswayCmds::IObject* connection) noexcept {
  return OnForm(form_, [&](frmAddIn& form) {
    HostChannel& host = form.Host();
    if (connection == nullptr) {
      Skip([&] { host.WriteAddInActive(false); });
      host.ParentConnection = {};
      form.Unload();
      return;
    }
    Skip([&] {
      auto parentConnection = Query<HelmswayCmds::IParentConnection>(connection);
      Require(static_cast<bool>(parentConnection));
      host.ParentConnection = std::move(parentConnection);
    });
  });
}

Result AddInForm::PutFormParent(HelmswayCmds::IObject* window) noexcept {
  return OnForm(form_, [&](frmAddIn& form) {
    HostChannel& host = form.Host();
    if (window == nullptr) {
      host.FormParent = {};  // the status panel stays: texts still go to it
      return;
    }
    Skip([&] {
      auto formParent = Query<HelmswayCmds::IHostWindow>(window);
      Require(static_cast<bool>(formParent));
      host.FormParent = std::move(formParent);
    });
    Put(host.StatusPanel, [&] { return FindStatusPanel(host.FormParent); });
  });
}

Result AddInForm::GetFrame(HelmswayCmds::IObject** frame) noexcept {
  if (frame == nullptr) return Result::InvalidPointer;
  return OnForm(form_, [&](frmAddIn&) { *frame = new FrameObject(form_); });
}

Result AddInForm::GetHwnd(std::int32_t* handle) noexcept { return Give(form_, handle, form_->Form().WindowHandle()); }

Result AddInForm::GetHelpContextID(std::int32_t* helpContextId) noexcept {
  return Give(form_, helpContextId, helpContextIdOfTheForm);
}

Result AddInForm::GetShowStatusBar(HelmswayCmds::Boolean* show) noexcept {
  return Give(form_, show, HelmswayCmds::True);
}

Result AddInForm::GetShowButtons(HelmswayCmds::Boolean* show) noexcept { return Give(form_, show, HelmswayCmds::True); }

}  // namespace OrvelCalibrateS
