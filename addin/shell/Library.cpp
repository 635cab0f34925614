#include "addin/shell/Library.h"

#include "addin/contract/HelmswayCmds.h"
#include "addin/shell/Platform.h"

namespace OrvelCalibrateS {
namespace {

/// Makes the host's `IniService`; empty when the host doesn't offer it.
Ref<HelmswayCmds::IIniService> MakeIniService() {
  using HelmswayCmds::IClassFactory;
  using HelmswayCmds::IIniService;
  Ref<IIniService> service;
  const HelmswayCmds::GetClassObjectFunction getClassObject = Platform::HostClassObjectFunction();
  if (getClassObject == nullptr) return service;
  void* found = nullptr;
  if (getClassObject(&IIniService::ClassId, &IClassFactory::InterfaceId, &found) != HelmswayCmds::Result::Ok) {
    return service;
  }
  Ref<IClassFactory> factory;
  *factory.Out() = static_cast<IClassFactory*>(found);
  if (factory->CreateInstance(IIniService::InterfaceId, &found) == HelmswayCmds::Result::Ok) {
    *service.Out() = static_cast<IIniService*>(found);
  }
  return service;
}

}  // namespace

Library& Library::Instance() {
  static Library library;
  return library;
}

Library::Library() : files_([this] { return Service(); }, Platform::LibraryFile().parent_path().string()) {}

std::shared_ptr<frmAddIn> Library::LoadForm() {
  if (auto form = form_.lock(); form && form->Loaded()) return form;
  auto form = frmAddIn::Load(files_, records_);
  form_ = form;
  return form;
}

Ref<HelmswayCmds::IIniService> Library::Service() {
  if (!service_) service_ = MakeIniService();
  return service_;
}

}  // namespace OrvelCalibrateS
