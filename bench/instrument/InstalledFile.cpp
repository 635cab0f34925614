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

std::vector<OrvelCalibrateS::HeadType> InstalledFile::CalibratedHeads() const {
  std::vector<OrvelCalibrateS::HeadType> heads;
  OrvelCalibrateS::WalkItems(OrvelCalibrateS::FailureMode::Skip, [&](const std::string& number) {
    auto head = OrvelCalibrateS::ReadHeadType(configuration_, number);
    const bool isLast = head.Name.empty();
    if (OrvelCalibrateS::IsCalibrated(head)) heads.push_back(std::move(head));
    return !isLast;
  });
  return heads;
}

}  // namespace Helmsway
