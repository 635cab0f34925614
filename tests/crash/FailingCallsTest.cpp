#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "tests/crash/FaultLayer.h"
#include "tests/crash/SaveUnderTest.h"

namespace Helmsway {
namespace {

using Faults::Call;
using Faults::Calls;
using Faults::Fault;
using Faults::What;
using HelmswayCmds::Result;

/// The calls of a save, and where among them the new contents are made.
struct Road {
  Calls calls;

  std::size_t Count(const std::string& name) const {
    return static_cast<std::size_t>(
        std::count_if(calls.begin(), calls.end(), [&](const Call& call) { return call.name == name; }));
  }
  /// Number of the first such call from `from` on, counted from 1; 0 without one.
  std::size_t Find(const std::string& name, std::size_t from = 1) const {
    for (std::size_t number = from; number <= calls.size(); ++number) {
      if (calls[number - 1].name == name) return number;
    }
    return 0;
  }
  int DescriptorAt(std::size_t number) const { return calls.at(number - 1).descriptor; }
};

struct Outcome {
  Result result = Result::Failed;
  Road road;
};

Outcome SaveWith(const Fault& fault, const SaveFolder& folder) {
  Outcome outcome;
  outcome.road.calls = Faults::Observe(fault, [&] { outcome.result = folder.Write(); });
  return outcome;
}

const Save plain{"plain", "S", "k", "[S]\nk=1\n", "[S]\nk=7\n"};

/// What a power failure can't part: nothing is on the disk but what has been flushed, in any order.
void ExpectTheOrderOfAPowerFailure(const Road& road, const std::string& rename) {
  const std::size_t written = road.Find("write");
  const std::size_t flushed = road.Find("fsync");
  const std::size_t renamed = road.Find(rename);
  const std::size_t folderFlushed = road.Find("fsync", flushed + 1);
  ASSERT_TRUE(written != 0 && flushed != 0 && renamed != 0 && folderFlushed != 0);
  EXPECT_LT(written, flushed);
  EXPECT_EQ(road.Find("write", flushed), 0U) << "written behind the flush";
  EXPECT_EQ(road.Find("fchmod", flushed), 0U);
  EXPECT_EQ(road.DescriptorAt(written), road.DescriptorAt(flushed));
  EXPECT_LT(flushed, renamed);
  EXPECT_LT(renamed, folderFlushed);
  EXPECT_EQ(road.DescriptorAt(renamed), road.DescriptorAt(folderFlushed));
  if (const std::size_t removed = road.Find("unlinkat")) {
    EXPECT_LT(folderFlushed, removed);
  }
}

TEST(FailingCallsTest, NewContentsAreFlushedAheadOfTheirNameAndTheNameAheadOfTheEnd) {
  const SaveFolder folder(plain);
  const Outcome outcome = SaveWith({}, folder);
  EXPECT_EQ(outcome.result, Result::Ok);
  ExpectTheOrderOfAPowerFailure(outcome.road, "renameat2");
  EXPECT_EQ(outcome.road.Count("renameat2"), 1U);
  EXPECT_EQ(outcome.road.Count("unlinkat"), 1U);
  std::string names;
  for (const Call& call : outcome.road.calls) names += " " + call.name;
  std::printf("%zu calls:%s\n", outcome.road.calls.size(), names.c_str());
}

TEST(FailingCallsTest, WhereFilesCannotBeExchangedTheyAreRenamed) {
  for (const int error : {EINVAL, ENOSYS}) {
    const SaveFolder folder(plain);
    const std::size_t rename = SaveWith({}, SaveFolder(plain)).road.Find("renameat2");
    const Outcome outcome = SaveWith({What::Failure, rename, error}, folder);
    EXPECT_EQ(outcome.result, Result::Ok);
    EXPECT_EQ(folder.Bytes(), plain.after);
    EXPECT_TRUE(folder.HoldsTheFileAlone());
    ExpectTheOrderOfAPowerFailure(outcome.road, "renameat");
  }
}

enum class Expected { Success, Failure, Either };

/// What a save must come to when that call fails.
Expected ExpectedAfter(const Road& road, std::size_t number, int error) {
  const std::string& name = road.calls.at(number - 1).name;
  const std::size_t renamed = road.Find("renameat2");
  if (renamed != 0 && renamed < number) return Expected::Success;
  const bool canBeInterrupted =
      name == "openat" || name == "flock" || name == "read" || name == "write" || name == "fsync";
  if (canBeInterrupted && error == EINTR) return Expected::Success;
  const std::size_t flushed = road.Find("fsync");
  const bool isClosing = flushed != 0 && number == road.Find("close", flushed);
  const bool isOfTheFilesBytes = name == "write" || name == "fsync" || isClosing;
  const bool isOfTheLock = number <= road.Find("flock");
  if (isOfTheLock || isOfTheFilesBytes) return Expected::Failure;
  // A file that can't be replaced is written in place.
  const bool isBar = error == EACCES || error == EROFS;
  const bool isNeeded = name == "fchmod" || name == "renameat2";
  return isNeeded && !isBar ? Expected::Failure : Expected::Either;
}

/// A failure leaves the old file, a success the new one, whichever call fails.
void ExpectOldFileOrNewOne(const std::vector<Save>& saves) {
  std::size_t failures = 0;
  for (const Save& save : saves) {
    const std::size_t calls = SaveWith({}, SaveFolder(save)).road.calls.size();
    for (const int error : {ENOSPC, EIO, EROFS, EACCES, EINTR}) {
      for (std::size_t number = 1; number <= calls; ++number) {
        const SaveFolder folder(save);
        const auto [result, road] = SaveWith({What::Failure, number, error}, folder);
        if (road.calls.size() < number) continue;  // the clock has moved on, which spares some calls
        const std::string& name = road.calls[number - 1].name;
        SCOPED_TRACE(save.name + ", call " + std::to_string(number) + ", " + name + ": " + std::strerror(error));
        EXPECT_EQ(folder.Bytes(), result == Result::Ok ? save.after : save.before);
        const Expected expected = ExpectedAfter(road, number, error);
        EXPECT_NE(expected, result == Result::Ok ? Expected::Failure : Expected::Success);
        // What can't be removed has to wait for the next save.
        if (name != "unlinkat") {
          EXPECT_TRUE(folder.HoldsTheFileAlone());
        }
        folder.ExpectTheMode();
        folder.ExpectTheNextSaveWorks();
        if (testing::Test::HasFailure()) return;
        failures += result == Result::Ok ? 0 : 1;
      }
    }
  }
  EXPECT_GT(failures, saves.size() * 20);
}

TEST(FailingCallsTest, AFailureLeavesTheOldFileWhicheverCallFailsThatAValueNeeds) {
  ExpectOldFileOrNewOne(SavesOf(Edit::Value));
}

TEST(FailingCallsTest, AFailureLeavesTheOldFileWhicheverCallFailsThatANewKeyNeeds) {
  ExpectOldFileOrNewOne(SavesOf(Edit::NewKey));
}

TEST(FailingCallsTest, AFailureLeavesTheOldFileWhicheverCallFailsThatANewSectionNeeds) {
  ExpectOldFileOrNewOne(SavesOf(Edit::NewSection));
}

// The file can't be replaced, and neither can any other call of the road that is taken then be relied on.
TEST(FailingCallsTest, AWriteInPlaceLeavesTheOldFileWhicheverCallFails) {
  const std::string value(100, 'v');
  const std::array<Save, 3> saves = {
      {{"longer", "S", "k", "[S]\nk=" + value + "\nj=0\n", "[S]\nk=7\nj=0\n"},
       {"shorter", "S", "k", "[S]\nk=\nj=" + value + "\n", "[S]\nk=7\nj=" + value + "\n"},
       {"empty", "S", "k", "", "[S]\r\nk=7\r\n"}}};
  for (const Save& save : saves) {
    const std::size_t calls =
        SaveWith({What::Nothing, 0, 0, "renameat2", {}, EBUSY}, SaveFolder(save)).road.calls.size();
    for (const int error : {ENOSPC, EIO, EACCES, EINTR}) {
      for (std::size_t number = 1; number <= calls; ++number) {
        const SaveFolder folder(save);
        const auto [result, road] = SaveWith({What::Failure, number, error, "renameat2", {}, EBUSY}, folder);
        SCOPED_TRACE(save.name + ", call " + std::to_string(number) + ": " + std::strerror(error));
        if (road.calls.size() >= number && result != Result::Ok) folder.Read();
        EXPECT_EQ(folder.Bytes(), result == Result::Ok ? save.after : save.before);
        folder.ExpectTheMode();
        folder.ExpectTheNextSaveWorks();
        ASSERT_FALSE(HasFailure());
      }
    }
  }
}

TEST(FailingCallsTest, AWriteThatTakesAPartIsGoneOnWith) {
  const SaveFolder folder(plain);
  const std::size_t write = SaveWith({}, SaveFolder(plain)).road.Find("write");
  const Outcome outcome = SaveWith({What::HalfWrite, write}, folder);
  EXPECT_EQ(outcome.result, Result::Ok);
  EXPECT_EQ(outcome.road.Count("write"), 2U);
  EXPECT_EQ(folder.Bytes(), plain.after);
}

}  // namespace
}  // namespace Helmsway
