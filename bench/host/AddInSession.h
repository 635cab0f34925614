#pragma once

#include "addin/base/Ref.h"
#include "addin/contract/HelmswayCmds.h"
#include "bench/host/AddInLibrary.h"
#include "forms/Surface.h"

namespace Helmsway {

/// One life of the add-in in a host: from the creation of `Connect`, which loads its form, to its release.
/// The library must outlive it.
class AddInSession {
 public:
  /// Creates `Connect` and reads its form and the form's surface. Throws `AddInLibraryError` when one of them can't be
  /// had.
  explicit AddInSession(const AddInLibrary& library);
  AddInSession(const AddInSession&) = delete;
  AddInSession& operator=(const AddInSession&) = delete;
  /// Releases `Connect`, which unloads the form if it is still loaded.
  ~AddInSession();

  HelmswayCmds::IAddIn& Connect() { return *connect_; }
  HelmswayCmds::IAddInForm& Form() { return *form_; }
  /// Not to be used any more once the form has been unloaded, which an observer of the surface hears of.
  forms::ISurface& Surface() { return *surface_; }

 private:
  OrvelCalibrateS::Ref<HelmswayCmds::IAddIn> connect_;
  OrvelCalibrateS::Ref<HelmswayCmds::IAddInForm> form_;
  OrvelCalibrateS::Ref<HelmswayCmds::IObject> frame_;  // keeps the surface, which can't be counted
  forms::ISurface* surface_ = nullptr;
};

}  // namespace Helmsway
