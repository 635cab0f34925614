#include "addin/config/IniFiles.h"

#include <filesystem>
#include <utility>

#include "addin/base/Steps.h"
#include "addin/base/Texts.h"

namespace OrvelCalibrateS {
namespace {

std::string PathOf(const std::filesystem::path& folder, std::string_view fileName) {
  return (folder / fileName).string();
}

}  // namespace

const std::string& SplitResult::Place(std::size_t number) const {
  Require(Has(number));
  return parts[number];
}

IniFiles::IniFiles(ServiceSource service, const std::string& addInFolder)
    : service_(std::move(service)),
      marivaneIni_(PathOf(addInFolder, "Marivane.ini")),
      helmswayIni_(PathOf(addInFolder, "Helmsway.ini")) {}

std::string IniFiles::ReadIni(std::string_view section, std::string_view key, std::string_view filePath,
                              std::string_view defaultValue) const {
  std::string value;
  StringTarget target(value);
  Require(Service()->ReadIni(AsText(section), AsText(key), AsText(filePath), AsText(defaultValue), target));
  return value;
}

void IniFiles::WriteIni(std::string_view section, std::string_view key, std::string_view filePath,
                        std::string_view value) const {
  Require(Service()->WriteIni(AsText(section), AsText(key), AsText(filePath), AsText(value)));
}

SplitResult IniFiles::SplitText(std::string_view separator, std::string_view text) const {
  SplitResult result;
  StringListTarget target(result.parts);
  Require(Service()->SplitText(target, AsText(separator), AsText(text), &result.count));
  return result;
}

Ref<HelmswayCmds::IIniService> IniFiles::Service() const {
  auto service = service_();
  Require(static_cast<bool>(service));
  return service;
}

}  // namespace OrvelCalibrateS
