#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/contract/HelmswayCmds.h"
#include "bench/host/FileProblem.h"

namespace Helmsway {

/// A configuration service whose writes reach no file that others see: the first write to a file makes a copy of it,
/// and from then on that file's reads and writes go to the copy. A file that can't be written isn't written here
/// either. So something can be tried without doing it.
class OverlaidIniService final : public OrvelCalibrateS::Implements<HelmswayCmds::IIniService> {
 public:
  /// The copies are made in `folder` under the names of their files, which must differ from each other.
  OverlaidIniService(OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service, std::filesystem::path folder);

  HelmswayCmds::Result ReadIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                               HelmswayCmds::Text defaultValue, HelmswayCmds::ITextTarget& value) noexcept override;
  HelmswayCmds::Result WriteIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                                HelmswayCmds::Text value) noexcept override;
  /// Why the last write failed because of the file itself; no problem after any other.
  const FileProblem& LastObstacle() const { return obstacle_; }

  HelmswayCmds::Result SplitText(HelmswayCmds::ITextListTarget& parts, HelmswayCmds::Text separator,
                                 HelmswayCmds::Text text, std::int32_t* count) noexcept override;

 private:
  OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service_;
  std::filesystem::path folder_;
  FileProblem obstacle_;
  std::map<std::string, FileProblem, std::less<>> obstacles_;  // by the path of the file, as its first write found them
  std::map<std::string, std::string, std::less<>> copies_;     // by the path of the file
};

}  // namespace Helmsway
