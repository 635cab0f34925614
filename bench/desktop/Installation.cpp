#include "bench/desktop/Installation.h"

#include "bench/host/DataFolder.h"

namespace Helmsway::Installation {
namespace {

namespace fs = std::filesystem;

void CopyIfMissing(const fs::path& original, const fs::path& copy) {
  if (fs::exists(copy) || !fs::exists(original)) return;
  // Under another name first, so that a start that is broken off leaves no half file under this one.
  const fs::path half = copy.string() + ".new";
  fs::copy_file(original, half, fs::copy_options::overwrite_existing);
  fs::permissions(half, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add);
  fs::rename(half, copy);
}

}  // namespace

fs::path Own(const fs::path& example) {
  fs::path own = DataFolder() / "installation";
  fs::create_directories(own);
  for (const char* name : {"Marivane.ini", "Helmsway.ini"}) CopyIfMissing(example / name, own / name);
  return own;
}

}  // namespace Helmsway::Installation
