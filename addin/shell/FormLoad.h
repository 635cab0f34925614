#pragma once

#include <memory>

#include "addin/wizard/frmAddIn.h"

namespace OrvelCalibrateS {

/// One load of the form, which ends with the last `Connect` that shares it, or before, when the host ends the form.
class FormLoad {
 public:
  /// Makes the form. The objects must outlive it.
  FormLoad(const IniFiles& files, SharedRecords& records, SendState& sending);
  FormLoad(const FormLoad&) = delete;
  FormLoad& operator=(const FormLoad&) = delete;
  /// Unloads the form if it is still loaded.
  ~FormLoad();

  const std::shared_ptr<frmAddIn>& Form() const { return form_; }

 private:
  std::shared_ptr<frmAddIn> form_;
};

}  // namespace OrvelCalibrateS
