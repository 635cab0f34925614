#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "addin/base/Ref.h"
#include "addin/contract/HelmswayCmds.h"

namespace OrvelCalibrateS {

/// A text that is split at a separator.
struct SplitResult {
  std::vector<std::string> parts;  ///< all pieces, including an empty one after a final separator
  std::int32_t count = 0;          ///< number of pieces to use when the text is a list of lines

  bool Has(std::size_t number) const { return number < parts.size(); }
  /// The piece with that index, from 0; fails when there is none.
  const std::string& Place(std::size_t number) const;
};

/// Access to the two configuration files beside the add-in library, through the host's `IniService`. Nothing is cached:
/// each call goes to the file. Every operation is a step that fails when the host's call fails.
class IniFiles {
 public:
  using ServiceSource = std::function<Ref<HelmswayCmds::IIniService>()>;

  /// `service` is called at each use and returns an empty reference when there is no service. `addInFolder` is the
  /// folder of the add-in library, without a separator at its end.
  IniFiles(ServiceSource service, const std::string& addInFolder);

  const std::string& MarivaneIni() const { return marivaneIni_; }
  const std::string& HelmswayIni() const { return helmswayIni_; }

  std::string ReadIni(std::string_view section, std::string_view key, std::string_view filePath,
                      std::string_view defaultValue) const;
  void WriteIni(std::string_view section, std::string_view key, std::string_view filePath,
                std::string_view value) const;
  SplitResult SplitText(std::string_view separator, std::string_view text) const;

 private:
  Ref<HelmswayCmds::IIniService> Service() const;

  ServiceSource service_;
  std::string marivaneIni_;
  std::string helmswayIni_;
};

}  // namespace OrvelCalibrateS
