#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "addin/base/Ref.h"
#include "addin/base/Texts.h"
#include "bench/host/ConfigurationFile.h"
#include "bench/host/ConfigurationService.h"
#include "tests/host/TemporaryFolder.h"
#include "tests/host/UnstampedEdits.h"

namespace Helmsway {
namespace {

using namespace std::string_literals;
using HelmswayCmds::Result;
using OrvelCalibrateS::AsText;
using Names = std::set<std::string>;

/// Takes nothing, as a caller does that has run out of memory.
class RefusingTarget final : public HelmswayCmds::ITextTarget, public HelmswayCmds::ITextListTarget {
 public:
  Result Assign(HelmswayCmds::Text /*text*/) noexcept override { return Result::Failed; }
  Result Assign(const HelmswayCmds::Text* /*texts*/, std::size_t /*count*/) noexcept override { return Result::Failed; }
};

class ConfigurationServiceTest : public testing::Test {
 protected:
  ConfigurationServiceTest() { *service_.Out() = new ConfigurationService; }

  /// What the key "k" of section "S" reads as; "(default)" without one, "(failed)" when the read fails.
  std::string Read(std::string_view path) {
    std::string value = "(failed)";
    OrvelCalibrateS::StringTarget target(value);
    const Result result = service_->ReadIni(AsText("S"), AsText("k"), AsText(path), AsText("(default)"), target);
    EXPECT_EQ(result == Result::Ok, value != "(failed)");
    return value;
  }

  Result Write(std::string_view path, std::string_view value) {
    return service_->WriteIni(AsText("S"), AsText("k"), AsText(path), AsText(value));
  }

  TemporaryFolder folder_;
  OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service_;
};

ino_t InodeOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0);
  return status.st_ino;
}

TEST_F(ConfigurationServiceTest, WhatIsNotThereIsTheDefaultAndWhatCannotBeReadAFailure) {
  const std::string file = folder_.Write("file.ini", "[S]\nj=1\n[T]\nk=1\n");
  std::filesystem::create_directory(folder_.PathOf("folder"));
  std::filesystem::create_symlink("nowhere", folder_.PathOf("dangling"));
  std::filesystem::create_symlink("circle", folder_.PathOf("circle"));
  ASSERT_EQ(mkfifo(folder_.PathOf("pipe").c_str(), 0600), 0);
  struct Row {
    const char* name;
    std::string path;
    const char* value;
  };
  for (const Row& row : {
           Row{"no such key", file, "(default)"},
           Row{"no such file", folder_.PathOf("missing.ini"), "(default)"},
           Row{"no such folder", folder_.PathOf("missing/file.ini"), "(default)"},
           Row{"a file where the folder should be", file + "/file.ini", "(default)"},
           Row{"link to no file", folder_.PathOf("dangling"), "(default)"},
           Row{"no path", "", "(default)"},
           Row{"links in a circle", folder_.PathOf("circle"), "(failed)"},
           Row{"a folder", folder_.PathOf("folder"), "(failed)"},
           Row{"a pipe", folder_.PathOf("pipe"), "(failed)"},
           Row{"a path that the system would cut off", file + "\0"s, "(failed)"},
       }) {
    EXPECT_EQ(Read(row.path), row.value) << row.name;
    EXPECT_EQ(Read(row.path), row.value) << row.name << ", once more";
  }
}

TEST_F(ConfigurationServiceTest, AReadThatFailsLeavesTheServiceInOrder) {
  const std::string file = folder_.Write("file.ini", "[S]\nk=1\n");
  RefusingTarget target;
  EXPECT_EQ(service_->ReadIni(AsText("S"), AsText("k"), AsText(file), {}, target), Result::Failed);
  EXPECT_EQ(Read(file), "1");
  std::filesystem::remove(file);
  EXPECT_EQ(Read(file), "(default)");
  std::filesystem::create_directory(file);
  EXPECT_EQ(Read(file), "(failed)");
  std::filesystem::remove(file);
  folder_.Write("file.ini", "[S]\nk=2\n");
  EXPECT_EQ(Read(file), "2");
}

TEST_F(ConfigurationServiceTest, EveryEditOfAnotherProgramIsSeen) {
  const std::string file = folder_.Write("file.ini", "[S]\nk=0000\n");
  folder_.Write("link target.ini", "[S]\nk=link\n");
  const int descriptor = open(file.c_str(), O_WRONLY);
  ASSERT_GE(descriptor, 0);
  // In place, of the same length and many within one step of the file system's clock.
  for (int edit = 1000; edit < 4000; ++edit) {
    const std::string value = std::to_string(edit);
    ASSERT_EQ(pwrite(descriptor, value.data(), value.size(), 6), 4);
    ASSERT_EQ(Read(file), value);
  }
  close(descriptor);
  // Another file in its place, with all that a program can set the same.
  const auto time = std::filesystem::last_write_time(file);
  for (int edit = 1000; edit < 1200; ++edit) {
    const std::string value = std::to_string(edit);
    std::filesystem::remove(file);
    folder_.Write("file.ini", "[S]\nk=" + value + "\n");
    std::filesystem::last_write_time(file, time);
    ASSERT_EQ(Read(file), value);
  }
  std::filesystem::remove(file);
  std::filesystem::create_symlink("link target.ini", file);
  EXPECT_EQ(Read(file), "link");
}

