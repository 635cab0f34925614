#include "addin/shell/Connect.h"

#include "addin/base/Boundary.h"
#include "addin/base/Steps.h"
#include "addin/base/Texts.h"
#include "addin/shell/AddInForm.h"
#include "addin/shell/Library.h"

namespace OrvelCalibrateS {

using HelmswayCmds::Result;

Result Connect::Create(const HelmswayCmds::Id& interfaceId, void** object) noexcept {
  if (!Offers(interfaceId)) return Result::NoInterface;
  Result result = Result::Failed;
  const Result made = AtBoundary([&] {
    Ref<Connect> connect;
    *connect.Out() = new Connect();
    result = connect->QueryInterface(interfaceId, object);
  });
  return made == Result::Ok ? result : made;
}

Connect::Connect() : boundary_(AddInForm::TheOne()), load_(Library::Instance().LoadForm()) {}

Result Connect::GetForm(HelmswayCmds::IAddInForm** form) noexcept {
  if (form == nullptr) return Result::InvalidPointer;
  *form = Ref(boundary_).Detach();
  return Result::Ok;
}

Result Connect::GetCaption(HelmswayCmds::ITextTarget& caption) noexcept {
  // The target belongs to the host, which may release this object while it takes the text.
  const InProcessServer::InUse running;
  return AtBoundary([&] {
    const std::shared_ptr<frmAddIn> form = load_->LoadedForm();
    Require(form != nullptr);
    Require(caption.Assign(AsText(form->Form().Caption())));
  });
}

}  // namespace OrvelCalibrateS
