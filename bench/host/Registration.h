#pragma once

#include <filesystem>
#include <optional>

/// Where a host finds the add-in that the user has registered.
namespace Helmsway::Registration {

/// The user's registration of the add-in, whether it exists or not. Throws as `DataFolder` does.
std::filesystem::path File();

/// The library that the registration names, whether it exists or not; empty without a registration. Throws
/// `AddInLibraryError` when the registration isn't to be trusted: it names no full path, or others may change the file
/// or its folder.
std::optional<std::filesystem::path> RegisteredAddIn();

/// What the search for the add-in has come to.
struct FoundAddIn {
  std::filesystem::path library;
  bool registeredNow = false;  ///< the one beside the program has just been registered, since there was no other
};

/// The registered add-in; where none is registered, or the library is gone, the one at `beside` is registered, by its
/// own entry point, and taken. Throws `std::exception` when there is neither, and `AddInLibraryError` when others may
/// change the registered library or its folder. The one at `beside`, which comes with the program, is exempt from that:
/// others who may write there may replace the program itself.
FoundAddIn FindAddIn(const std::filesystem::path& beside);

}  // namespace Helmsway::Registration
