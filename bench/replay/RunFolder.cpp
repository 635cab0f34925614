#include "bench/replay/RunFolder.h"

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <system_error>

#include "bench/host/StillFile.h"
#include "bench/replay/Interruption.h"

namespace Helmsway {
namespace {

namespace fs = std::filesystem;

constexpr const char* MarivaneIniName = "Marivane.ini";
constexpr const char* HelmswayIniName = "Helmsway.ini";

/// The folder for temporary files, whether it exists or not.
fs::path TemporaryFiles() {
  const char* const folder = std::getenv("TMPDIR");
  return folder == nullptr || *folder == '\0' ? "/tmp" : folder;
}

fs::path MakeTemporaryFolder() {
  const fs::path folder = TemporaryFiles();
  std::string pattern = (folder / "helmsway-replay-XXXXXX").string();
  const Interruption::Shield shield;
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("no folder for the run can be made in " + folder.string() +
                             " (TMPDIR names another): " + std::generic_category().message(errno));
  }
  Interruption::RemoveAtEnd(pattern);
  return pattern;
}

void Remove(const fs::path& folder) {
  const Interruption::Shield shield;
  // There is no one left to report a failure to: a folder that stays lies among the temporary files.
  std::error_code ignored;
  fs::remove_all(folder, ignored);
  Interruption::Forget(folder);
}

/// A copy that may be written, although the original may be protected.
void Copy(const fs::path& original, const fs::path& copy) {
  try {
    fs::copy_file(original, copy);
    fs::permissions(copy, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add);
    MarkAsWhole(copy.string());
  } catch (const fs::filesystem_error& error) {
    throw std::runtime_error(original.string() + " can't be copied to " + copy.parent_path().string() + ": " +
                             error.code().message());
  }
}

}  // namespace

RunFolder::RunFolder(const fs::path& library, const fs::path& configuration, WorkOn workOn)
    : folder_(MakeTemporaryFolder()), library_(folder_ / library.filename()) {
  try {
    Fill(fs::absolute(library), fs::absolute(configuration), workOn);
  } catch (...) {
    Remove(folder_);
    throw;
  }
}

RunFolder::~RunFolder() { Remove(folder_); }

fs::path RunFolder::MarivaneIni() const { return folder_ / MarivaneIniName; }

void RunFolder::Fill(const fs::path& library, const fs::path& configuration, WorkOn workOn) {
  std::error_code missing;
  if (!fs::is_regular_file(library, missing))
    throw std::runtime_error("there is no add-in library " + library.string());
  fs::create_symlink(library, library_);
  for (const char* name : {MarivaneIniName, HelmswayIniName}) {
    const fs::path original = configuration / name;
    const fs::path own = folder_ / name;
    if (workOn == WorkOn::Files) {
      // Dangles where the file is missing: a write through it makes the file in its place.
      fs::create_symlink(original, own);
    } else if (std::error_code failure; fs::exists(original, failure) || failure) {
      Copy(original, own);
    }
  }
}

}  // namespace Helmsway
