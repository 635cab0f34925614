#include "addin/sequences/InstalledKeys.h"

namespace OrvelCalibrateS {

void WriteInstalledHead(const IniFiles& files, std::string_view item) {
  files.WriteIni("HeadType", "Installed", files.MarivaneIni(), item);
}

void WriteInstalledTip(const IniFiles& files, std::string_view item) {
  files.WriteIni("TipType", "Installed", files.MarivaneIni(), item);
}

}  // namespace OrvelCalibrateS
