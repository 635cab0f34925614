#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include "addin/base/Ref.h"
#include "addin/base/Texts.h"
#include "bench/host/AtomicFile.h"
#include "bench/host/ConfigurationFile.h"
#include "bench/host/ConfigurationService.h"
#include "bench/host/FolderLock.h"
#include "bench/host/StillFile.h"
#include "bench/host/WriteObstacle.h"
#include "tests/host/TemporaryFolder.h"

namespace Helmsway {
namespace {

using namespace std::string_literals;
using HelmswayCmds::Result;
using OrvelCalibrateS::AsText;
namespace fs = std::filesystem;
using Names = std::set<std::string>;

class ConfigurationServiceTest : public testing::Test {
 protected:
  ConfigurationServiceTest() : made_(new ConfigurationService) { *service_.Out() = made_; }

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

  FileProblem::Kind LastKind() const { return made_->LastProblem().kind; }

  static struct stat StatusOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status;
  }

  TemporaryFolder folder_;
  ConfigurationService* made_;  ///< held by `service_`
  OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service_;
};

using Kind = FileProblem::Kind;

TEST_F(ConfigurationServiceTest, PathsThatCannotBeWrittenReadAsTheDefaultOrAFailure) {
  const std::string file = folder_.Write("file.ini", "[S]\nk=1\n");
  const std::string locked = folder_.Write("locked.ini", "[S]\nk=1\n");
  ASSERT_EQ(chmod(locked.c_str(), 0444), 0);
  fs::create_directory(folder_.PathOf("folder"));
  fs::create_symlink("missing/file.ini", folder_.PathOf("dangling"));
  fs::create_symlink("circle", folder_.PathOf("circle"));
  ASSERT_EQ(mkfifo(folder_.PathOf("pipe").c_str(), 0600), 0);
  const Names names = folder_.Names();
  struct Row {
    std::string path;
    const char* value;
    Kind reading;  ///< what keeps it from being read
    Kind writing;
  };
  const Row rows[] = {
      {locked, "1", Kind::None, Kind::ReadOnlyFile},
      {folder_.PathOf("missing/file.ini"), "(default)", Kind::None, Kind::MissingFolder},
      {file + "/file.ini", "(default)", Kind::None, Kind::MissingFolder},
      {folder_.PathOf("dangling"), "(default)", Kind::None, Kind::MissingFolder},
      {"", "(default)", Kind::None, Kind::NotAFile},
      {folder_.PathOf("circle"), "(failed)", Kind::NotAFile, Kind::NotAFile},
      {folder_.PathOf("folder"), "(failed)", Kind::NotAFile, Kind::NotAFile},
      {folder_.PathOf("pipe"), "(failed)", Kind::NotAFile, Kind::NotAFile},
      {file + "\0x"s, "(failed)", Kind::BadText, Kind::BadText},  // the system would cut it off
      {"/proc/version", "(default)", Kind::None, Kind::ReadOnlyFile},
  };
  for (const auto& [path, value, reading, writing] : rows) {
    EXPECT_EQ(Read(path), value) << path;
    EXPECT_EQ(LastKind(), reading) << path << made_->LastProblem().sentence;
    EXPECT_EQ(Write(path, "2"), Result::Failed) << path;
    EXPECT_EQ(LastKind(), writing) << path << ": " << made_->LastProblem().sentence;
    EXPECT_EQ(Read(path), value) << path << ", once more";
    if (reading == Kind::BadText) continue;
    EXPECT_EQ(WriteObstacle(path).kind, writing) << path;
    EXPECT_EQ(ReadObstacle(path).kind, reading) << path;
  }
  EXPECT_EQ(Write(locked, "1"), Result::Ok) << "nothing to do";
  EXPECT_EQ(Write(file, "2\n3"), Result::Failed) << "a value that isn't one line";
  EXPECT_EQ(LastKind(), Kind::BadText);
  EXPECT_FALSE(WriteObstacle(file));
  EXPECT_FALSE(WriteObstacle(folder_.PathOf("new.ini")));
  EXPECT_EQ(folder_.Read("file.ini") + folder_.Read("locked.ini"), "[S]\nk=1\n[S]\nk=1\n");
  EXPECT_EQ(folder_.Names(), names);
}

/// ASCII text as UTF-16, without a mark.
std::string InUtf16(std::string_view text, bool bigEndian) {
  std::string bytes;
  for (const char letter : text) bytes += bigEndian ? std::string{'\0', letter} : std::string{letter, '\0'};
  return bytes;
}

TEST_F(ConfigurationServiceTest, AUtf16FileHoldsNoKeysAndIsNeverWritten) {
  const char* const text = "[S]\r\nk=1\r\n";
  for (const std::string& bytes :
       {"\xFF\xFE" + InUtf16(text, false), "\xFE\xFF" + InUtf16(text, true), InUtf16(text, false), InUtf16(text, true),
        InUtf16(";k", false), "\xFF\xFE"s, "\xFF\xFE\n[S]\nk=1\n"s}) {
    const std::string file = folder_.Write("file.ini", bytes);
    MarkAsWhole(file);
    EXPECT_EQ(Read(file), "(default)");
    EXPECT_EQ(Write(file, "2"), Result::Failed);
    EXPECT_EQ(LastKind(), Kind::Utf16);
    EXPECT_EQ(RemoveIniValue(file, "S", "k").kind, Kind::Utf16);
    EXPECT_EQ(WriteObstacle(file).kind, Kind::Utf16);
    EXPECT_EQ(ReadObstacle(file).kind, Kind::Utf16);
    EXPECT_EQ(folder_.Read("file.ini"), bytes);
  }
  EXPECT_EQ(made_->LastProblem().sentence,
            "file.ini is a UTF-16 file; save it as 8-bit text (UTF-8 or the local code page)");
  // A NUL here and there is no UTF-16.
  for (const std::string& beginning : {"\0"s, "\0\0\0\0"s, ";\0a"s, ";a\0b"s, ";\0\0\0"s}) {
    const std::string file = folder_.Write("file.ini", beginning + "\n[S]\nk=1\n");
    EXPECT_EQ(Read(file), "1");
    EXPECT_EQ(Write(file, "2"), Result::Ok);
    EXPECT_EQ(folder_.Read("file.ini"), beginning + "\n[S]\nk=2\n");
  }
}

TEST_F(ConfigurationServiceTest, EveryEditOfAnotherProgramIsSeenAndKept) {
  const std::string file = folder_.Write("file.ini", "[S]\nk=1\nj=1\n");
  EXPECT_EQ(Read(file), "1");
  folder_.Write("file.ini", "[S]\nk=1\nj=2\n");
  EXPECT_EQ(Write(file, "3"), Result::Ok);
  EXPECT_EQ(folder_.Read("file.ini"), "[S]\nk=3\nj=2\n");
  EXPECT_EQ(Read(file), "3");
  // Another file in its place, with all that a program can set the same.
  const auto time = fs::last_write_time(file);
  for (int edit = 1000; edit < 1200; ++edit) {
    fs::remove(file);
    folder_.Write("file.ini", "[S]\nk=" + std::to_string(edit) + "\n");
    fs::last_write_time(file, time);
    ASSERT_EQ(Read(file), std::to_string(edit));
  }
  fs::remove(file);
  EXPECT_EQ(Read(file), "(default)");
  fs::create_directory(file);
  EXPECT_EQ(Read(file), "(failed)");
  fs::remove(file);
  fs::create_symlink(folder_.Write("target.ini", "[S]\nk=link\n"), file);
  EXPECT_EQ(Read(file), "link");
}

Replacement::Kind Replace(const std::string& path, std::string_view bytes, const FileContents* expected) {
  const fs::path file = path;
  const FolderLock folder(file.parent_path(), std::chrono::milliseconds(0));
  return ReplaceFile(folder.Folder(), file.filename(), bytes, expected).kind;
}

// Through a shared mapping only the first edit gives a file a new stamp, as within one step of the clock everywhere.
TEST_F(ConfigurationServiceTest, AnEditIsSeenThatSharesTheStampOfTheOneBefore) {
  int seen = 0;
  for (int attempt = 0; attempt < 50; ++attempt) {
    const std::string path = folder_.Write("file.ini", "[S]\nk=1\n");
    const int descriptor = open(path.c_str(), O_RDWR);
    char* const bytes = static_cast<char*>(mmap(nullptr, 8, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0));
    close(descriptor);
    const auto start = std::chrono::steady_clock::now();
    bytes[6] = '2';
    FileContents before;
    EXPECT_EQ(Read(path), "2");
    EXPECT_EQ(ReadWholeFile(path, before), FilePresence::Present);
    bytes[6] = '3';
    const std::string value = Read(path);
    const Replacement::Kind replacement = Replace(path, "4", &before);
    munmap(bytes, 8);
    if (std::chrono::steady_clock::now() - start > std::chrono::milliseconds(10))
      continue;  // the stamp has settled meanwhile
    ASSERT_EQ(value, "3");
    ASSERT_EQ(replacement, Replacement::Kind::Superseded);
    ++seen;
  }
  EXPECT_GT(seen, 0) << "the machine is too slow to tell";
}

TEST_F(ConfigurationServiceTest, FilesOfAnyLengthAreReadAlsoWhereTheSystemGivesNone) {
  FileContents contents;
  for (const std::size_t size : {0U, 4095U, 4096U, 3'000'000U}) {
    EXPECT_EQ(ReadWholeFile(folder_.Write("file", std::string(size, '\0')), contents), FilePresence::Present);
    EXPECT_EQ(contents.bytes, std::string(size, '\0')) << size;
  }
  EXPECT_EQ(ReadWholeFile("/proc/self/status", contents), FilePresence::Present);
  EXPECT_FALSE(contents.bytes.empty());
}

TEST_F(ConfigurationServiceTest, AStateThatTheCallerHasNotSeenIsNotReplaced) {
  using namespace std::chrono_literals;
  const std::string name(255, 'n');      // the longest that there is
  for (const auto age : {0ms, 100ms}) {  // 100 ms are enough for the clock of the file system to move on
    const std::string path = folder_.Write(name, "1");
    std::this_thread::sleep_for(age);
    FileContents seen;
    EXPECT_EQ(ReadWholeFile(path, seen), FilePresence::Present);
    EXPECT_EQ(Replace(path, "3", nullptr), Replacement::Kind::Superseded);
    folder_.Write(name, "2");
    EXPECT_EQ(Replace(path, "3", &seen), Replacement::Kind::Superseded);
    EXPECT_EQ(folder_.Read(name), "2");
    fs::remove(path);
    EXPECT_EQ(Replace(path, "3", &seen), Replacement::Kind::Superseded);
    EXPECT_EQ(folder_.Names(), Names());
    EXPECT_EQ(Replace(path, "3", nullptr), Replacement::Kind::Done);
    EXPECT_EQ(folder_.Read(name), "3");
    EXPECT_EQ(folder_.Names(), Names{name});
  }
}

TEST_F(ConfigurationServiceTest, AMissingFileIsMadeAndOneThatSaysSoAlreadyIsLeft) {
  const std::string file = folder_.PathOf("file.ini");
  EXPECT_EQ(Read(file), "(default)");
  const mode_t mask = umask(0027);
  EXPECT_EQ(Write(file, "1"), Result::Ok);
  umask(mask);
  EXPECT_EQ(folder_.Read("file.ini"), "[S]\r\nk=1\r\n");
  const struct stat made = StatusOf(file);
  EXPECT_EQ(made.st_mode & 07777U, 0640U);
  EXPECT_EQ(Write(file, " 1\t"), Result::Ok) << "blanks are no part of a value";
  EXPECT_FALSE(RemoveIniValue(file, "S", "j") || RemoveIniValue(folder_.PathOf("missing.ini"), "S", "k"));
  EXPECT_EQ(StatusOf(file).st_ino, made.st_ino);
  EXPECT_EQ(folder_.Names(), Names{"file.ini"});
}

TEST_F(ConfigurationServiceTest, ModeOwnerAndLinksStay) {
  fs::create_directory(folder_.PathOf("data"));
  const std::string file = folder_.Write("data/file.ini", "[S]\nk=1\n");
  const uid_t owner = geteuid() == 0 ? 4711 : geteuid();
  ASSERT_EQ(chown(file.c_str(), owner, static_cast<gid_t>(-1)), 0);
  ASSERT_EQ(chmod(file.c_str(), 04751), 0);
  fs::create_symlink(file, folder_.PathOf("data/absolute.ini"));
  fs::create_symlink("data/absolute.ini", folder_.PathOf("link.ini"));
  fs::create_symlink("data/new.ini", folder_.PathOf("dangling.ini"));
  EXPECT_EQ(Write(folder_.PathOf("link.ini"), "2"), Result::Ok);
  EXPECT_EQ(Write(folder_.PathOf("dangling.ini"), "3"), Result::Ok);
  EXPECT_EQ(folder_.Read("data/file.ini") + folder_.Read("data/new.ini"), "[S]\nk=2\n[S]\r\nk=3\r\n");
  for (const char* link : {"link.ini", "data/absolute.ini", "dangling.ini"}) {
    EXPECT_TRUE(fs::is_symlink(folder_.PathOf(link))) << link;
  }
  EXPECT_EQ(StatusOf(file).st_mode & 07777U, 04751U);
  EXPECT_EQ(StatusOf(file).st_uid, owner);
  EXPECT_EQ(folder_.Names(), (Names{"dangling.ini", "data", "link.ini"}));
}

TEST_F(ConfigurationServiceTest, AFullDiskLeavesEverythingAsItWas) {
  const std::string bytes = "[S]\nk=" + std::string(100, 'x') + "\n";
  const std::string file = folder_.Write("file.ini", bytes);
  rlimit unlimited{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit almostFull{105, unlimited.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &almostFull), 0);
  const Result result = Write(file, std::string(100, 'y'));
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &unlimited), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(result, Result::Failed);
  EXPECT_EQ(folder_.Read("file.ini"), bytes);
  EXPECT_EQ(folder_.Names(), Names{"file.ini"});
}

