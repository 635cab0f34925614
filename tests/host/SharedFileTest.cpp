#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <future>
#include <string>
#include <string_view>
#include <thread>

#include "addin/base/Ref.h"
#include "addin/base/Texts.h"
#include "bench/host/ConfigurationFile.h"
#include "bench/host/ConfigurationService.h"
#include "bench/host/FolderLock.h"
#include "bench/host/IniFile.h"
#include "bench/host/StillFile.h"
#include "bench/host/WriteObstacle.h"
#include "tests/host/TemporaryFolder.h"

/// A file that other programs write too, programs that know nothing of our lock among them.
namespace Helmsway {
namespace {

using namespace std::chrono_literals;
using Kind = FileProblem::Kind;

/// Another program's descriptor of a file.
class Descriptor {
 public:
  Descriptor(const std::string& path, int flags) : descriptor_(open(path.c_str(), flags | O_CLOEXEC)) {
    EXPECT_GE(descriptor_, 0);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { close(descriptor_); }
  int Get() const { return descriptor_; }
  void Write(std::string_view bytes) const {
    EXPECT_EQ(write(descriptor_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }

 private:
  int descriptor_;
};

class SharedFileTest : public testing::Test {
 protected:
  static std::string Many(int count) {
    std::string bytes = "[S]\n";
    for (int key = 0; key < count; ++key) bytes += "k" + std::to_string(key) + "=old\n";
    return bytes;
  }

  TemporaryFolder folder_;
};

TEST_F(SharedFileTest, AProgramThatHasEmptiedTheFileAndFillsItLaterLosesNothing) {
  const std::string full = Many(100);
  for (const int saves : {1, 3}) {
    const std::string path = folder_.Write("file.ini", "[S]\nk0=1\n");
    {
      const Descriptor program(path, O_WRONLY | O_TRUNC);
      for (int save = 0; save < saves; ++save) {
        EXPECT_FALSE(SetIniValue(path, "S", "k" + std::to_string(save), "new"));
      }
      EXPECT_EQ(IniFile(folder_.Read("file.ini")).Find("S", "k0"), "new");
      program.Write(full);
    }
    EXPECT_EQ(folder_.Read("file.ini"), full) << saves << " saves in the middle";
    EXPECT_EQ(folder_.Names(), std::set<std::string>{"file.ini"});
  }
}

TEST_F(SharedFileTest, AProgramThatKeepsTheFileOpenGoesOnWritingTheSameFile) {
  const std::string path = folder_.Write("file.ini", "[S]\nk=1\nj=0\n");
  const Descriptor program(path, O_RDWR);
  EXPECT_FALSE(SetIniValue(path, "S", "k", "7"));
  const std::size_t place = folder_.Read("file.ini").find("j=0");
  EXPECT_EQ(pwrite(program.Get(), "j=2", 3, static_cast<off_t>(place)), 3);
  EXPECT_EQ(folder_.Read("file.ini"), "[S]\nk=7\nj=2\n");
}

TEST_F(SharedFileTest, AFileThatIsBeingWrittenIsWaitedFor) {
  const std::string full = Many(1000);
  const std::string path = folder_.Write("file.ini", full);
  // Each part is written by another opening, so that only the times show that the file isn't whole yet.
  std::promise<void> begun;
  const auto program = std::async(std::launch::async, [&] {
    folder_.Write("file.ini", full.substr(0, 10));
    begun.set_value();
    for (std::size_t done = 10; done < full.size(); done += 2000) {
      std::this_thread::sleep_for(10ms);
      const Descriptor part(path, O_WRONLY | O_APPEND);
      part.Write(full.substr(done, 2000));
    }
  });
  begun.get_future().wait();
  EXPECT_FALSE(SetIniValue(path, "S", "k999", "new"));
  program.wait();
  std::string expected = full;
  expected.replace(expected.rfind("old"), 3, "new");
  EXPECT_EQ(folder_.Read("file.ini"), expected);
}

TEST_F(SharedFileTest, AFileThatAnEditorHasRenamedAwayIsWaitedFor) {
  const std::string path = folder_.Write("file.ini", "[S]\nk=1\nother=1\n");
  std::filesystem::rename(path, path + "~");
  const auto editor = std::async(std::launch::async, [&] {
    std::this_thread::sleep_for(15ms);
    folder_.Write("file.ini", "[S]\nk=1\nother=2\n");
  });
  EXPECT_FALSE(SetIniValue(path, "S", "k", "new"));
  editor.wait();
  EXPECT_EQ(folder_.Read("file.ini"), "[S]\nk=new\nother=2\n");
  std::filesystem::remove(path);
  EXPECT_FALSE(SetIniValue(path, "S", "k", "3")) << "a file that stays away is made";
  EXPECT_EQ(folder_.Read("file.ini"), "[S]\r\nk=3\r\n");
}

TEST_F(SharedFileTest, AFileThatNeverHoldsStillIsNotWritten) {
  const std::string path = folder_.Write("file.ini", "[S]\nk=1\n");
  std::atomic<bool> isOver = false;
  const auto program = std::async(std::launch::async, [&] {
    const Descriptor file(path, O_WRONLY | O_APPEND);
    while (!isOver) {
      file.Write("\n");
      std::this_thread::sleep_for(1ms);
    }
  });
  while (folder_.Read("file.ini").size() < 12) std::this_thread::sleep_for(1ms);
  const FileProblem problem = SetIniValue(path, "S", "k", "2", {Durability::Volatile, 300ms});
  isOver = true;
  program.wait();
  EXPECT_EQ(problem.kind, Kind::Busy) << problem.sentence;
  EXPECT_EQ(IniFile(folder_.Read("file.ini")).Find("S", "k"), "1");
}

TEST_F(SharedFileTest, OurOwnWritesDoNotWaitForEachOther) {
  FileContents contents;
  const std::string copy = folder_.Write("copy.ini", "[S]\nk=0\n");
  MarkAsWhole(copy);
  MarkAsWhole(folder_.Write("file.ini", ""));  // the last write of a process is known to it without a mark
  EXPECT_EQ(ReadStillFile(AT_FDCWD, copy, 0ms, contents), Reading::Present);
  // Writers of other processes are known by the file alone, so services of one process show the same.
  const std::string path = folder_.Write("file.ini", "[S]\nk=0\n");
  constexpr int writes = 60;
  const auto start = std::chrono::steady_clock::now();
  for (int write = 1; write <= writes; ++write) {
    EXPECT_FALSE(SetIniValue(path, "S", "k", std::to_string(write), {Durability::Volatile}));
    EXPECT_FALSE(SetIniValue(folder_.PathOf("other.ini"), "S", "k", std::to_string(write), {Durability::Volatile}));
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, writes * 25ms) << "half of a wait for each";
}

TEST_F(SharedFileTest, AWriterThatDoesNotLetGoIsWaitedForOnce) {
  using OrvelCalibrateS::AsText;
  const std::string path = folder_.Write("file.ini", "[S]\nk=1\n");
  auto* const made = new ConfigurationService(Durability::Volatile, 3s);
  OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service;
  *service.Out() = made;
  const auto write = [&] { return service->WriteIni(AsText("S"), AsText("k"), AsText(path), AsText("2")); };
  {
    const Descriptor holder(path.substr(0, path.rfind('/')), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(holder.Get(), LOCK_EX), 0);
    EXPECT_EQ(WriteObstacle(path).kind, Kind::Busy);
    EXPECT_EQ(SetIniValue(path, "S", "k", "2", {Durability::Volatile, 0ms}).kind, Kind::Busy);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(write(), HelmswayCmds::Result::Failed);
    const auto first = std::chrono::steady_clock::now() - start;
    EXPECT_GE(first, 3s);
    for (int turn = 0; turn < 5; ++turn) EXPECT_EQ(write(), HelmswayCmds::Result::Failed);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2 * first) << "six writes";
    EXPECT_EQ(made->LastProblem().kind, Kind::Busy);
    EXPECT_FALSE(ReadObstacle(path)) << "reads wait for no writer";
  }
  EXPECT_EQ(write(), HelmswayCmds::Result::Ok);
  EXPECT_FALSE(made->LastProblem());
  EXPECT_FALSE(WriteObstacle(path));
}

}  // namespace
}  // namespace Helmsway
