#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <filesystem>
#include <tuple>

#include "tests/host/TemporaryFolder.h"
#include "tests/replay/ReplayRun.h"

namespace {

int flushes = 0;

}  // namespace

// In place of the C library's.
extern "C" int fsync(int descriptor) {
  ++flushes;
  return static_cast<int>(syscall(SYS_fsync, descriptor));
}

namespace Helmsway {
namespace {

TEST(DurabilityTest, OnlyFilesThatOutliveTheRunAreFlushed) {
  const std::string writesTwice = "file set S k 1\nfile remove S k\n";
  constexpr int flushesOfTwoWrites = 4;  // file and folder, each time
  const TemporaryFolder folder;
  folder.Write("Marivane.ini", "[S]\n");
  ReplayOptions options = OptionsFor(std::filesystem::path(folder.PathOf("Marivane.ini")).parent_path());
  const std::tuple<WorkOn, int> rows[] = {{WorkOn::Copies, 0}, {WorkOn::Files, flushesOfTwoWrites}};
  for (const auto& [workOn, expected] : rows) {
    options.workOn = workOn;
    flushes = 0;
    EXPECT_EQ(RunScript(options, writesTwice).status, ExitStatus::Performed);
    EXPECT_EQ(flushes, expected) << "copies: " << (workOn == WorkOn::Copies);
  }
}

}  // namespace
}  // namespace Helmsway
