#pragma once

#include <filesystem>
#include <string>

#include "bench/host/FileDescriptor.h"

namespace Helmsway {

/// Says to other windows, of other users too, that this one works on an installation. It is gone with the object, and
/// with the process, however that ends. It keeps no program from the files themselves.
///
/// The lock is a file in the installation's folder. Where none can be made there, it is one in the user's data folder,
/// and only this user's windows see it.
class InstallationLock {
 public:
  explicit InstallationLock(const std::filesystem::path& installation);
  InstallationLock(const InstallationLock&) = delete;
  InstallationLock& operator=(const InstallationLock&) = delete;
  ~InstallationLock();

  /// Who has the installation, since when, in words; empty when this object has it, or when no lock could be made.
  const std::string& Holder() const { return holder_; }

 private:
  enum class Outcome { Taken, Held, Impossible };

  Outcome TakeAt(const std::filesystem::path& file);

  std::filesystem::path file_;
  FileDescriptor lock_;
  std::string holder_;
};

}  // namespace Helmsway
