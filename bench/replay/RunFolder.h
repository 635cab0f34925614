#pragma once

#include <filesystem>
#include <string>

#include "bench/host/Durability.h"

namespace Helmsway {

/// Which files a run works on.
enum class WorkOn {
  Copies,  ///< copies, gone with the run
  Files,   ///< the files of the configuration folder themselves
};

/// Nothing waits for the disk to keep what is gone with the run.
constexpr Durability DurabilityOf(WorkOn workOn) {
  return workOn == WorkOn::Copies ? Durability::Volatile : Durability::Flushed;
}

/// A folder of a run's own, gone with the object, that stands for the folder of an installed add-in: it holds the
/// add-in library and the configuration files under the name that the library looks for.
class RunFolder {
 public:
  /// Neither configuration file need be in `configuration`. Throws `std::exception` when the folder can't be made or a
  /// file can't be copied; nothing is left behind then.
  RunFolder(const std::filesystem::path& library, const std::filesystem::path& configuration, WorkOn workOn);
  RunFolder(const RunFolder&) = delete;
  RunFolder& operator=(const RunFolder&) = delete;
  ~RunFolder();

  std::filesystem::path Library() const { return library_; }
  std::filesystem::path MarivaneIni() const;

 private:
  void Fill(const std::filesystem::path& library, const std::filesystem::path& configuration, WorkOn workOn);

  std::filesystem::path folder_;
  std::filesystem::path library_;
};

}  // namespace Helmsway
