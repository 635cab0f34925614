#include "bench/desktop/Installation.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

#include "addin/shell/Identities.h"
#include "bench/host/AddInLibrary.h"
#include "bench/host/AtomicFile.h"
#include "bench/host/IniFile.h"

namespace Helmsway::Installation {
namespace {

namespace fs = std::filesystem;

std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

void CopyIfMissing(const fs::path& original, const fs::path& copy) {
  if (fs::exists(copy) || !fs::exists(original)) return;
  // Under another name first, so that a start that is broken off leaves no half file under this one.
  const fs::path half = copy.string() + ".new";
  fs::copy_file(original, half, fs::copy_options::overwrite_existing);
  fs::permissions(half, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add);
  fs::rename(half, copy);
}

}  // namespace

fs::path DataFolder() {
  // A relative path in the environment counts for nothing.
  const fs::path data = Environment("XDG_DATA_HOME");
  if (data.is_absolute()) return data / "helmsway";
  const fs::path home = Environment("HOME");
  if (!home.is_absolute()) throw std::runtime_error("there is no home folder: HOME isn't set");
  return home / ".local/share/helmsway";
}

fs::path Own(const fs::path& example) {
  fs::path own = DataFolder() / "installation";
  fs::create_directories(own);
  for (const char* name : {"Marivane.ini", "Helmsway.ini"}) CopyIfMissing(example / name, own / name);
  return own;
}

std::optional<fs::path> RegisteredAddIn() {
  const fs::path registration = DataFolder() / "add-ins" / (std::string(OrvelCalibrateS::ConnectProgramId) + ".addin");
  FileContents contents;
  if (ReadWholeFile(registration.string(), contents) != FilePresence::Present) return std::nullopt;
  const IniFile file(std::move(contents.bytes));
  const auto library = file.Find("Add-in", "Library");
  if (!library || library->empty()) return std::nullopt;
  return fs::path(*library);
}

FoundAddIn FindAddIn(const fs::path& beside) {
  const std::optional<fs::path> registered = RegisteredAddIn();
  if (registered && fs::is_regular_file(*registered)) return {*registered, false};
  if (!fs::is_regular_file(beside)) {
    throw std::runtime_error(registered
                                 ? "the registered add-in isn't there any more: " + registered->string()
                                 : "no add-in is registered, and there is none beside the program: " + beside.string());
  }
  AddInLibrary(beside).Register();
  return {beside, true};
}

}  // namespace Helmsway::Installation
