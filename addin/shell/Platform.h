#pragma once

#include <filesystem>
#include <string>

#include "addin/contract/Component.h"

/// The operating-system services that the add-in uses besides the standard library.
namespace OrvelCalibrateS::Platform {

/// The absolute path of the add-in library's own file, as it was when the library was loaded: a later change of the
/// process's working directory doesn't affect it. Empty when the runtime doesn't report it.
const std::filesystem::path& LibraryFile() noexcept;

/// `AddInFolder`: the folder of that file, without a separator at its end.
std::string AddInFolder();

/// The host process's function for the classes of its command library; null when the process offers none.
HelmswayCmds::GetClassObjectFunction HostClassObjectFunction();

/// The folder in which the user's add-ins are registered and where hosts look for them: below `XDG_DATA_HOME`, or below
/// `.local/share` in `HOME` when that variable is empty or relative. Throws `StepFailed` without an absolute `HOME`.
std::filesystem::path RegistrationFolder();

}  // namespace OrvelCalibrateS::Platform
