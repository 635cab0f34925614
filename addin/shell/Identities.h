#pragma once

#include "addin/contract/Component.h"

/// The identities that a host needs to use this library.
namespace OrvelCalibrateS {

/// The library's one public class: an `HelmswayCmds::IAddIn`.
inline constexpr HelmswayCmds::Id ConnectClassId{
    0xd95b74c4, 0x2136, 0x49ae, {0x9f, 0xd9, 0x69, 0xb6, 0x91, 0x48, 0x45, 0x57}};
inline constexpr const char* ConnectProgramId = "OrvelCalibrateS.Connect";

/// The interface to query for on the object that `GetFrame` returns, to get the form's `forms::ISurface`. The pointer
/// is not counted: it is valid as long as the frame object is held.
inline constexpr HelmswayCmds::Id SurfaceInterfaceId{
    0xfc592111, 0x4dec, 0x41da, {0xb3, 0xe5, 0xd8, 0x36, 0x79, 0xff, 0xb4, 0x3b}};

/// The library's entry points, by name. `DllCanUnloadNow` returns `Ok` when no object of the library lives and none of
/// its code is on the stack, else `Failed`; the other two without an out value write and remove the library's
/// registration.
inline constexpr const char* GetClassObjectName = "DllGetClassObject";      // GetClassObjectFunction
inline constexpr const char* CanUnloadNowName = "DllCanUnloadNow";          // EntryPointFunction
inline constexpr const char* RegisterServerName = "DllRegisterServer";      // EntryPointFunction
inline constexpr const char* UnregisterServerName = "DllUnregisterServer";  // EntryPointFunction
using EntryPointFunction = HelmswayCmds::Result (*)();

}  // namespace OrvelCalibrateS
