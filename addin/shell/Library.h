#pragma once

#include <memory>

#include "addin/base/Ref.h"
#include "addin/config/IniFiles.h"
#include "addin/config/SharedRecords.h"
#include "addin/device/HostChannel.h"
#include "addin/shell/FormLoad.h"

namespace OrvelCalibrateS {

/// The state that lives as long as the library: the shared records, the host's `IniService`, the only form, and whether
/// a line is under way.
class Library {
 public:
  /// Created at first use. It ends when the library is unloaded; at the end of a process that still holds objects of
  /// the library it stays, so that those objects can still be released at any time. Fails after its end.
  static Library& Instance();

  /// Releases the host's `IniService`; the next use creates it again. For a host that is about to unload the library.
  /// Otherwise the reference is dropped without a call, because at the end of the process the host may already be gone.
  /// Returns false when the host, which the release calls, has made the add-in take a service again.
  static bool LetGoOfHost() noexcept;

  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  /// The object shared by all living `Connect`s, with the form loaded. Fails once the process ends.
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
