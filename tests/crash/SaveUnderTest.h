#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <set>
#include <string>
#include <vector>

#include "addin/base/Ref.h"
#include "addin/base/Texts.h"
#include "bench/host/ConfigurationService.h"
#include "tests/host/FileKinds.h"
#include "tests/host/TemporaryFolder.h"

namespace Helmsway {

/// One `WriteIni` on a file: what it writes, and the file before and behind it.
struct Save {
  std::string name;
  std::string section;
  std::string key;
  std::string before;
  std::string after;
};

inline constexpr const char* SavedValue = "7";

enum class Edit { Value, NewKey, NewSection };

/// That edit of each kind of file.
inline std::vector<Save> SavesOf(Edit edit) {
  std::vector<Save> saves;
  for (const auto& [name, text, lineEnd, missingEnd] : FileKinds()) {
    const std::string bytes = Filled(text, {});
    const std::string ahead = text.ends_with('^') ? missingEnd : "";
    const std::string line = std::string("New=") + SavedValue + lineEnd;
    switch (edit) {
      case Edit::Value:
        saves.push_back({name, "S", "k", bytes, Filled(text, SavedValue)});
        break;
      case Edit::NewKey:
        saves.push_back({name, "S", "New", bytes, Filled(text, {}, ahead + line)});
        break;
      case Edit::NewSection:
        saves.push_back({name, "Other", "New", bytes, bytes});
        saves.back().after.append(missingEnd).append("[Other]").append(lineEnd).append(line);
        break;
    }
  }
  return saves;
}

/// A folder with the file of a save in it.
class SaveFolder {
 public:
  static constexpr const char* FileName = "Marivane.ini";
  static constexpr mode_t Mode = 0640;

  explicit SaveFolder(const Save& save) : save_(save) {
    folder_.Write(FileName, save.before);
    Settle();
    EXPECT_EQ(chmod(Path().c_str(), Mode), 0);
  }

  std::string Path() const { return folder_.PathOf(FileName); }
  /// The file has held its bytes for long, so that no save waits for it to be still.
  void Settle() const {
    const std::array<timespec, 2> times = {{{1'000'000'000, 0}, {1'000'000'000, 0}}};
    EXPECT_EQ(utimensat(AT_FDCWD, Path().c_str(), times.data(), 0), 0);
  }

  std::string Bytes() const { return folder_.Read(FileName); }
  std::set<std::string> Names() const { return folder_.Names(); }
  bool HoldsTheFileAlone() const { return Names() == std::set<std::string>{FileName}; }

  /// By a service of its own, as by a program that has just started.
  HelmswayCmds::Result Write(const std::string& value = SavedValue) const {
    using OrvelCalibrateS::AsText;
    OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service;
    *service.Out() = new ConfigurationService;
    return service->WriteIni(AsText(save_.section), AsText(save_.key), AsText(Path()), AsText(value));
  }

  /// The value of the key, as a program reads it that has just started.
  std::string Read() const {
    using OrvelCalibrateS::AsText;
    OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service;
    *service.Out() = new ConfigurationService;
    std::string value;
    OrvelCalibrateS::StringTarget target(value);
    EXPECT_EQ(service->ReadIni(AsText(save_.section), AsText(save_.key), AsText(Path()), AsText(""), target),
              HelmswayCmds::Result::Ok);
    return value;
  }

  /// The save can be done again, and nothing but the file is left then.
  void ExpectTheNextSaveWorks() const {
    EXPECT_EQ(Write("8"), HelmswayCmds::Result::Ok);
    EXPECT_EQ(Write(), HelmswayCmds::Result::Ok);
    EXPECT_EQ(Bytes(), save_.after);
    EXPECT_TRUE(HoldsTheFileAlone());
    ExpectTheMode();
  }

  void ExpectTheMode() const {
    struct stat status {};
    EXPECT_EQ(stat(Path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, Mode);
  }

 private:
  TemporaryFolder folder_;
  const Save& save_;
};

}  // namespace Helmsway
