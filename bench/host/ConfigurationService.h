#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "addin/base/Implements.h"
#include "addin/contract/HelmswayCmds.h"
#include "bench/host/ConfigurationFile.h"
#include "bench/host/Durability.h"
#include "bench/host/FileProblem.h"
#include "bench/host/FileStamp.h"
#include "bench/host/IniFile.h"

namespace Helmsway {

/// The configuration service behind the contract. A read sees every edit that was there when it began: it asks the
/// system for the file's stamp and reads the file again when that differs. A file that isn't there holds no keys; one
/// that is there and can't be read is a failure.
///
/// Edits that fall into the same step of the file system's clock would share a stamp, so the stamp of a file that has
/// just been changed isn't relied on: until the clock has moved on, each read takes the file's bytes anew. What can
/// still escape is a change whose stamp the system itself holds back: stores through a shared memory mapping before
/// they are written out, and edits from another computer that the client of a network folder hasn't heard of; and on a
/// network folder whose server's clock differs from ours, a second edit of the same size within one step of that clock.
/// None can be seen by any program that opens no file per read; no editor and no installer writes a configuration file
/// through a mapping, and an add-in's configuration lies beside it, on a disk of the computer that drives the
/// instrument.
class ConfigurationService final : public OrvelCalibrateS::Implements<HelmswayCmds::IIniService> {
 public:
  explicit ConfigurationService(Durability durability = Durability::Flushed,
                                std::chrono::milliseconds patience = WriteTerms().patience,
                                bool (*isGivenUp)() noexcept = nullptr)
      : durability_(durability), patience_(patience), isGivenUp_(isGivenUp) {}

  HelmswayCmds::Result ReadIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                               HelmswayCmds::Text defaultValue, HelmswayCmds::ITextTarget& value) noexcept override;
  HelmswayCmds::Result WriteIni(HelmswayCmds::Text section, HelmswayCmds::Text key, HelmswayCmds::Text filePath,
                                HelmswayCmds::Text value) noexcept override;
  HelmswayCmds::Result SplitText(HelmswayCmds::ITextListTarget& parts, HelmswayCmds::Text separator,
                                 HelmswayCmds::Text text, std::int32_t* count) noexcept override;

  /// Why the last `ReadIni` or `WriteIni` failed; no problem after one that succeeded, and before the first.
  const FileProblem& LastProblem() const noexcept { return lastProblem_; }

 private:
  struct KeptFile {
    FileStamp stamp;
    bool stampSettled = false;
    IniFile file;
  };
  /// Looks up a path that isn't a string of its own.
  struct PathHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view path) const noexcept { return std::hash<std::string_view>()(path); }
  };
  using KeptFiles = std::unordered_map<std::string, KeptFile, PathHash, std::equal_to<>>;

  /// Runs what a read or write of that file does, and keeps why it failed.
  template <class Operation>
  HelmswayCmds::Result AtFile(std::string_view path, Operation operation) noexcept;

  /// The file as it is now; null when it is missing. Lives until the next call.
  const IniFile* CurrentFile(std::string_view path);
  /// Frees what is kept of a file that is about to change: a write needs the memory, and the next read reads it again.
  void Forget(std::string_view path);
  /// Reads the file again, in place of what is kept of it; null for nothing.
  const IniFile* Load(const std::string& path, KeptFiles::value_type* kept);

  Durability durability_;
  std::chrono::milliseconds patience_;
  bool (*isGivenUp_)() noexcept;
  FileProblem lastProblem_;
  bool wasBusy_ = false;  ///< by the last write
  std::unordered_set<std::string> opened_;
  KeptFiles kept_;
  KeptFiles::value_type* last_ = nullptr;  ///< of `kept_`, where it stays for as long as it is kept
};

}  // namespace Helmsway
