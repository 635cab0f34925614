#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Helmsway::Benchmarks {

/// A folder below the current one, gone with the object. The file system that is measured is that of the current
/// folder.
class WorkFolder {
 public:
  WorkFolder();
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  ~WorkFolder();

  /// Makes or overwrites a file, and gives its path.
  std::string Write(std::string_view name, std::string_view bytes) const;

 private:
  std::filesystem::path folder_;
};

/// What the file holds now. Throws `std::runtime_error` when it can't be read.
std::string BytesOf(const std::string& path);

/// Waits until a change of a file that was just made would get another time stamp. Without it the first reads would
/// take the file anew each time, as they must.
void LetStampsSettle();

}  // namespace Helmsway::Benchmarks
