#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "bench/host/ConfigurationFile.h"
#include "tests/crash/FaultLayer.h"
#include "tests/crash/SaveUnderTest.h"

namespace Helmsway {
namespace {

using Faults::Fault;
using Faults::What;

enum class End { Killed, Saved, Other };

/// Saves in a process of its own that dies of the fault, if it makes so many calls.
End SaveAndDie(const SaveFolder& folder, const Fault& fault) {
  const pid_t process = fork();
  if (process == 0) {
    HelmswayCmds::Result result = HelmswayCmds::Result::Failed;
    Faults::Observe(fault, [&] { result = folder.Write(); });
    _exit(result == HelmswayCmds::Result::Ok ? 0 : 1);
  }
  int status = 0;
  if (process < 0 || waitpid(process, &status, 0) != process) return End::Other;
  if (WIFSIGNALED(status)) return WTERMSIG(status) == SIGKILL ? End::Killed : End::Other;
  return WEXITSTATUS(status) == 0 ? End::Saved : End::Other;
}

/// Dies once at each call of that save; how many there were.
std::size_t ExpectWholeFilesWhereverItDies(const Save& save, Fault fault) {
  constexpr std::size_t mostCalls = 200;
  bool wasOld = true;
  for (std::size_t call = 1; call < mostCalls; ++call) {
    SCOPED_TRACE(save.name + ", call " + std::to_string(call));
    const SaveFolder folder(save);
    fault.call = call;
    const End end = SaveAndDie(folder, fault);
    const std::string bytes = folder.Bytes();
    if (end != End::Killed) {
      EXPECT_EQ(end, End::Saved);
      EXPECT_EQ(bytes, save.after);
      EXPECT_FALSE(wasOld) << "no call was the one that makes the save";
      return call - 1;
    }
    // Once a call has made the save, all later ones find it made.
    EXPECT_TRUE(bytes == save.after || (wasOld && bytes == save.before)) << bytes;
    wasOld = bytes == save.before;
    EXPECT_LE(folder.Names().size(), 2U);
    folder.ExpectTheMode();
    folder.ExpectTheNextSaveWorks();
    if (testing::Test::HasFailure()) return call;
  }
  ADD_FAILURE() << "a save without an end";
  return mostCalls;
}

/// Dies once at each call of a save of a file that can't be replaced. The file may be torn then, until a program opens
/// it.
std::size_t ExpectAnUndoneWriteWhereverItDies(const Save& save, Fault fault) {
  fault.missing = "renameat2";
  fault.missingError = EBUSY;
  std::size_t torn = 0;
  for (fault.call = 1; fault.call < 200; ++fault.call) {
    SCOPED_TRACE(save.name + ", call " + std::to_string(fault.call));
    const SaveFolder folder(save);
    const End end = SaveAndDie(folder, fault);
    if (end != End::Killed) {
      EXPECT_EQ(end, End::Saved);
      EXPECT_EQ(folder.Bytes(), save.after);
      return torn;
    }
    if (folder.Bytes() != save.before && folder.Bytes() != save.after) ++torn;
    const bool readsFirst = fault.call % 2 == 0;
    if (readsFirst) {
      folder.Read();
      EXPECT_TRUE(folder.Bytes() == save.before || folder.Bytes() == save.after) << folder.Bytes();
    }
    folder.ExpectTheNextSaveWorks();
    if (testing::Test::HasFailure()) return torn;
  }
  ADD_FAILURE() << "a save without an end";
  return torn;
}

/// Tells how many calls were tried.
void ExpectWholeFiles(const std::vector<Save>& saves, const Fault& fault) {
  std::size_t deaths = 0;
  std::size_t fewest = ~std::size_t{0};
  std::size_t most = 0;
  for (const Save& save : saves) {
    const std::size_t calls = ExpectWholeFilesWhereverItDies(save, fault);
    if (testing::Test::HasFailure()) return;
    deaths += calls;
    fewest = std::min(fewest, calls);
    most = std::max(most, calls);
  }
  std::printf("%zu saves, %zu to %zu calls each, %zu deaths\n", saves.size(), fewest, most, deaths);
  EXPECT_GT(fewest, 10U);
}

TEST(SuddenDeathTest, OfAWriterOfAValueLeavesTheOldFileOrTheNewOne) {
  ExpectWholeFiles(SavesOf(Edit::Value), {What::DeathAfter});
}

TEST(SuddenDeathTest, OfAWriterOfANewKeyLeavesTheOldFileOrTheNewOne) {
  ExpectWholeFiles(SavesOf(Edit::NewKey), {What::DeathAfter});
}

TEST(SuddenDeathTest, OfAWriterOfANewSectionLeavesTheOldFileOrTheNewOne) {
  ExpectWholeFiles(SavesOf(Edit::NewSection), {What::DeathAfter});
}

// Ahead of a call the disk is as behind the one before.
TEST(SuddenDeathTest, AheadOfACallIsNoOtherThanBehindOne) {
  ExpectWholeFiles({SavesOf(Edit::Value).front()}, {What::DeathBefore});
}

TEST(SuddenDeathTest, WhereFilesCannotBeExchangedLeavesTheOldFileOrTheNewOne) {
  ExpectWholeFiles({SavesOf(Edit::Value).front()}, {What::DeathAfter, 0, 0, "renameat2"});
}

TEST(SuddenDeathTest, OfAWriteInPlaceIsUndoneByTheNextProgram) {
  const std::string value(100, 'v');
  const std::array<Save, 3> saves = {
      {{"longer", "S", "k", "[S]\nk=" + value + "\nj=0\n", "[S]\nk=7\nj=0\n"},
       {"shorter", "S", "k", "[S]\nk=\nj=" + value + "\n", "[S]\nk=7\nj=" + value + "\n"},
       {"empty", "S", "k", "", "[S]\r\nk=7\r\n"}}};
  for (const Save& save : saves) {
    for (const What what : {What::DeathAfter, What::DeathInWrite}) {
      const std::size_t torn = ExpectAnUndoneWriteWhereverItDies(save, {what});
      EXPECT_TRUE(torn > 0 || what == What::DeathAfter) << save.name << ": no moment at which the file is torn";
      if (HasFailure()) return;
    }
  }
}

TEST(LeftoversTest, OnlyThoseOfKilledWritersOfThatFileAreRemoved) {
  const TemporaryFolder folder;
  const std::set<std::string> others = {".Marivane.ini.new",      ".Marivane.ini.7-1.new~", ".Marivane.ini.7-.new",
                                        ".Marivane.ini.x-1.new",  "Marivane.ini.7-1.new",   ".Helmsway.ini.7-1.new",
                                        ".Marivane.ini.7-1.new2", ".Marivane.ini.71.new"};
  for (const std::string& name : others) folder.Write(name, "kept");
  // The number of a process that lives, in other folders or long since, says nothing.
  const std::string own = ".Marivane.ini." + std::to_string(getpid()) + "-1.new";
  for (const std::string& name : {std::string(".Marivane.ini.7-1.new"), own}) folder.Write(name, "left");
  std::filesystem::create_directory(folder.PathOf(".Marivane.ini.7-2.new"));
  const std::string living = ".Marivane.ini.7-3.new";
  const int writer = open(folder.Write(living, "under way").c_str(), O_WRONLY);
  ASSERT_EQ(flock(writer, LOCK_EX), 0);

  EXPECT_FALSE(SetIniValue(folder.Write("Marivane.ini", "[S]\n"), "S", "k", "1"));
  std::set<std::string> expected = others;
  expected.insert({"Marivane.ini", ".Marivane.ini.7-2.new", living});
  EXPECT_EQ(folder.Names(), expected);

  close(writer);
  EXPECT_FALSE(SetIniValue(folder.PathOf("Marivane.ini"), "S", "k", "2"));
  expected.erase(living);
  EXPECT_EQ(folder.Names(), expected);
}

}  // namespace
}  // namespace Helmsway