TEST_F(ConfigurationServiceTest, AnEditIsSeenThatSharesTheStampOfTheOneBefore) {
  int seen = 0;
  for (int attempt = 0; attempt < 50; ++attempt) {
    UnstampedEdits file(folder_, "file.ini", "[S]\nk=1\n");
    file.Put(6, '2');
    ASSERT_EQ(Read(file.Path()), "2");
    file.Put(6, '3');
    const std::string value = Read(file.Path());
    if (!file.IsYoung()) continue;
    ASSERT_EQ(value, "3");
    ++seen;
  }
  EXPECT_GT(seen, 0) << "the machine is too slow to tell";
}

TEST_F(ConfigurationServiceTest, AWriteKeepsWhatAnotherProgramWroteSinceTheLastRead) {
  const std::string file = folder_.Write("file.ini", "[S]\nk=1\nj=1\n");
  EXPECT_EQ(Read(file), "1");
  folder_.Write("file.ini", "[S]\nk=1\nj=2\n");
  EXPECT_EQ(Write(file, "3"), Result::Ok);
  EXPECT_EQ(folder_.Read("file.ini"), "[S]\nk=3\nj=2\n");
  EXPECT_EQ(Read(file), "3");
}

TEST_F(ConfigurationServiceTest, AMissingFileIsMadeAndOneThatSaysSoAlreadyIsLeft) {
  const std::string file = folder_.PathOf("file.ini");
  const mode_t mask = umask(0027);
  EXPECT_EQ(Write(file, "1"), Result::Ok);
  umask(mask);
  EXPECT_EQ(folder_.Read("file.ini"), "[S]\r\nk=1\r\n");
  EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0640));

  const ino_t inode = InodeOf(file);
  EXPECT_EQ(Write(file, " 1\t"), Result::Ok) << "blanks are no part of a value";
  EXPECT_EQ(InodeOf(file), inode);
  EXPECT_TRUE(RemoveIniValue(file, "S", "j"));
  EXPECT_TRUE(RemoveIniValue(folder_.PathOf("missing.ini"), "S", "k"));
  EXPECT_EQ(InodeOf(file), inode);
  EXPECT_EQ(folder_.Names(), Names{"file.ini"});
}

TEST_F(ConfigurationServiceTest, ModeOwnerAndLinksStay) {
  std::filesystem::create_directory(folder_.PathOf("data"));
  const std::string file = folder_.Write("data/file.ini", "[S]\nk=1\n");
  ASSERT_EQ(chmod(file.c_str(), 04751), 0);
  const bool isAdministrator = geteuid() == 0;
  if (isAdministrator) {
    ASSERT_EQ(chown(file.c_str(), 4711, 4712), 0);
    ASSERT_EQ(chmod(file.c_str(), 04751), 0);  // which the change of owner has cut down
  }
  std::filesystem::create_symlink(file, folder_.PathOf("data/absolute.ini"));
  std::filesystem::create_symlink("data/absolute.ini", folder_.PathOf("link.ini"));

  EXPECT_EQ(Write(folder_.PathOf("link.ini"), "2"), Result::Ok);
  EXPECT_EQ(folder_.Read("data/file.ini"), "[S]\nk=2\n");
  EXPECT_EQ(std::filesystem::read_symlink(folder_.PathOf("link.ini")), "data/absolute.ini");
  EXPECT_EQ(std::filesystem::read_symlink(folder_.PathOf("data/absolute.ini")), file);
  struct stat status {};
  ASSERT_EQ(stat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 04751U);
  if (isAdministrator) {
    EXPECT_EQ(status.st_uid, 4711U);
    EXPECT_EQ(status.st_gid, 4712U);
  }

  std::filesystem::create_symlink("data/new.ini", folder_.PathOf("dangling.ini"));
  EXPECT_EQ(Write(folder_.PathOf("dangling.ini"), "3"), Result::Ok);
  EXPECT_EQ(std::filesystem::read_symlink(folder_.PathOf("dangling.ini")), "data/new.ini");
  EXPECT_EQ(folder_.Read("data/new.ini"), "[S]\r\nk=3\r\n");
  EXPECT_EQ(folder_.Names(), (Names{"dangling.ini", "data", "link.ini"}));
}

