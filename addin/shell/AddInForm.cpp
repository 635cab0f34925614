#include "addin/shell/AddInForm.h"

#include <memory>
#include <utility>

#include "addin/base/Boundary.h"
#include "addin/base/HostObjects.h"
#include "addin/base/Texts.h"
#include "addin/shell/FrameObject.h"
#include "addin/shell/Library.h"
#include "addin/wizard/frmAddIn.h"

namespace OrvelCalibrateS {
namespace {

using HelmswayCmds::Result;

constexpr std::int32_t helpContextIdOfTheForm = 9014;

/// The object that lives while the host holds a reference to it; null otherwise.
AddInForm* theOne = nullptr;

/// Runs an operation on the loaded form. Keeps form and library alive until the operation returns, even if the host
/// releases everything during the operation.
template <class Operation>
Result OnForm(Operation&& operation) noexcept {
  const InProcessServer::InUse running;
  return AtBoundary([&] {
    const std::shared_ptr<frmAddIn> form = Library::Instance().LoadedForm();
    Require(form != nullptr);
    operation(*form);
  });
}

/// Returns a value of the loaded form to the host.
template <class Value, class Source>
Result Give(Value* target, Source&& source) noexcept {
  if (target == nullptr) return Result::InvalidPointer;
  return OnForm([&](frmAddIn& form) { *target = source(form); });
}

/// The status panel of the host window, found by name. Also fails when the host has taken back or replaced the window
/// during the look-up.
Ref<HelmswayCmds::IStatusPanel> FindStatusPanel(const Ref<HelmswayCmds::IHostWindow>& formParent) {
  const auto window = Held(formParent);
  const auto sbstatusbar =
      Given<HelmswayCmds::IStatusBar>([&](HelmswayCmds::IStatusBar** bar) { return window->GetStatusBar(bar); });
  auto panel = Given<HelmswayCmds::IStatusPanel>(
      [&](HelmswayCmds::IStatusPanel** given) { return sbstatusbar->GetPanel(AsText("STATUS"), given); });
  Require(formParent.Get() == window.Get());
  return panel;
}

}  // namespace

Ref<HelmswayCmds::IAddInForm> AddInForm::TheOne() {
  if (theOne != nullptr) return Ref<HelmswayCmds::IAddInForm>(theOne);
  theOne = new AddInForm();
  Ref<HelmswayCmds::IAddInForm> made;
  *made.Out() = theOne;
  return made;
}

AddInForm::~AddInForm() { theOne = nullptr; }

Result AddInForm::SaveChanges() noexcept {
  return OnForm([](frmAddIn& form) { form.SaveChanges(); });
}

Result AddInForm::LoadDefaults() noexcept {
  return OnForm([](frmAddIn& form) { form.ResetProgressFlags(); });
}

Result AddInForm::PutObjectParent(HelmswayCmds::IObject* connection) noexcept {
  return OnForm([&](frmAddIn& form) {
    HostChannel& host = form.Host();
    if (connection == nullptr) {
      form.DropConnection();
      return;
    }
    Skip([&] {
      auto parentConnection = Query<HelmswayCmds::IParentConnection>(connection);
      Require(static_cast<bool>(parentConnection));
      Require(form.Loaded());  // the host may have ended the form during the query
      host.ParentConnection = std::move(parentConnection);
    });
  });
}

Result AddInForm::PutFormParent(HelmswayCmds::IObject* window) noexcept {
  return OnForm([&](frmAddIn& form) {
    HostChannel& host = form.Host();
    if (window == nullptr) {
      host.FormParent = {};  // the status panel stays: texts still go to it
      return;
    }
    Skip([&] {
      auto formParent = Query<HelmswayCmds::IHostWindow>(window);
      Require(static_cast<bool>(formParent));
      Require(form.Loaded());
      host.FormParent = std::move(formParent);
    });
    Put(host.StatusPanel, [&] { return FindStatusPanel(host.FormParent); });
  });
}

Result AddInForm::GetFrame(HelmswayCmds::IObject** frame) noexcept {
  if (frame == nullptr) return Result::InvalidPointer;
  return OnForm([&](frmAddIn& form) { *frame = FrameObject::Of(form.shared_from_this()).Detach(); });
}

Result AddInForm::GetHwnd(std::int32_t* handle) noexcept {
  return Give(handle, [](frmAddIn& form) { return form.Form().WindowHandle(); });
}

Result AddInForm::GetHelpContextID(std::int32_t* helpContextId) noexcept {
  return Give(helpContextId, [](frmAddIn&) { return helpContextIdOfTheForm; });
}

Result AddInForm::GetShowStatusBar(HelmswayCmds::Boolean* show) noexcept {
  return Give(show, [](frmAddIn&) { return HelmswayCmds::True; });
}

Result AddInForm::GetShowButtons(HelmswayCmds::Boolean* show) noexcept {
  return Give(show, [](frmAddIn&) { return HelmswayCmds::True; });
}

}  // namespace OrvelCalibrateS
