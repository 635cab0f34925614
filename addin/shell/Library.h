#pragma once

#include <memory>

#include "addin/base/Ref.h"
#include "addin/config/IniFiles.h"
#include "addin/config/SharedRecords.h"
#include "addin/wizard/frmAddIn.h"

namespace OrvelCalibrateS {

/// What lives as long as the library: the shared records, the host's `IniService`, and the one form.
class Library {
 public:
  static Library& Instance();

  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  /// The form that is loaded, loading one if there is none.
  std::shared_ptr<frmAddIn> LoadForm();

 private:
  Library();
  ~Library() = default;

  Ref<HelmswayCmds::IIniService> Service();

  Ref<HelmswayCmds::IIniService> service_;
  IniFiles files_;
  SharedRecords records_;
  std::weak_ptr<frmAddIn> form_;
};

}  // namespace OrvelCalibrateS