#if defined(__SANITIZE_ADDRESS__)
constexpr bool HasMemoryOfASanitizer = true;
#elif defined(__has_feature)
constexpr bool HasMemoryOfASanitizer = __has_feature(address_sanitizer);
#else
constexpr bool HasMemoryOfASanitizer = false;
#endif

/// In kB, of this process, as the system calls it.
long MemoryFigure(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name)) return std::stol(line.substr(name.size() + 1));
  }
  return -1;
}

TEST_F(ConfigurationServiceTest, AWriteTakesAtMostThreeTimesTheMemoryOfTheFile) {
  if (HasMemoryOfASanitizer) GTEST_SKIP() << "a sanitizer takes memory of its own";
  constexpr off_t size = 50'000'000;
  const std::string file = folder_.Write("file.ini", "[S]\nk=1\nj=");
  ASSERT_EQ(truncate(file.c_str(), size), 0);  // one line of NUL bytes
  const pid_t process = fork();
  if (process == 0) {
    const long before = MemoryFigure("VmRSS:");
    const bool isDone = Read(file) == "1" && Write(file, "23") == Result::Ok && Read(file) == "23";
    _exit(isDone && before > 0 && MemoryFigure("VmHWM:") - before < 3 * size / 1024 ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(waitpid(process, &status, 0), process);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(fs::file_size(file), static_cast<std::uintmax_t>(size) + 1);
}

TEST_F(ConfigurationServiceTest, SplitTextGivesAllPiecesAndCountsThemWithoutAnEmptyLastOne) {
  const std::tuple<const char*, const char*, std::vector<std::string>, std::int32_t> rows[] = {
      {"", ",", {}, 0},
      {"a,b,,", ",", {"a", "b", "", ""}, 3},
      {",", ",", {"", ""}, 1},
      {"A\r\n\r\nB\nC\r\n", "\r\n", {"A", "", "B\nC", ""}, 3},
      {"aaaa", "aa", {"", "", ""}, 2},
      {"a,b", "", {"a,b"}, 1},
  };
  for (const auto& [text, separator, expected, expectedCount] : rows) {
    std::vector<std::string> parts = {"before"};
    OrvelCalibrateS::StringListTarget target(parts);
    std::int32_t count = -1;
    EXPECT_EQ(service_->SplitText(target, AsText(separator), AsText(text), &count), Result::Ok) << text;
    EXPECT_EQ(parts, expected) << text;
    EXPECT_EQ(count, expectedCount) << text;
  }
  std::vector<std::string> parts = {"before"};
  OrvelCalibrateS::StringListTarget target(parts);
  std::int32_t count = -1;
  EXPECT_EQ(service_->SplitText(target, AsText(","), AsText(std::string(2'000'000, ',')), &count), Result::Failed);
  EXPECT_EQ(parts.size(), 1U) << "a damaged line takes no memory";
}

}  // namespace
}  // namespace Helmsway
