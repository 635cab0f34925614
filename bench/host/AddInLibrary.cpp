#include "bench/host/AddInLibrary.h"

#include <dlfcn.h>

#include "addin/shell/Identities.h"

namespace Helmsway {

using HelmswayCmds::Result;
using OrvelCalibrateS::EntryPointFunction;
using OrvelCalibrateS::Ref;

namespace {

/// What the system says of a library, with the name that people know it by.
std::string LoadError(const std::string& path, const std::string& name) {
  std::string error = dlerror();
  if (error.starts_with(path)) error.replace(0, path.size(), name);
  return "the add-in can't be loaded: " + error;
}

}  // namespace

AddInLibrary::AddInLibrary(const std::filesystem::path& file, const std::filesystem::path& knownAs)
    : name_((knownAs.empty() ? file : knownAs).string()) {
  // A name without a slash would be looked for on the system's search path.
  const std::string path = std::filesystem::absolute(file).string();
  handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) throw AddInLibraryError(LoadError(path, name_));
  for (const char* name : {OrvelCalibrateS::GetClassObjectName, OrvelCalibrateS::CanUnloadNowName,
                           OrvelCalibrateS::RegisterServerName, OrvelCalibrateS::UnregisterServerName}) {
    if (dlsym(handle_, name) != nullptr) continue;
    dlclose(handle_);
    throw AddInLibraryError(name_ + " is no add-in: it has no entry point " + name);
  }
}

AddInLibrary::~AddInLibrary() {
  if (CanUnload()) dlclose(handle_);
}

Ref<HelmswayCmds::IAddIn> AddInLibrary::CreateAddIn() const {
  const auto getClassObject = EntryPoint<HelmswayCmds::GetClassObjectFunction>(OrvelCalibrateS::GetClassObjectName);
  void* object = nullptr;
  if (getClassObject(&OrvelCalibrateS::ConnectClassId, &HelmswayCmds::IClassFactory::InterfaceId, &object) !=
      Result::Ok) {
    throw AddInLibraryError(name_ + " doesn't serve the class " + OrvelCalibrateS::ConnectProgramId);
  }
  Ref<HelmswayCmds::IClassFactory> factory;
  *factory.Out() = static_cast<HelmswayCmds::IClassFactory*>(object);
  object = nullptr;
  if (factory->CreateInstance(HelmswayCmds::IAddIn::InterfaceId, &object) != Result::Ok) {
    throw AddInLibraryError(name_ + " can't make a " + OrvelCalibrateS::ConnectProgramId);
  }
  Ref<HelmswayCmds::IAddIn> addIn;
  *addIn.Out() = static_cast<HelmswayCmds::IAddIn*>(object);
  return addIn;
}

void AddInLibrary::Register() const { Call(OrvelCalibrateS::RegisterServerName); }

void AddInLibrary::Unregister() const { Call(OrvelCalibrateS::UnregisterServerName); }

bool AddInLibrary::CanUnload() const {
  return EntryPoint<EntryPointFunction>(OrvelCalibrateS::CanUnloadNowName)() == Result::Ok;
}

template <class Function>
Function AddInLibrary::EntryPoint(const char* name) const {
  return reinterpret_cast<Function>(dlsym(handle_, name));
}

void AddInLibrary::Call(const char* entryPoint) const {
  if (EntryPoint<EntryPointFunction>(entryPoint)() != Result::Ok) {
    throw AddInLibraryError(name_ + ": " + entryPoint + " failed");
  }
}

}  // namespace Helmsway
