#include "addin/sequences/InstalledKeys.h"

#include <string>

namespace OrvelCalibrateS {
namespace {

/// The item must be a copy of the caller's text: the original may be a field of a shared record, and the host can cause
/// that record to be replaced during the write.
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
