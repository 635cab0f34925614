#include "benchmarks/WorkFolder.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <thread>

namespace Helmsway::Benchmarks {
namespace {

namespace fs = std::filesystem;

}  // namespace

WorkFolder::WorkFolder() {
  std::string pattern = (fs::current_path() / "helmsway-benchmarks-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::system_error(errno, std::generic_category(), "no folder can be made");
  }
  folder_ = pattern;
}

WorkFolder::~WorkFolder() {
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

std::string WorkFolder::Write(std::string_view name, std::string_view bytes) const {
  const fs::path path = folder_ / name;
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw std::runtime_error("can't write " + path.string());
  return path.string();
}

std::string BytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  if (file.peek() != std::ifstream::traits_type::eof()) bytes << file.rdbuf();
  if (!file.is_open()) throw std::runtime_error("can't read " + path);
  return bytes.str();
}

void LetStampsSettle() { std::this_thread::sleep_for(std::chrono::milliseconds(60)); }

}  // namespace Helmsway::Benchmarks
