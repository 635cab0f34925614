#include "bench/instrument/InstalledFile.h"

#include "addin/config/ConfigurationLoad.h"
#include "bench/host/ConfigurationService.h"

namespace Helmsway {

using OrvelCalibrateS::HeadType;

InstalledFile::InstalledFile(const std::filesystem::path& marivaneIni)
    : files_([this] { return service_; }, marivaneIni.parent_path().string()) {
  *service_.Out() = new ConfigurationService();
  OrvelCalibrateS::LoadInstalledRecords(configuration_, OrvelCalibrateS::FailureMode::Skip);
}

std::vector<HeadType> InstalledFile::Heads() const {
  return Catalogue([this](const std::string& item) { return ReadHeadType(configuration_, item); }, &HeadType::Name);
}

}  // namespace Helmsway
