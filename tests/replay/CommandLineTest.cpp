#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "bench/host/AddInPlace.h"
#include "bench/replay/CommandLine.h"
#include "tests/host/TemporaryFolder.h"

namespace Helmsway {
namespace {

/// What a command line asks for, in the order of `ReplayOptions`; "ends N" when the program is to end with N at once.
std::string Parsed(std::vector<const char*> arguments, std::ostream& out, std::ostream& err) {
  arguments.insert(arguments.begin(), "helmsway-replay");
  ExitStatus status = ExitStatus::Performed;
  const auto options =
      ParseCommandLine(static_cast<int>(arguments.size()), arguments.data(), "/opt/bin", out, err, status);
  if (!options) return "ends " + std::to_string(static_cast<int>(status));
  return options->configuration.string() + (options->workOn == WorkOn::Files ? " files" : " copies") +
         (options->instrument == InstrumentKind::Accepting ? " accepting " : " simulated ") +
         options->trace.value_or("none").string() + (options->format == OutputFormat::Text ? " text " : " jsonl ") +
         options->addIn.string() + " " + options->script;
}

TEST(CommandLine, SaysWhatARunIsDoneWith) {
  const std::pair<std::vector<const char*>, const char*> rows[] = {
      {{"-"}, "/opt/share/helmsway/examples/installation copies simulated none jsonl /opt/bin/libOrvelCalibrateS.so -"},
      {{"--config", "there", "--in-place", "--instrument", "accepting", "a.replay", "--trace", "t.jsonl", "--format",
        "text", "--addin", "x.so"},
       "there files accepting t.jsonl text x.so a.replay"},
      {{}, "ends 1"},
      {{"a", "b"}, "ends 1"},
      {{"--instrument", "Accepting", "a"}, "ends 1"},
      {{"--help"}, "ends 0"},
  };
  for (const auto& [arguments, expected] : rows) {
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(Parsed(arguments, out, err), expected);
    EXPECT_EQ(err.str().empty(), std::string_view(expected) != "ends 1") << expected;
  }
}

TEST(CommandLine, TheAddInIsBesideTheProgramsAsBuiltAndInALibraryFolderAsInstalled) {
  const TemporaryFolder prefix;
  const auto found = [&] { return AddInOfPrograms(prefix.PathOf("bin")).string(); };
  const std::string built = prefix.PathOf("bin/libOrvelCalibrateS.so");
  const std::string installed = prefix.PathOf("lib/helmsway/libOrvelCalibrateS.so");
  EXPECT_EQ(found(), built) << "the place to name where there is none";
  for (const std::string& file : {installed, built}) {
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    std::ofstream(file).put(' ');
    EXPECT_EQ(found(), file);
  }
}

}  // namespace
}  // namespace Helmsway
