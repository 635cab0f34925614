#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "bench/host/FolderLock.h"
#include "tests/host/TemporaryFolder.h"

// The program itself, as the shell and the terminal see it.
namespace Helmsway {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

/// Far more than any of it takes, for a machine that has a lot else to do.
constexpr milliseconds Patience{20'000};

std::string ProgramFile() { return fs::read_symlink("/proc/self/exe").parent_path() / "helmsway-replay"; }

bool Soon(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + Patience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(milliseconds(5));
  }
  return true;
}

/// The program under way, with pipes as its standard input and output, killed at the latest with this object.
class Running {
 public:
  Running(std::vector<std::string> arguments, const std::string& temporaryFiles, bool ignoreHangUp = false) {
    arguments.insert(arguments.begin(), ProgramFile());
    std::vector<char*> words;
    words.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) words.push_back(argument.data());
    words.push_back(nullptr);
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    if (pipe2(in.data(), O_CLOEXEC) != 0 || pipe2(out.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    toInput_ = in[1];
    FromOutput = out[0];
    process_ = fork();
    if (process_ == 0) {
      dup2(in[0], STDIN_FILENO);
      dup2(out[1], STDOUT_FILENO);
      setenv("TMPDIR", temporaryFiles.c_str(), 1);
      const rlimit noCore{0, 0};  // SIGQUIT asks for one
      setrlimit(RLIMIT_CORE, &noCore);
      std::signal(SIGHUP, ignoreHangUp ? SIG_IGN : SIG_DFL);
      execv(words[0], words.data());
      _exit(127);
    }
    close(in[0]);
    close(out[1]);
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;
  ~Running() {
    EndInput();
    close(FromOutput);
    if (process_ <= 0) return;
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }

  void Signal(int signal) const { kill(process_, signal); }
  void EndInput() {
    if (toInput_ >= 0) close(toInput_);
    toInput_ = -1;
  }
  /// What the program ended with: its exit status, or less than 0 for a signal. -1000 when it doesn't end.
  int Ended() {
    int status = 0;
    if (!Soon([&] { return waitpid(process_, &status, WNOHANG) == process_; })) return -1000;
    process_ = -1;
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
  }
  /// It waits in a system call, as the kernel sees it, and has for a while.
  bool Waits() const {
    for (int look = 0; look < 5; ++look) {
      std::ifstream file("/proc/" + std::to_string(process_) + "/stat");
      const std::string text{std::istreambuf_iterator<char>(file), {}};
      if (text.find(") S ") == std::string::npos) return false;
      std::this_thread::sleep_for(milliseconds(10));
    }
    return true;
  }

  int FromOutput = -1;

 private:
  int toInput_ = -1;
  pid_t process_ = -1;
};

/// Exit status of a shell's command, in which `$program` is the program; what it writes to its output goes to `output`.
int Shell(const std::string& command, std::string& output) {
  setenv("program", ProgramFile().c_str(), 1);
  FILE* const pipe = popen(command.c_str(), "r");
  output.clear();
  for (int character = fgetc(pipe); character != EOF; character = fgetc(pipe)) output += static_cast<char>(character);
  const int status = pclose(pipe);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string LongScript(std::string_view action) {
  std::string script;
  for (int line = 0; line < 500; ++line) script.append(action).append("\n");
  return script;
}

TEST(Program, EndsByASignalWhereverItWaitsAndLeavesNothingBehind) {
  const TemporaryFolder folder;
  const TemporaryFolder temporary;
  const std::string pipe = folder.PathOf("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
  const std::string script = folder.Write("script", LongScript("show"));
  const auto names = folder.Names();
  const std::vector<std::string> rows[] = {
      {"-"},                      // for a script on the standard input
      {pipe},                     // for a script that is a pipe without a writer
      {"--trace", pipe, script},  // for a reader of the trace
      {script},                   // for a reader that has begun and doesn't go on
      {"--help"},                 // not at all
  };
  for (const std::vector<std::string>& arguments : rows) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
      SCOPED_TRACE(arguments.back() + " " + std::to_string(signal));
      Running run(arguments, temporary.PathOf(""));
      if (arguments.back() == "--help") {
        EXPECT_EQ(run.Ended(), 0);
        continue;
      }
      ASSERT_TRUE(Soon([&] { return run.Waits(); }));
      EXPECT_EQ(temporary.Names().size(), arguments.size() == 1 && arguments[0] == script ? 1U : 0U);
      const auto begin = std::chrono::steady_clock::now();
      run.Signal(signal);
      EXPECT_EQ(run.Ended(), -signal);
      EXPECT_LT(std::chrono::steady_clock::now() - begin, Patience / 4);
      EXPECT_EQ(temporary.Names(), std::set<std::string>{});
      EXPECT_EQ(folder.Names(), names);
    }
  }
}

TEST(Program, ASignalLetsTheWriteThatIsUnderWayComeToItsEnd) {
  const TemporaryFolder folder;
  const TemporaryFolder temporary;
  std::string script;
  for (int key = 0; key < 3000; ++key) script += "file set A K" + std::to_string(key) + " 1\n";
  folder.Write("script", script);
  folder.Write("trace", "old");
  // Each round breaks off at another moment.
  for (int round = 0; round < 5; ++round) {
    fs::remove(folder.PathOf("Marivane.ini"));
    Running run(
        {"--in-place", "--config", folder.PathOf(""), "--trace", folder.PathOf("trace"), folder.PathOf("script")},
        temporary.PathOf(""));
    ASSERT_TRUE(Soon([&] { return fs::exists(folder.PathOf("Marivane.ini")); }));
    run.Signal(SIGTERM);
    EXPECT_EQ(run.Ended(), -SIGTERM);
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"Marivane.ini", "script", "trace"}));
    EXPECT_EQ(folder.Read("trace"), "old");
    EXPECT_TRUE(folder.Read("Marivane.ini").ends_with("=1\r\n"));
    EXPECT_EQ(temporary.Names(), std::set<std::string>{});
  }
}

