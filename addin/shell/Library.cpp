#include "addin/shell/Library.h"

#include <utility>

#include "addin/base/HostObjects.h"
#include "addin/contract/HelmswayCmds.h"
#include "addin/shell/InProcessServer.h"
#include "addin/shell/Platform.h"

namespace OrvelCalibrateS {
namespace {

/// Creates the host's `IniService`; empty when the host doesn't offer it.
Ref<HelmswayCmds::IIniService> MakeIniService() {
  using HelmswayCmds::IClassFactory;
  using HelmswayCmds::IIniService;
  Ref<IIniService> service;
  const HelmswayCmds::GetClassObjectFunction getClassObject = Platform::HostClassObjectFunction();
  if (getClassObject == nullptr) return service;
  Put(service, [&] {
    const auto factory = GivenById<IClassFactory>([&](const HelmswayCmds::Id& interfaceId, void** object) {
      return getClassObject(&IIniService::ClassId, &interfaceId, object);
    });
    return GivenById<IIniService>([&](const HelmswayCmds::Id& interfaceId, void** object) {
      return factory->CreateInstance(interfaceId, object);
    });
  });
  return service;
}

/// Both need no destructor, so that they can be read after the library's static objects have ended: the host's static
/// objects end later and may use the library until then.
Library* library = nullptr;
bool ended = false;

}  // namespace

/// Ends the only object when the library is unloaded, unless objects that the host holds need it.
struct LibraryOwner {
  LibraryOwner() = default;
  LibraryOwner(const LibraryOwner&) = delete;
  LibraryOwner& operator=(const LibraryOwner&) = delete;
  ~LibraryOwner() {
    ended = true;
    EndUnused();
  }

  static void EndUnused() {
    if (InProcessServer::CanUnloadNow() == HelmswayCmds::Result::Ok) delete std::exchange(library, nullptr);
  }
};

namespace {

const LibraryOwner owner;

}  // namespace

Library& Library::Instance() {
  if (library == nullptr) {
    Require(!ended);
    library = new Library();
  }
  return *library;
}

bool Library::LetGoOfHost() noexcept {
  if (library == nullptr) return true;
  {
    const InProcessServer::InUse running;  // the release runs host code, which may call DllCanUnloadNow
    const Ref<HelmswayCmds::IIniService> service = std::move(library->service_);
  }
  if (library->service_) return false;
  if (ended) LibraryOwner::EndUnused();
  return true;
}

Library::Library() : files_([this] { return Service(); }, Platform::AddInFolder()) {}

Library::~Library() { static_cast<void>(service_.Detach()); }

std::shared_ptr<FormLoad> Library::LoadForm() {
  Require(!ended);
  auto load = load_.lock();
  if (!load) {
    load = std::make_shared<FormLoad>(files_, records_, sending_);
    load_ = load;
  }
  load->Load();
  return load;
}

std::shared_ptr<frmAddIn> Library::LoadedForm() const {
  const auto load = load_.lock();
  return load ? load->LoadedForm() : nullptr;
}

Ref<HelmswayCmds::IIniService> Library::Service() {
  if (!service_) {
    auto made = MakeIniService();
    // Creating it runs host code, in which another use may have created one.
    if (!service_) service_ = std::move(made);
  }
  return service_;
}

}  // namespace OrvelCalibrateS
