#include "bench/replay/RunFolder.h"

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace Helmsway {
namespace {

namespace fs = std::filesystem;

constexpr const char* MarivaneIniName = "Marivane.ini";
constexpr const char* HelmswayIniName = "Helmsway.ini";

fs::path MakeTemporaryFolder() {
  std::string pattern = (fs::temp_directory_path() / "helmsway-replay-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::system_error(errno, std::generic_category(), "no temporary folder can be made");
  }
  return pattern;
}

}  // namespace

RunFolder::RunFolder(const fs::path& library, const fs::path& configuration, WorkOn workOn)
    : folder_(MakeTemporaryFolder()), library_(folder_ / library.filename()) {
  try {
    Fill(fs::absolute(library), fs::absolute(configuration), workOn);
  } catch (...) {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
    throw;
  }
}

RunFolder::~RunFolder() {
  // Nobody is left to tell: a folder that stays lies among the temporary files.
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

fs::path RunFolder::MarivaneIni() const { return folder_ / MarivaneIniName; }

void RunFolder::Fill(const fs::path& library, const fs::path& configuration, WorkOn workOn) {
  if (!fs::is_regular_file(library)) throw std::runtime_error("there is no add-in library " + library.string());
  fs::create_symlink(library, library_);
  for (const char* name : {MarivaneIniName, HelmswayIniName}) {
    const fs::path original = configuration / name;
    const fs::path own = folder_ / name;
    if (workOn == WorkOn::Files) {
      // Dangles where the file is missing: a write through it makes the file in its place.
      fs::create_symlink(original, own);
    } else if (fs::exists(original)) {
      fs::copy_file(original, own);
      // The original may be protected; its copy is there to be worked on.
      fs::permissions(own, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add);
    }
  }
}

}  // namespace Helmsway
