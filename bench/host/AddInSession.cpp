#include "bench/host/AddInSession.h"

#include "addin/shell/Identities.h"

namespace Helmsway {
namespace {

using HelmswayCmds::Result;

void Demand(Result result, const char* what) {
  if (result != Result::Ok) throw AddInLibraryError(std::string("the add-in gives no ") + what);
}

}  // namespace

AddInSession::AddInSession(const AddInLibrary& library) : connect_(library.CreateAddIn()) {
  Demand(connect_->GetForm(form_.Out()), "form");
  Demand(form_->GetFrame(frame_.Out()), "frame");
  void* surface = nullptr;
  Demand(frame_->QueryInterface(OrvelCalibrateS::SurfaceInterfaceId, &surface), "surface to its frame");
  surface_ = static_cast<forms::ISurface*>(surface);
}

AddInSession::~AddInSession() {
  form_ = {};
  connect_ = {};  // unloads the form, while its frame is still there
  frame_ = {};
}

}  // namespace Helmsway
