#pragma once

#include <memory>
#include <string>

#include "addin/base/Implements.h"
#include "addin/contract/HelmswayCmds.h"
#include "bench/host/FileStamp.h"
#include "benchmarks/peers/IniPeer.h"

namespace Helmsway::Benchmarks {

/// A peer behind the contract with the guarantee of our own service: each read sees the edit that another program has
/// just made. The parsed file is kept and its stamp asked for at each read; a stamp that is still fresh isn't relied
/// on. For one file.
class PeerService final : public OrvelCalibrateS::Implements<HelmswayCmds::IIniService> {
 public:
  explicit PeerService(std::unique_ptr<IIniPeer> peer) : peer_(std::move(peer)) {}

  HelmswayCmds::Result ReadIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                               HelmswayCmds::Text defaultValue, HelmswayCmds::ITextTarget& value) noexcept override;
  HelmswayCmds::Result WriteIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                                HelmswayCmds::Text value) noexcept override;
  HelmswayCmds::Result SplitText(HelmswayCmds::ITextListTarget& parts, HelmswayCmds::Text separator,
                                 HelmswayCmds::Text text, std::int32_t* count) noexcept override;

 private:
  void Refresh(const std::string& path);

  std::unique_ptr<IIniPeer> peer_;
  FileStamp stamp_;
  bool stampSettled_ = false;
  // Kept from call to call, so that their memory is.
  std::string path_;
  std::string section_;
  std::string key_;
  std::string value_;
};

}  // namespace Helmsway::Benchmarks
