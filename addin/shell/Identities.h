#pragma once

#include "addin/contract/Component.h"

/// What a host must know of this library to work with it.
namespace OrvelCalibrateS {

/// The library's one public class: an `HelmswayCmds::IAddIn`.
inline constexpr HelmswayCmds::Id ConnectClassId{
    0xd95b74c4, 0x2136, 0x49ae, {0x9f, 0xd9, 0x69, 0xb6, 0x91, 0x48, 0x45, 0x57}};
inline constexpr const char* ConnectProgramId = "OrvelCalibrateS.Connect";

/// The interface by which the object that `GetFrame` gives is asked for the form's `forms::ISurface`. The pointer is
/// not counted: it is good for as long as the frame object is held.
inline constexpr HelmswayCmds::Id SurfaceInterfaceId{
    0xfc592111, 0x4dec, 0x41da, {0xb3, 0xe5, 0xd8, 0x36, 0x79, 0xff, 0xb4, 0x3b}};

/// The library's entry points, by name. `DllCanUnloadNow` gives `Ok` when no object of the library lives and none of
/// its code is on the stack, else `Failed`; the other two without an out value write and remove the library's
/// registration.
inline constexpr const char* GetClassObjectName = "DllGetClassObject";      // GetClassObjectFunction
inline constexpr const char* CanUnloadNowName = "DllCanUnloadNow";          // EntryPointFunction
inline constexpr const char* RegisterServerName = "DllRegisterServer";      // EntryPointFunction
inline constexpr const char* UnregisterServerName = "DllUnregisterServer";  // EntryPointFunction
using EntryPointFunction = HelmswayCmds::Result (*)();

}  // namespace OrvelCalibrateS
