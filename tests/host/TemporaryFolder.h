#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

namespace Helmsway {

/// A folder of its own, gone with this object.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = testing::TempDir() + "helmsway-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) throw std::filesystem::filesystem_error("mkdtemp", std::error_code());
    folder_ = name;
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() { std::filesystem::remove_all(folder_); }

  std::string PathOf(std::string_view name) const { return (folder_ / name).string(); }

  std::string Write(std::string_view name, std::string_view bytes) const {
    std::ofstream(PathOf(name), std::ios::binary | std::ios::trunc) << bytes;
    return PathOf(name);
  }

  std::string Read(std::string_view name) const {
    std::ifstream file(PathOf(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  std::set<std::string> Names() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) names.insert(entry.path().filename());
    return names;
  }

 private:
  std::filesystem::path folder_;
};

}  // namespace Helmsway
