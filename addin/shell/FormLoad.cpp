#include "addin/shell/FormLoad.h"

#include "addin/shell/InProcessServer.h"

namespace OrvelCalibrateS {
namespace {

/// The references that an event of the form holds while it runs. The library is released last.
struct EventHold {
  InProcessServer::InUse inUse;
  std::shared_ptr<frmAddIn> form;
};

}  // namespace

FormLoad::FormLoad(const IniFiles& files, SharedRecords& records, SendState& sending)
    : files_(files), records_(records), sending_(sending) {}

FormLoad::~FormLoad() {
  if (form_) form_->Unload();
}

void FormLoad::Load() {
  if (LoadedForm()) return;
  const std::shared_ptr<frmAddIn> made = frmAddIn::Make(files_, records_, sending_);
  made->Form().HoldDuringEvents([form = std::weak_ptr<frmAddIn>(made)] {
    auto hold = std::make_shared<EventHold>();
    hold->form = form.lock();
    return hold;
  });
  // Stored before it reads the language: that calls the host, which may ask for the form.
  form_ = made;
  made->Form_Load();
}

std::shared_ptr<frmAddIn> FormLoad::LoadedForm() const { return form_ && form_->Loaded() ? form_ : nullptr; }

}  // namespace OrvelCalibrateS
