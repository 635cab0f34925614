#include "benchmarks/BareSave.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace Helmsway::Benchmarks {
namespace {

void Demand(bool condition) {
  if (!condition) throw std::system_error(errno, std::generic_category(), "bare save");
}

}  // namespace

void BareSave(const std::string& path, std::string_view bytes, Flush flush) {
  const std::string temporary = path + ".new";
  const std::string folder = std::filesystem::path(path).parent_path().string();
  constexpr mode_t mode = 0644;
  const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
  Demand(file >= 0);
  Demand(write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
  if (flush == Flush::Yes) Demand(fsync(file) == 0);
  Demand(close(file) == 0);
  Demand(rename(temporary.c_str(), path.c_str()) == 0);
  if (flush == Flush::No) return;
  const int entry = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  Demand(entry >= 0);
  Demand(fsync(entry) == 0);
  Demand(close(entry) == 0);
}

void BareSaveWithRead(const std::string& path, std::string_view bytes, Flush flush) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  Demand(file >= 0);
  struct stat status {};
  Demand(fstat(file, &status) == 0);
  std::string old(static_cast<std::size_t>(status.st_size), '\0');
  Demand(read(file, old.data(), old.size()) == static_cast<ssize_t>(old.size()));
  Demand(close(file) == 0);
  Demand(stat(path.c_str(), &status) == 0);
  BareSave(path, bytes, flush);
}

}  // namespace Helmsway::Benchmarks
