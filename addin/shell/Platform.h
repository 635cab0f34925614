#pragma once

#include <filesystem>
#include <string>

#include "addin/contract/Component.h"

/// What the add-in asks of the system it runs on, besides the standard library.
namespace OrvelCalibrateS::Platform {

/// The add-in library's own file, absolute, as it was when the library was loaded: a process that changes its folder
/// afterwards changes nothing. Empty when the runtime doesn't report it.
const std::filesystem::path& LibraryFile() noexcept;

/// `AddInFolder`: the folder of that file, without a separator at its end.
std::string AddInFolder();

/// The host process's road to the classes of its command library; null when the process offers none.
HelmswayCmds::GetClassObjectFunction HostClassObjectFunction();

/// The folder in which the user's add-ins are registered and where hosts look for them: below `XDG_DATA_HOME`, or below
/// `.local/share` in `HOME` when that variable is empty or relative. Throws `StepFailed` without an absolute `HOME`.
std::filesystem::path RegistrationFolder();

}  // namespace OrvelCalibrateS::Platform
