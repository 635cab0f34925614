#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "addin/base/Ref.h"
#include "addin/base/Steps.h"
#include "addin/config/Configuration.h"
#include "addin/config/ItemSource.h"

namespace Helmsway {

/// A `Marivane.ini` as the bench looks into it, by the readers that the add-in uses too: the file has one meaning.
class InstalledFile {
 public:
  /// Loads the records of what is installed. A file that is missing leaves them empty.
  explicit InstalledFile(const std::filesystem::path& marivaneIni);
  InstalledFile(const InstalledFile&) = delete;
  InstalledFile& operator=(const InstalledFile&) = delete;
  ~InstalledFile() = default;

  const OrvelCalibrateS::Configuration& AsConfiguration() const { return configuration_; }
  const OrvelCalibrateS::SharedRecords& Records() const { return records_; }

  /// The catalogue entries from number 1 to the first without a name.
  template <class Read, class Name>
  auto Catalogue(Read read, Name name) const {
    std::vector<decltype(read(std::string()))> entries;
    OrvelCalibrateS::WalkItems(OrvelCalibrateS::FailureMode::Skip, [&](const std::string& number) {
      auto entry = read(number);
      if ((entry.*name).empty()) return false;
      entries.push_back(std::move(entry));
      return true;
    });
    return entries;
  }

  std::vector<OrvelCalibrateS::HeadType> Heads() const;
  /// The heads to which a calibration gives their S position, by the walk of a save: the entry without a name that ends
  /// the catalogue counts if it is such a head.
  std::vector<OrvelCalibrateS::HeadType> CalibratedHeads() const;

 private:
  OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service_;
  OrvelCalibrateS::IniFiles files_;
  OrvelCalibrateS::SharedRecords records_;
  OrvelCalibrateS::Configuration configuration_{files_, records_};
};

}  // namespace Helmsway
