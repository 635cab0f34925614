#include "addin/shell/FormLoad.h"

#include "addin/shell/InProcessServer.h"

namespace OrvelCalibrateS {
namespace {

/// What an event of the form holds while it runs. The library goes last.
struct EventHold {
  InProcessServer::InUse inUse;
  std::shared_ptr<frmAddIn> form;
};

}  // namespace

FormLoad::FormLoad(const IniFiles& files, SharedRecords& records, SendState& sending)
    : form_(frmAddIn::Make(files, records, sending)) {
  form_->Form().HoldDuringEvents([form = std::weak_ptr<frmAddIn>(form_)] {
    auto hold = std::make_shared<EventHold>();
    hold->form = form.lock();
    return hold;
  });
}

FormLoad::~FormLoad() { form_->Unload(); }

}  // namespace OrvelCalibrateS
