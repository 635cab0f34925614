#include <gtest/gtest.h>

#include <QProcess>
#include <QTest>
#include <csignal>
#include <filesystem>

#include "bench/desktop/InstallationLock.h"
#include "tests/host/TemporaryFolder.h"

namespace Helmsway {
namespace {

namespace fs = std::filesystem;

/// The program itself, without a display unless a test gives it one.
class Bench : public testing::Test {
 protected:
  Bench() {
    fs::copy(HELMSWAY_EXAMPLES "/installation", folder.PathOf("installation"));
    environment.insert(QStringLiteral("PATH"), qEnvironmentVariable("PATH"));
    environment.insert(QStringLiteral("TMPDIR"), QString::fromStdString(fs::temp_directory_path().string()));
    Set("HOME", folder.PathOf(""));
  }
  ~Bench() override {
    program.kill();
    program.waitForFinished();
  }

  void Set(const char* name, const std::string& value) {
    environment.insert(QString::fromLatin1(name), QString::fromStdString(value));
  }

  void Begin(const QStringList& arguments) {
    program.setProcessEnvironment(environment);
    const fs::path beside = fs::read_symlink("/proc/self/exe").parent_path() / "helmsway-bench";
    program.start(QString::fromStdString(beside.string()), arguments);
    ASSERT_TRUE(program.waitForStarted());
  }

  /// Exit status and standard error of a run that ends by itself; -1 for one that doesn't, or is killed by a signal.
  int Run(const QStringList& arguments) {
    Begin(arguments);
    const bool ended = program.waitForFinished(20000) && program.exitStatus() == QProcess::NormalExit;
    output = program.readAllStandardOutput().toStdString();
    complaints = program.readAllStandardError().toStdString();
    return ended ? program.exitCode() : -1;
  }

  bool Complains(const char* words) {
    return QTest::qWaitFor(
        [&] {
          complaints += program.readAllStandardError().toStdString();
          return complaints.find(words) != std::string::npos;
        },
        10000);
  }

  QStringList On(const std::string& name) {
    return {QStringLiteral("--installation"), QString::fromStdString(folder.PathOf(name))};
  }

  const TemporaryFolder folder;
  QProcessEnvironment environment;
  QProcess program;
  std::string output;
  std::string complaints;
};

TEST_F(Bench, GivesHelpAndVersionWithoutADisplay) {
  EXPECT_EQ(Run({QStringLiteral("--help")}), 0);
  EXPECT_NE(output.find("--installation"), std::string::npos);
  EXPECT_EQ(Run({QStringLiteral("--version")}), 0);
  EXPECT_TRUE(output.starts_with("helmsway-bench "));
  EXPECT_EQ(Run({QStringLiteral("--help"), QStringLiteral("--nonsense")}), 1);
}

TEST_F(Bench, SaysWhenThereIsNoDisplay) {
  EXPECT_EQ(Run({}), 1);
  EXPECT_TRUE(complaints.starts_with("helmsway-bench: there is no display to open a window on")) << complaints;
  Set("DISPLAY", "nowhere:77");
  EXPECT_EQ(Run({}), 1);
  EXPECT_NE(complaints.find("the display can't be reached: DISPLAY=nowhere:77"), std::string::npos) << complaints;
}

TEST_F(Bench, SaysInAWindowAndOnStandardErrorWhatKeepsItFromBeginning) {
  Set("QT_QPA_PLATFORM", "offscreen");
  struct Row {
    const char* home;
    QStringList arguments;
    const char* words;
  };
  folder.Write("file", "");
  const Row rows[] = {
      {nullptr, On("none"), "There is no folder"},
      {nullptr, On("file"), "is not a folder."},
      {"", {}, "The bench has no place for an installation of its own: "},
      {"/proc/none", {}, "The bench has no place for an installation of its own: "},
      {nullptr, On("installation") + QStringList{QStringLiteral("--addin"), QStringLiteral("/none")}, "/none"},
  };
  for (const Row& row : rows) {
    complaints.clear();
    Set("HOME", row.home == nullptr ? folder.PathOf("") : std::string(row.home));
    Begin(row.arguments);
    EXPECT_TRUE(Complains(row.words)) << row.words << ": " << complaints;
    // The message box waits for the operator.
    EXPECT_FALSE(program.waitForFinished(100));
    program.kill();
    program.waitForFinished();
  }
}

TEST_F(Bench, WarnsOfAnInstallationThatGivesNothingToCalibrate) {
  Set("QT_QPA_PLATFORM", "offscreen");
  fs::create_directory(folder.PathOf("empty"));
  Begin(On("empty"));
  EXPECT_TRUE(Complains("Marivane.ini is missing; a save will find nothing to calibrate")) << complaints;
}

TEST_F(Bench, HoldsItsInstallationUntilItDies) {
  Set("QT_QPA_PLATFORM", "offscreen");
  const fs::path installation = folder.PathOf("installation");
  Begin(On("installation"));
  const std::string process = "helmsway-bench, process " + std::to_string(program.processId()) + " of ";
  EXPECT_TRUE(QTest::qWaitFor([&] { return InstallationLock(installation).Holder().starts_with(process); }, 10000));
  program.kill();
  program.waitForFinished();
  EXPECT_TRUE(fs::exists(installation / ".helmsway-bench.lock"));
  EXPECT_EQ(InstallationLock(installation).Holder(), "");
}

}  // namespace
}  // namespace Helmsway
