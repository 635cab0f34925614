#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <thread>
#include <vector>

#include "tests/host/TemporaryFolder.h"
#include "tests/replay/ReplayRun.h"

namespace Helmsway {
namespace {

namespace fs = std::filesystem;

class TraceFileTest : public testing::Test {
 protected:
  TraceFileTest() { fs::create_directory(folder.PathOf("config")); }

  ReplayRun Run(const std::string& trace, const std::string& script = "show\n") {
    options.trace = folder.PathOf(trace);
    return RunScript(options, script);
  }

  TemporaryFolder folder;
  ReplayOptions options = OptionsFor(folder.PathOf("config"));
};

TEST_F(TraceFileTest, IsPutInPlaceWithTheModeAndTheLinkThatItHad) {
  EXPECT_EQ(Run("new").status, ExitStatus::Performed);
  const std::string trace = folder.Read("new");
  EXPECT_EQ(EventsOf(trace).back().kind, "form");
  folder.Write("old", "old");
  fs::permissions(folder.PathOf("old"), fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("old", folder.PathOf("link"));
  fs::create_symlink("made", folder.PathOf("dangling"));
  for (const char* name : {"link", "dangling"}) {
    EXPECT_EQ(Run(name).status, ExitStatus::Performed);
    EXPECT_TRUE(fs::is_symlink(folder.PathOf(name)));
    EXPECT_EQ(folder.Read(name), trace);
  }
  EXPECT_EQ(fs::status(folder.PathOf("old")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(fs::status(folder.PathOf("made")).permissions(), fs::status(folder.PathOf("new")).permissions());
  EXPECT_EQ(folder.Names(), (std::set<std::string>{"config", "dangling", "link", "made", "new", "old"}));
}

TEST_F(TraceFileTest, HoldsTheTraceSoFarWhenTheScriptIsWrongAndIsLeftAloneWhenNothingCouldBePlayed) {
  folder.Write("trace", "old");
  EXPECT_EQ(Run("trace", "host SaveChanges\nshow\n").status, ExitStatus::ScriptError);
  EXPECT_EQ(EventsOf(folder.Read("trace")).back().text, "host SaveChanges");
  EXPECT_EQ(Run("trace", "press\n").status, ExitStatus::ScriptError);
  EXPECT_EQ(folder.Read("trace"), "");
  folder.Write("trace", "old");
  options.addIn = folder.PathOf("none.so");
  EXPECT_EQ(Run("trace").status, ExitStatus::Failed);
  EXPECT_EQ(folder.Read("trace"), "old");
  EXPECT_EQ(folder.Names(), (std::set<std::string>{"config", "trace"}));
}

TEST_F(TraceFileTest, IsNeverWhatTheRunReads) {
  options.script = folder.Write("script", "show\n");
  fs::create_symlink("config", folder.PathOf("config-link"));
  fs::create_symlink("script", folder.PathOf("script-link"));
  fs::create_hard_link(folder.PathOf("script"), folder.PathOf("script-twin"));
  fs::create_symlink("config/Helmsway.ini", folder.PathOf("dangling"));
  folder.Write("config/Marivane.ini", "[A]\n");
  fs::create_hard_link(folder.PathOf("config/Marivane.ini"), folder.PathOf("ini-twin"));
  const auto names = folder.Names();
  for (const char* name :
       {"script", "./config/../script", "script-link", "script-twin", "config/Marivane.ini", "config-link/Marivane.ini",
        "ini-twin", "config/Helmsway.ini", "config-link/./Helmsway.ini", "dangling"}) {
    const ReplayRun run = Run(name);
    EXPECT_EQ(run.status, ExitStatus::Failed) << name;
    EXPECT_NE(run.complaints.find("it is what the run reads"), std::string::npos) << run.complaints;
  }
  EXPECT_EQ(folder.Read("script"), "show\n");
  EXPECT_EQ(folder.Read("config/Marivane.ini"), "[A]\n");
  EXPECT_EQ(folder.Names(), names);
}

TEST_F(TraceFileTest, IsWrittenDirectlyWhereThereIsNoFileToReplace) {
  const std::string pipe = folder.PathOf("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
  std::string received;
  std::thread reader([&] { received = folder.Read("pipe"); });
  EXPECT_EQ(Run("pipe").status, ExitStatus::Performed);
  reader.join();
  EXPECT_EQ(EventsOf(received).back().kind, "form");
  EXPECT_TRUE(fs::is_fifo(pipe));

  options.trace = "/dev/null";
  EXPECT_EQ(RunScript(options, "show\n").status, ExitStatus::Performed);
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_EQ(Run("new/").status, ExitStatus::Failed);
  const ReplayRun run = Run("config");
  EXPECT_NE(run.complaints.find("it is a folder"), std::string::npos) << run.complaints;
}

}  // namespace
}  // namespace Helmsway
