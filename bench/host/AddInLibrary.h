#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

#include "addin/base/Ref.h"
#include "addin/contract/HelmswayCmds.h"

namespace Helmsway {

/// The add-in library can't be used; `what()` tells why, in a text that names the library.
class AddInLibraryError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// An add-in library that is loaded into this process. Unloaded in the end, unless objects of it still live: then it
/// stays, since unloading it would take the code away from under them.
class AddInLibrary {
 public:
  /// Throws `AddInLibraryError` when the library can't be loaded or lacks an entry point.
  /// `knownAs` is what the library is called in errors, where `file` is only a link to it.
  explicit AddInLibrary(const std::filesystem::path& file, const std::filesystem::path& knownAs = {});
  AddInLibrary(const AddInLibrary&) = delete;
  AddInLibrary& operator=(const AddInLibrary&) = delete;
  ~AddInLibrary();

  /// A new `Connect`. Throws `AddInLibraryError` when the library doesn't make one.
  OrvelCalibrateS::Ref<HelmswayCmds::IAddIn> CreateAddIn() const;

  /// The library's own registration, written or removed. Both throw `AddInLibraryError` when it fails.
  void Register() const;
  void Unregister() const;

  /// No object of the library lives.
  bool CanUnload() const;

 private:
  template <class Function>
  Function EntryPoint(const char* name) const;
  void Call(const char* entryPoint) const;

  std::string name_;
  void* handle_ = nullptr;
};

}  // namespace Helmsway
