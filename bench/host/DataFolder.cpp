#include "bench/host/DataFolder.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace Helmsway {
namespace {

std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

}  // namespace

std::filesystem::path DataFolder() {
  const std::filesystem::path data = Environment("XDG_DATA_HOME");
  if (data.is_absolute()) return data / "helmsway";
  const std::filesystem::path home = Environment("HOME");
  if (home.empty()) throw std::runtime_error("there is no home folder: HOME isn't set");
  if (!home.is_absolute()) {
    throw std::runtime_error("there is no home folder: HOME is \"" + home.string() + "\", which isn't a full path");
  }
  return home / ".local/share/helmsway";
}

}  // namespace Helmsway