TEST(Program, ASignalEndsTheWaitForAnotherWriter) {
  const TemporaryFolder folder;
  const TemporaryFolder temporary;
  folder.Write("file", "file set A Key 1\n");
  folder.Write("save", "answer ok\nhost SaveChanges\n");
  const FolderLock otherWriter(folder.PathOf(""), std::chrono::milliseconds(0));
  ASSERT_TRUE(otherWriter);
  for (const char* script : {"file", "save"}) {
    Running run({"--in-place", "--config", folder.PathOf(""), folder.PathOf(script)}, temporary.PathOf(""));
    ASSERT_TRUE(Soon([&] { return run.Waits(); }));
    const auto begin = std::chrono::steady_clock::now();
    run.Signal(SIGTERM);
    EXPECT_EQ(run.Ended(), -SIGTERM);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, Patience / 4) << script;
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"file", "save"}));
    EXPECT_EQ(temporary.Names(), std::set<std::string>{});
  }
}

TEST(Program, AHangUpThatIsIgnoredStaysIgnored) {
  const TemporaryFolder temporary;
  Running run({"--trace", "/dev/null", "-"}, temporary.PathOf(""), true);
  ASSERT_TRUE(Soon([&] { return run.Waits(); }));
  run.Signal(SIGHUP);
  run.EndInput();
  EXPECT_EQ(run.Ended(), 0);
}

