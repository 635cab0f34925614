#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <set>
#include <string>
#include <thread>

#include "bench/host/AtomicFile.h"
#include "tests/host/TemporaryFolder.h"
#include "tests/host/UnstampedEdits.h"

namespace Helmsway {
namespace {

using Names = std::set<std::string>;

FileContents ContentsOf(const std::string& path) {
  FileContents contents;
  EXPECT_EQ(ReadWholeFile(path, contents), FilePresence::Present);
  return contents;
}

/// Long enough for the clock of the file system to move on.
void WaitUntilSettled(const std::string& path) {
  while (!ContentsOf(path).stampSettled) std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

TEST(AtomicFileTest, ReadsFilesOfAnyLength) {
  const TemporaryFolder folder;
  for (const std::size_t size : {0U, 1U, 4095U, 4096U, 4097U, 3'000'000U}) {
    std::string bytes(size, 'x');
    if (size > 0) bytes.back() = '\0';
    EXPECT_EQ(ContentsOf(folder.Write("file", bytes)).bytes, bytes) << size;
  }
}

TEST(AtomicFileTest, ReadsWhatGivesNoLengthOfItsOwn) { EXPECT_FALSE(ContentsOf("/proc/self/status").bytes.empty()); }

TEST(AtomicFileTest, AStampSettlesAndDiffersAfterTheNextChange) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("file", "1");
  WaitUntilSettled(path);
  const FileContents before = ContentsOf(path);
  FileStamp now;
  EXPECT_EQ(ReadStamp(path, now), FilePresence::Present);
  EXPECT_EQ(now, before.stamp);
  folder.Write("file", "2");
  EXPECT_EQ(ReadStamp(path, now), FilePresence::Present);
  EXPECT_NE(now, before.stamp);
  EXPECT_FALSE(ContentsOf(path).stampSettled);
}

TEST(AtomicFileTest, DoesNotReplaceAStateThatTheCallerHasNotSeen) {
  enum class Wait { No, UntilSettled };
  const TemporaryFolder folder;
  for (const Wait wait : {Wait::No, Wait::UntilSettled}) {
    const std::string path = folder.Write("file", "1");
    if (wait == Wait::UntilSettled) WaitUntilSettled(path);
    const FileContents seen = ContentsOf(path);
    EXPECT_EQ(ReplaceFile(path, "3", nullptr), Replacement::Superseded);
    folder.Write("file", "2");
    EXPECT_EQ(ReplaceFile(path, "3", &seen), Replacement::Superseded);
    EXPECT_EQ(folder.Read("file"), "2");
    std::filesystem::remove(path);
    EXPECT_EQ(ReplaceFile(path, "3", &seen), Replacement::Superseded);
    EXPECT_EQ(folder.Names(), Names());
    EXPECT_EQ(ReplaceFile(path, "3", nullptr), Replacement::Done);
    EXPECT_EQ(folder.Read("file"), "3");
    EXPECT_EQ(folder.Names(), Names{"file"});
  }
}

TEST(AtomicFileTest, DoesNotReplaceAStateThatSharesTheStampOfTheOneSeen) {
  const TemporaryFolder folder;
  int seen = 0;
  for (int attempt = 0; attempt < 50; ++attempt) {
    UnstampedEdits file(folder, "file", "1");
    file.Put(0, '2');
    const FileContents contents = ContentsOf(file.Path());
    const bool isYoung = file.IsYoung();
    file.Put(0, '3');
    const Replacement replacement = ReplaceFile(file.Path(), "4", &contents);
    if (!isYoung) continue;
    ASSERT_EQ(replacement, Replacement::Superseded);
    ASSERT_EQ(folder.Read("file"), "3");
    ++seen;
  }
  EXPECT_GT(seen, 0) << "the machine is too slow to tell";
}

TEST(AtomicFileTest, LeavesTheLitterOfOthersAlone) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("file", "1");
  const std::string own = ".file." + std::to_string(getpid()) + "-0.new";
  folder.Write(own, "left behind");
  const FileContents seen = ContentsOf(path);
  EXPECT_EQ(ReplaceFile(path, "2", &seen), Replacement::Done);
  EXPECT_EQ(folder.Read("file"), "2");
  EXPECT_EQ(folder.Read(own), "left behind");
  EXPECT_EQ(folder.Names(), (Names{own, "file"}));
}

TEST(AtomicFileTest, ReplacesByTheLongestNameAndABareName) {
  const TemporaryFolder folder;
  const std::string longest(255, 'n');
  EXPECT_EQ(ReplaceFile(folder.PathOf(longest), "1", nullptr), Replacement::Done);
  EXPECT_EQ(folder.Read(longest), "1");

  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.PathOf(""));
  EXPECT_EQ(ReplaceFile("bare", "2", nullptr), Replacement::Done);
  std::filesystem::current_path(before);
  EXPECT_EQ(folder.Read("bare"), "2");
}

}  // namespace
}  // namespace Helmsway
