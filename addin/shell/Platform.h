#pragma once

#include <filesystem>

#include "addin/contract/Component.h"

/// What the add-in asks of the system it runs on, besides the standard library.
namespace OrvelCalibrateS::Platform {

/// The add-in library's own file, as the runtime reports it; absolute.
std::filesystem::path LibraryFile();

/// The host process's road to the classes of its command library; null when the process offers none.
HelmswayCmds::GetClassObjectFunction HostClassObjectFunction();

/// The folder, made if need be, in which the user's add-ins are registered and where hosts look for them.
/// Throws `std::filesystem::filesystem_error` when there is none and it can't be made.
std::filesystem::path RegistrationFolder();

}  // namespace OrvelCalibrateS::Platform