TEST_F(ConfigurationServiceTest, AWriteThatFailsLeavesEverythingAsItWas) {
  const std::string file = folder_.Write("file.ini", "[S]\nk=1\n");
  const std::string locked = folder_.Write("locked.ini", "[S]\nk=1\n");
  ASSERT_EQ(chmod(locked.c_str(), 0444), 0);
  std::filesystem::create_directory(folder_.PathOf("folder"));
  std::filesystem::create_symlink("missing/file.ini", folder_.PathOf("dangling"));
  std::filesystem::create_symlink("circle", folder_.PathOf("circle"));
  const Names names = folder_.Names();

  EXPECT_EQ(Write(locked, "2"), Result::Failed) << "read-only";
  EXPECT_EQ(Write(locked, "1"), Result::Ok) << "read-only, but nothing to do";
  for (const char* const name : {"folder", "dangling", "circle", "missing/file.ini", "file.ini/file.ini"}) {
    EXPECT_EQ(Write(folder_.PathOf(name), "2"), Result::Failed) << name;
  }
  EXPECT_EQ(Write("", "2"), Result::Failed) << "no path";
  EXPECT_EQ(Write(file + "\0x"s, "2"), Result::Failed) << "a path that the system would cut off";
  EXPECT_EQ(Write(file, "2\n3"), Result::Failed) << "a value that isn't one line";
  EXPECT_EQ(folder_.Read("file.ini"), "[S]\nk=1\n");
  EXPECT_EQ(folder_.Read("locked.ini"), "[S]\nk=1\n");
  EXPECT_EQ(folder_.Names(), names);
}

TEST_F(ConfigurationServiceTest, AFullDiskLeavesEverythingAsItWas) {
  const std::string bytes = "[S]\nk=" + std::string(100, 'x') + "\n";
  const std::string file = folder_.Write("file.ini", bytes);
  rlimit unlimited{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  for (const rlim_t room : {0U, 50U, 105U}) {
    rlimit limit = unlimited;
    limit.rlim_cur = room;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    const Result result = Write(file, std::string(100, 'y'));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &unlimited), 0);
    EXPECT_EQ(result, Result::Failed) << room;
    EXPECT_EQ(folder_.Read("file.ini"), bytes) << room;
    EXPECT_EQ(folder_.Names(), Names{"file.ini"}) << room;
  }
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(Write(file, "2"), Result::Ok);
}

TEST_F(ConfigurationServiceTest, SplitTextGivesAllPiecesAndCountsThemWithoutAnEmptyLastOne) {
  struct Row {
    std::string text;
    std::string separator;
    std::vector<std::string> parts;
    std::int32_t count;
  };
  for (const Row& row : {
           Row{"", ",", {}, 0},
           Row{"a", ",", {"a"}, 1},
           Row{"a,b", ",", {"a", "b"}, 2},
           Row{"a,b,", ",", {"a", "b", ""}, 2},
           Row{"a,b,,", ",", {"a", "b", "", ""}, 3},
           Row{",", ",", {"", ""}, 1},
           Row{",a", ",", {"", "a"}, 2},
           Row{" , ", ",", {" ", " "}, 2},
           Row{"HOME ALL\r\n", "\r\n", {"HOME ALL", ""}, 1},
           Row{"A\r\n\r\nB\nC\r\n", "\r\n", {"A", "", "B\nC", ""}, 3},
           Row{"aaa", "aa", {"", "a"}, 2},
           Row{"aaaa", "aa", {"", "", ""}, 2},
           Row{"a", "aa", {"a"}, 1},
           Row{"a\0b"s, "\0"s, {"a", "b"}, 2},
           Row{"a,b", "", {"a,b"}, 1},
       }) {
    std::vector<std::string> parts = {"before"};
    std::int32_t count = -1;
    OrvelCalibrateS::StringListTarget target(parts);
    EXPECT_EQ(service_->SplitText(target, AsText(row.separator), AsText(row.text), &count), Result::Ok) << row.text;
    EXPECT_EQ(parts, row.parts) << row.text;
    EXPECT_EQ(count, row.count) << row.text;
  }
}

TEST_F(ConfigurationServiceTest, ASplitThatFailsLeavesItsOutValues) {
  std::vector<std::string> parts = {"before"};
  OrvelCalibrateS::StringListTarget target(parts);
  EXPECT_EQ(service_->SplitText(target, AsText(","), AsText("a,b"), nullptr), Result::InvalidPointer);
  EXPECT_EQ(parts, std::vector<std::string>{"before"});
  RefusingTarget refusing;
  std::int32_t count = -1;
  EXPECT_EQ(service_->SplitText(refusing, AsText(","), AsText("a,b"), &count), Result::Failed);
  EXPECT_EQ(count, -1);
}

}  // namespace
}  // namespace Helmsway
