#pragma once

#include <memory>

#include "addin/wizard/frmAddIn.h"

namespace OrvelCalibrateS {

/// The form that all `Connect`s share. It ends with the last of them, or earlier, when the host ends it; the next new
/// `Connect` then loads it again, for all of them.
class FormLoad {
 public:
  /// The objects must outlive it.
  FormLoad(const IniFiles& files, SharedRecords& records, SendState& sending);
  FormLoad(const FormLoad&) = delete;
  FormLoad& operator=(const FormLoad&) = delete;
  /// Unloads the form if it is still loaded.
  ~FormLoad();

  /// Creates the form and runs Form_Load, unless the form is loaded.
  void Load();
  /// The form while it is loaded; null otherwise.
  std::shared_ptr<frmAddIn> LoadedForm() const;

 private:
  const IniFiles& files_;
  SharedRecords& records_;
  SendState& sending_;
  std::shared_ptr<frmAddIn> form_;
};

}  // namespace OrvelCalibrateS
