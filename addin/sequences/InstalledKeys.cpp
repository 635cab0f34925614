#include "addin/sequences/InstalledKeys.h"

#include <string>

namespace OrvelCalibrateS {
namespace {

/// The item must be a copy of what the caller was given: that may be a field of a shared record, which the host can
/// have replaced inside the write.
void WriteInstalled(const IniFiles& files, std::string_view section, const std::string& item) {
  files.WriteIni(section, "Installed", files.MarivaneIni(), item);
}

}  // namespace

void WriteInstalledHead(const IniFiles& files, std::string_view item) {
  WriteInstalled(files, "HeadType", std::string(item));
}

void WriteInstalledTip(const IniFiles& files, std::string_view item) {
  WriteInstalled(files, "TipType", std::string(item));
}

}  // namespace OrvelCalibrateS
