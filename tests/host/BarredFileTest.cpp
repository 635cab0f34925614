#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>

#include "bench/host/ConfigurationFile.h"
#include "bench/host/WriteObstacle.h"
#include "tests/host/TemporaryFolder.h"

/// Files that may be written and can't be replaced.
namespace Helmsway {
namespace {

namespace fs = std::filesystem;
using Kind = FileProblem::Kind;

constexpr uid_t OtherUser = 65534;
constexpr int CannotBeTried = 77;

/// What the work returns in a process of its own: the kind of a problem, or `CannotBeTried`.
int InAProcess(const std::function<int()>& work) {
  const pid_t process = fork();
  if (process == 0) _exit(work());
  int status = 0;
  EXPECT_EQ(waitpid(process, &status, 0), process);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// As a user who isn't the superuser: ourselves, or another one where the tests run as the superuser.
int AsPlainUser(const std::function<int()>& work) {
  return InAProcess([&] { return geteuid() == 0 && setuid(OtherUser) != 0 ? CannotBeTried : work(); });
}

class BarredFileTest : public testing::Test {
 protected:
  BarredFileTest() {
    fs::create_directory(folder_.PathOf("data"));
    EXPECT_EQ(chmod(folder_.PathOf("").c_str(), 0755), 0);
    file_ = folder_.Write("data/file.ini", "[S]\nk=1\nj=0\n");
  }
  ~BarredFileTest() override { chmod(folder_.PathOf("data").c_str(), 0700); }

  std::string Bytes() const { return folder_.Read("data/file.ini"); }
  ino_t Inode() const {
    struct stat status {};
    EXPECT_EQ(stat(file_.c_str(), &status), 0);
    return status.st_ino;
  }
  void SetModes(mode_t ofFolder, mode_t ofFile) const {
    ASSERT_EQ(chmod(file_.c_str(), ofFile), 0);
    ASSERT_EQ(chmod(folder_.PathOf("data").c_str(), ofFolder), 0);
  }
  int Set(const std::string& name, const char* value) const {
    return static_cast<int>(SetIniValue(folder_.PathOf(name), "S", "k", value).kind);
  }

  TemporaryFolder folder_;
  std::string file_;
};

TEST_F(BarredFileTest, InAFolderThatMayNotBeWrittenTheFileIsWrittenInPlace) {
  SetModes(0555, 0666);
  const ino_t inode = Inode();
  const int kind = AsPlainUser([&] { return WriteObstacle(file_) ? 1 : Set("data/file.ini", "22"); });
  if (kind == CannotBeTried) GTEST_SKIP() << "there is no other user to try it as";
  EXPECT_EQ(kind, static_cast<int>(Kind::None));
  EXPECT_EQ(Bytes(), "[S]\nk=22\nj=0\n");
  EXPECT_EQ(Inode(), inode);
  EXPECT_EQ(folder_.Names(), std::set<std::string>{"data"});
  const auto kindOfNew = [&] {
    const Kind obstacle = WriteObstacle(folder_.PathOf("data/new.ini")).kind;
    return obstacle == Kind::ReadOnlyFolder ? Set("data/new.ini", "1") : -1;
  };
  EXPECT_EQ(AsPlainUser(kindOfNew), static_cast<int>(Kind::ReadOnlyFolder));
}

TEST_F(BarredFileTest, AFileThatMayNotBeWrittenIsLeft) {
  SetModes(0777, 0444);
  EXPECT_EQ(
      AsPlainUser([&] { return WriteObstacle(file_).kind == Kind::ReadOnlyFile ? Set("data/file.ini", "2") : -1; }),
      static_cast<int>(Kind::ReadOnlyFile));
  EXPECT_EQ(Bytes(), "[S]\nk=1\nj=0\n");
}

TEST_F(BarredFileTest, InAStickyFolderAnotherUsersFileIsWrittenInPlace) {
  if (geteuid() != 0) GTEST_SKIP() << "it takes a second user";
  SetModes(01777, 0666);
  const ino_t inode = Inode();
  EXPECT_EQ(AsPlainUser([&] { return Set("data/file.ini", "22"); }), static_cast<int>(Kind::None));
  EXPECT_EQ(Bytes(), "[S]\nk=22\nj=0\n");
  EXPECT_EQ(Inode(), inode);
  EXPECT_EQ(fs::exists(folder_.PathOf("data/.file.ini.kept")), false);
}

TEST_F(BarredFileTest, AFileThatIsMountedAloneIsWrittenInPlace) {
  const std::string mounted = folder_.Write("mounted.ini", "");
  const int kind = InAProcess([&] {
    if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWNS | CLONE_NEWUSER) != 0) return CannotBeTried;
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return CannotBeTried;
    if (mount(file_.c_str(), mounted.c_str(), nullptr, MS_BIND, nullptr) != 0) return CannotBeTried;
    return Set("mounted.ini", "22");
  });
  if (kind == CannotBeTried) GTEST_SKIP() << "the system lets nothing be mounted here";
  EXPECT_EQ(kind, static_cast<int>(Kind::None));
  EXPECT_EQ(Bytes(), "[S]\nk=22\nj=0\n");
  EXPECT_EQ(folder_.Names(), (std::set<std::string>{"data", "mounted.ini"}));
}

TEST_F(BarredFileTest, AFileThatWasChangedAfterAWriteWasCutOffIsShownAndNotTouched) {
  const std::string kept = "helmsway kept bytes 1\n12 13\n" + file_ + "\n[S]\nk=1\nj=0\n[S]\nk=22\nj=0\n";
  folder_.Write("data/.file.ini.kept", kept);
  folder_.Write("data/file.ini", "[S]\nk=2another");
  const FileProblem problem = SetIniValue(file_, "S", "k", "7");
  EXPECT_EQ(problem.kind, Kind::Interrupted);
  EXPECT_NE(problem.sentence.find(".file.ini.kept"), std::string::npos) << problem.sentence;
  EXPECT_EQ(WriteObstacle(file_).kind, Kind::Interrupted);
  EXPECT_EQ(Bytes(), "[S]\nk=2another");
  // A mixture of the two is one that was cut off.
  folder_.Write("data/file.ini", "[S]\nk=2\nj=0\n");
  EXPECT_FALSE(WriteObstacle(file_));
  EXPECT_EQ(Set("data/file.ini", "7"), static_cast<int>(Kind::None));
  EXPECT_EQ(Bytes(), "[S]\nk=7\nj=0\n");
  EXPECT_FALSE(fs::exists(folder_.PathOf("data/.file.ini.kept")));
}

TEST_F(BarredFileTest, InAStickyFolderAnotherUserCanForgeNoWriteThatWasCutOff) {
  if (geteuid() != 0) GTEST_SKIP() << "it takes a second user";
  constexpr uid_t attacker = OtherUser - 1;
  const std::string forged = "helmsway kept bytes 1\n12 12\n" + file_ + "\n[S]\nk=1\nj=9\n[T]\nk=1\nj=0\n";
  const std::string kept = folder_.Write("data/.file.ini.kept", forged);
  ASSERT_EQ(chown(kept.c_str(), attacker, attacker), 0);
  ASSERT_EQ(chown(file_.c_str(), OtherUser, OtherUser), 0);
  SetModes(01777, 0644);
  for (const char* value : {"7", "8"}) {
    EXPECT_EQ(AsPlainUser([&] { return WriteObstacle(file_) ? 100 : Set("data/file.ini", value); }), 0);
    EXPECT_EQ(Bytes(), std::string("[S]\nk=") + value + "\nj=0\n");
  }
  // Where a write in place finds the place beside it taken, it keeps the bytes elsewhere.
  const int held = open(file_.c_str(), O_WRONLY | O_CLOEXEC);
  EXPECT_EQ(AsPlainUser([&] { return Set("data/file.ini", "9"); }), 0);
  close(held);
  EXPECT_EQ(Bytes(), "[S]\nk=9\nj=0\n");
  EXPECT_EQ(folder_.Read("data/.file.ini.kept"), forged);
}

TEST_F(BarredFileTest, AWriteThatAnotherUserHasToUndoIsNotTakenForWhole) {
  if (geteuid() != 0) GTEST_SKIP() << "it takes a second user";
  SetModes(0777, 0666);
  folder_.Write("data/file.ini", "[S]\nk=2\nj=0\n");
  const std::string kept =
      folder_.Write("data/.file.ini.kept", "helmsway kept bytes 1\n12 13\nx\n[S]\nk=1\nj=0\n[S]\nk=22\nj=0\n");
  ASSERT_EQ(chmod(kept.c_str(), 0600), 0);
  const auto kinds = [&] {
    return WriteObstacle(file_).kind == Kind::Interrupted ? Set("data/file.ini", "7") : CannotBeTried;
  };
  EXPECT_EQ(AsPlainUser(kinds), static_cast<int>(Kind::Interrupted));
  EXPECT_EQ(Bytes(), "[S]\nk=2\nj=0\n");
  // What we keep can be read by all who may read the file. This writer is cut off in the middle of keeping.
  fs::remove(kept);
  const int held = open(file_.c_str(), O_WRONLY | O_CLOEXEC);
  EXPECT_EQ(InAProcess([&] {
              const rlimit least{1, 1};
              setrlimit(RLIMIT_FSIZE, &least);
              return Set("data/file.ini", "7");
            }),
            -1);
  close(held);
  EXPECT_EQ(fs::status(kept).permissions(), static_cast<fs::perms>(0666));
  EXPECT_EQ(AsPlainUser([&] { return Set("data/file.ini", "7"); }), 0);
  EXPECT_EQ(Bytes(), "[S]\nk=7\nj=0\n");
}

}  // namespace
}  // namespace Helmsway