TEST(Program, OutputThatCantBeWrittenIsAFailureAndGoesNowhereElse) {
  const TemporaryFolder folder;
  const TemporaryFolder temporary;
  folder.Write("script", "show\n");
  folder.Write("wrong", "press\n");
  folder.Write("unanswered", "host SaveChanges\n");
  folder.Write("long", LongScript("show") + "file set A Key 1\n");
  fs::create_directory(folder.PathOf("config"));
  setenv("folder", folder.PathOf("").c_str(), 1);
  setenv("TMPDIR", temporary.PathOf("").c_str(), 1);
  const std::pair<const char*, int> rows[] = {
      {"$program --help", 0},
      {"$program --help >/dev/full", 1},
      {"$program --help >&-", 1},
      {"$program --version >/dev/full", 1},
      {"$program $folder/script >/dev/full", 1},
      {"$program --format text $folder/script >/dev/full", 1},
      {"$program $folder/script >&-", 1},
      {"$program --trace $folder/trace $folder/script >&- 2>&- <&-", 0},
      {"$program --trace /dev/full $folder/script", 1},
      {"$program --trace /dev/stdout $folder/script", 0},
      {"$program - <&-", 1},
      {"$program - <$folder", 1},
      {"$program $folder/wrong", 2},
      {"$program $folder/wrong 2>/dev/full", 1},
      {"$program $folder/wrong 2>&-", 1},
      {"$program --nonsense 2>/dev/full", 1},
      {"$program --trace $folder/so-far - <$folder/unanswered 2>&-", 1},
      {"($program --in-place --config $folder/config $folder/long; echo $? >$folder/status) | head -c 1; exit $(cat "
       "$folder/status)",
       1},
  };
  for (const auto& [command, status] : rows) {
    std::string output;
    // The shell's own errors, and the expected ones, are of no interest.
    EXPECT_EQ(Shell("exec 2>/dev/null; " + std::string(command), output), status) << command;
    EXPECT_EQ(temporary.Names(), std::set<std::string>{}) << command;
  }
  unsetenv("TMPDIR");
  EXPECT_TRUE(fs::is_empty(folder.PathOf("config"))) << "a run that has no reader any more doesn't go on";
  // With no standard output or error, the first file that is opened would take its place.
  EXPECT_TRUE(folder.Read("trace").starts_with("{\"event\":\"action\"")) << folder.Read("trace");
  EXPECT_TRUE(folder.Read("trace").ends_with("}\n"));
  EXPECT_TRUE(folder.Read("so-far").ends_with("}\n")) << folder.Read("so-far");
}

TEST(Program, SaysWhatItIsAndWhyItCantStart) {
  std::string output;
  EXPECT_EQ(Shell("$program --version", output), 0);
  EXPECT_EQ(output, "helmsway-replay " HELMSWAY_VERSION "\n");
  const TemporaryFolder folder;
  setenv("folder", folder.PathOf("").c_str(), 1);
  const std::pair<const char*, const char*> rows[] = {
      {"$program --config $folder/none - </dev/null", "there is no folder $folder/none"},
      {"$program --config /dev/null - </dev/null", "/dev/null isn't a folder"},
      {"$program $folder/none", "the script can't be read: $folder/none: No such file or directory"},
      {"$program $folder", "the script can't be read: $folder is a folder"},
      {"$program --addin $folder/none.so - </dev/null", "there is no add-in library $folder/none.so"},
      {"TMPDIR=$folder/none $program - </dev/null",
       "no folder for the run can be made in $folder/none (TMPDIR names another): No such file or directory"},
      {"$program --locale xx_XX - </dev/null", "the locale xx_XX isn't installed; \"locale -a\" lists those that are"},
      {"$program --locale '' - </dev/null", "a locale needs a name; \"locale -a\" lists those that are installed"},
      {"$program \"$(printf '\\033[31m')\" x", "\\x1b[31m"},
  };
  for (const auto& [command, expected] : rows) {
    const int status = Shell("{ " + std::string(command) + "; } 2>&1", output);
    EXPECT_EQ(status, 1) << command;
    std::string message = expected;
    for (std::size_t at = message.find("$folder"); at != std::string::npos; at = message.find("$folder")) {
      message.replace(at, 7, folder.PathOf(""));
    }
    if (std::string_view(expected).starts_with('\\')) {
      EXPECT_EQ(output.find('\x1B'), std::string::npos) << output;
    } else {
      EXPECT_EQ(output, "helmsway-replay: " + message + "\n");
    }
  }
}

}  // namespace
}  // namespace Helmsway
