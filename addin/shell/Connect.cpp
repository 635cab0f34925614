#include "addin/shell/Connect.h"

#include "addin/base/Boundary.h"
#include "addin/base/Steps.h"
#include "addin/base/Texts.h"
#include "addin/shell/AddInForm.h"
#include "addin/shell/Library.h"

namespace OrvelCalibrateS {

using HelmswayCmds::Result;

Result Connect::Create(const HelmswayCmds::Id& interfaceId, void** object) noexcept {
  Result result = Result::Failed;
  const Result made = AtBoundary([&] {
    Ref<Connect> connect;
    *connect.Out() = new Connect();
    result = connect->QueryInterface(interfaceId, object);
  });
  return made == Result::Ok ? result : made;
}

Connect::Connect() : form_(Library::Instance().LoadForm()) { *boundary_.Out() = new AddInForm(form_); }

Connect::~Connect() { form_->Unload(); }

Result Connect::GetForm(HelmswayCmds::IAddInForm** form) noexcept {
  if (form == nullptr) return Result::InvalidPointer;
  *form = Ref(boundary_).Detach();
  return Result::Ok;
}

Result Connect::GetCaption(HelmswayCmds::ITextTarget& caption) noexcept {
  if (!form_->Loaded()) return Result::Failed;
  return caption.Assign(AsText(form_->Form().Caption()));
}

}  // namespace OrvelCalibrateS
