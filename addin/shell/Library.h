#pragma once

#include <memory>

#include "addin/base/Ref.h"
#include "addin/config/IniFiles.h"
#include "addin/config/SharedRecords.h"
#include "addin/device/HostChannel.h"
#include "addin/shell/FormLoad.h"

namespace OrvelCalibrateS {

/// What lives as long as the library: the shared records, the host's `IniService`, the one form, and whether a line is
/// under way.
class Library {
 public:
  /// Made at first use. It ends when the library is unloaded; at the end of a process that still holds objects of the
  /// library it stays, so that those can be released whenever that happens. Fails when it has ended.
  static Library& Instance();

  /// Lets go of the host's `IniService`, which the next use makes again. For a host that is about to unload the
  /// library. Otherwise the reference is dropped without a call: at the end of the process the host may be gone
  /// already. False when the host, which is called, has made the add-in take a service again.
  static bool LetGoOfHost() noexcept;

  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  /// What all `Connect`s that live share, with the form loaded. Fails once the process ends.
  std::shared_ptr<FormLoad> LoadForm();
  /// The form while it is loaded; null otherwise.
  std::shared_ptr<frmAddIn> LoadedForm() const;

 private:
  friend struct LibraryOwner;

  Library();
  ~Library();

  Ref<HelmswayCmds::IIniService> Service();

  Ref<HelmswayCmds::IIniService> service_;
  IniFiles files_;
  SharedRecords records_;
  SendState sending_;
  std::weak_ptr<FormLoad> load_;
};

}  // namespace OrvelCalibrateS
