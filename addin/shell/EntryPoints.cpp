#include "addin/contract/Component.h"
#include "addin/shell/Classes.h"
#include "addin/shell/InProcessServer.h"
#include "addin/shell/Library.h"
#include "addin/shell/Platform.h"

// The four entry points of an in-process server. They do nothing of their own.
namespace Server = OrvelCalibrateS::InProcessServer;
using HelmswayCmds::Id;
using HelmswayCmds::Result;

#define ENTRY_POINT extern "C" [[gnu::visibility("default")]] Result

ENTRY_POINT DllGetClassObject(const Id* classId, const Id* interfaceId, void** object) noexcept {
  return Server::GetClassObject(OrvelCalibrateS::ServedClasses(), classId, interfaceId, object);
}

ENTRY_POINT DllCanUnloadNow() noexcept {
  // A host that asks, and may unload, is still there to take its service back.
  if (Server::CanUnloadNow() == Result::Ok && !OrvelCalibrateS::Library::LetGoOfHost()) return Result::Failed;
  return Server::CanUnloadNow();
}

ENTRY_POINT DllRegisterServer() noexcept {
  return Server::Register(OrvelCalibrateS::ServedClasses(), OrvelCalibrateS::Platform::LibraryFile());
}

ENTRY_POINT DllUnregisterServer() noexcept { return Server::Unregister(OrvelCalibrateS::ServedClasses()); }
