#pragma once

#include <filesystem>
#include <optional>

/// Where the bench finds what it works with.
namespace Helmsway::Installation {

/// `$XDG_DATA_HOME/helmsway`, by default `~/.local/share/helmsway`. Throws `std::runtime_error` without a home.
std::filesystem::path DataFolder();

/// The bench's own installation in the data folder. Made from the example where it is missing; a file that is there
/// already stays as it is. Throws `std::exception` when it can't be made.
std::filesystem::path Own(const std::filesystem::path& example);

/// The add-in library that the user's registration names, whether it is there or not; empty without a registration.
std::optional<std::filesystem::path> RegisteredAddIn();

/// What the search for the add-in has come to.
struct FoundAddIn {
  std::filesystem::path library;
  bool registeredNow = false;  ///< the one beside the program has just been registered, since no other was to be had
};

/// The registered add-in; where none is registered, or the library is gone, the one at `beside` is registered, by its
/// own entry point, and taken. Throws `std::exception` when there is neither.
FoundAddIn FindAddIn(const std::filesystem::path& beside);

}  // namespace Helmsway::Installation
