#include "bench/host/Registration.h"

#include <sys/stat.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <utility>

#include "addin/shell/Identities.h"
#include "bench/host/AddInLibrary.h"
#include "bench/host/AtomicFile.h"
#include "bench/host/DataFolder.h"
#include "bench/host/IniFile.h"

namespace Helmsway::Registration {
namespace {

namespace fs = std::filesystem;

/// Why other users could change what is at `path`; empty when they can't, or when there is nothing.
std::string WhyOthersMayChange(const fs::path& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return "";
  if (status.st_uid != 0 && status.st_uid != geteuid()) return path.string() + " belongs to another user";
  // In a sticky folder others can't replace a file that isn't theirs.
  const bool sticky = S_ISDIR(status.st_mode) && (status.st_mode & S_ISVTX) != 0;
  if ((status.st_mode & (S_IWGRP | S_IWOTH)) == 0 || sticky) return "";
  return "other users may write " + path.string() + " (chmod go-w takes that away)";
}

[[noreturn]] void Refuse(const std::string& what, const std::string& why) {
  throw AddInLibraryError("the " + what + " isn't used: " + why);
}

/// Throws unless file and folder are out of others' reach. A link is looked at where it is and where it leads.
void DemandTrusted(const fs::path& file, const std::string& what) {
  std::error_code ignored;
  const fs::path target = fs::weakly_canonical(file, ignored);
  for (const fs::path& path : {file, file.parent_path(), target.parent_path()}) {
    const std::string why = WhyOthersMayChange(path);
    if (!why.empty()) Refuse(what, why);
  }
}

}  // namespace

fs::path File() { return DataFolder() / "add-ins" / (std::string(OrvelCalibrateS::ConnectProgramId) + ".addin"); }

std::optional<fs::path> RegisteredAddIn() {
  const fs::path registration = File();
  FileContents contents;
  if (ReadWholeFile(registration.string(), contents) != FilePresence::Present) return std::nullopt;
  DemandTrusted(registration, "add-in's registration " + registration.string());
  const IniFile file(std::move(contents.bytes));
  const auto library = file.Find("Add-in", "Library");
  if (!library || library->empty()) return std::nullopt;
  fs::path path(*library);
  if (path.is_absolute()) return path;
  Refuse("add-in's registration " + registration.string(),
         "it names the library " + path.string() + ", which isn't a full path");
}

FoundAddIn FindAddIn(const fs::path& beside) {
  const std::optional<fs::path> registered = RegisteredAddIn();
  std::error_code missing;
  if (registered && fs::is_regular_file(*registered, missing)) {
    if (!fs::equivalent(*registered, beside, missing)) {
      DemandTrusted(*registered, "registered add-in " + registered->string());
    }
    return {*registered, false};
  }
  if (!fs::is_regular_file(beside, missing)) {
    throw std::runtime_error(registered
                                 ? "the registered add-in isn't there any more: " + registered->string()
                                 : "no add-in is registered, and there is none beside the program: " + beside.string());
  }
  AddInLibrary(beside).Register();
  // Under a umask that leaves new files to the user's group, the next start would refuse what has just been made.
  for (const fs::path& own : {File(), File().parent_path()}) {
    fs::permissions(own, fs::perms::group_write | fs::perms::others_write, fs::perm_options::remove, missing);
  }
  return {beside, true};
}

}  // namespace Helmsway::Registration
