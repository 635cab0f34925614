#include "addin/contract/Component.h"
#include "addin/shell/Classes.h"
#include "addin/shell/InProcessServer.h"
#include "addin/shell/Library.h"
#include "addin/shell/Platform.h"

// The four entry points of an in-process server. They only forward the call.
namespace Server = OrvelCalibrateS::InProcessServer;
using HelmswayCmds::Id;
using HelmswayCmds::Result;

#define ENTRY_POINT extern "C" [[gnu::visibility("default")]] Result

ENTRY_POINT DllGetClassObject(const Id* classId, const Id* interfaceId, void** object) noexcept {
  return Server::GetClassObject(OrvelCalibrateS::ServedClasses(), classId, interfaceId, object);
}

ENTRY_POINT DllCanUnloadNow() noexcept {
  // A host that calls this, and may then unload the library, still exists, so its service can be released.
  if (Server::CanUnloadNow() == Result::Ok && !OrvelCalibrateS::Library::LetGoOfHost()) return Result::Failed;
  return Server::CanUnloadNow();
}

ENTRY_POINT DllRegisterServer() noexcept {
  return Server::Register(OrvelCalibrateS::ServedClasses(), OrvelCalibrateS::Platform::LibraryFile());
}

ENTRY_POINT DllUnregisterServer() noexcept { return Server::Unregister(OrvelCalibrateS::ServedClasses()); }
