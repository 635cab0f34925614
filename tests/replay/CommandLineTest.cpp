#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "bench/replay/CommandLine.h"

namespace Helmsway {
namespace {

struct Parsed {
  std::optional<ReplayOptions> options;
  ExitStatus status = ExitStatus::Performed;
  std::string out;
  std::string err;
};

Parsed Parse(std::vector<const char*> arguments) {
  arguments.insert(arguments.begin(), "helmsway-replay");
  std::ostringstream out;
  std::ostringstream err;
  Parsed parsed;
  parsed.options =
      ParseCommandLine(static_cast<int>(arguments.size()), arguments.data(), "/opt/bin", out, err, parsed.status);
  parsed.out = out.str();
  parsed.err = err.str();
  return parsed;
}

TEST(CommandLine, TheScriptAloneIsEnough) {
  const Parsed parsed = Parse({"-"});
  ASSERT_TRUE(parsed.options);
  EXPECT_EQ(parsed.options->script, "-");
  EXPECT_EQ(parsed.options->configuration, "/opt/share/helmsway/examples/installation");
  EXPECT_EQ(parsed.options->addIn, "/opt/bin/libOrvelCalibrateS.so");
  EXPECT_EQ(parsed.options->workOn, WorkOn::Copies);
  EXPECT_EQ(parsed.options->instrument, InstrumentKind::Simulated);
  EXPECT_EQ(parsed.options->format, OutputFormat::JsonLines);
  EXPECT_FALSE(parsed.options->trace);
}

TEST(CommandLine, EachOptionCountsBeforeAndBehindTheScript) {
  const Parsed parsed = Parse({"--config", "there", "--in-place", "--instrument", "accepting", "a.replay", "--trace",
                               "t.jsonl", "--format", "text", "--addin", "x.so"});
  ASSERT_TRUE(parsed.options);
  EXPECT_EQ(parsed.options->script, "a.replay");
  EXPECT_EQ(parsed.options->configuration, "there");
  EXPECT_EQ(parsed.options->addIn, "x.so");
  EXPECT_EQ(parsed.options->workOn, WorkOn::Files);
  EXPECT_EQ(parsed.options->instrument, InstrumentKind::Accepting);
  EXPECT_EQ(parsed.options->format, OutputFormat::Text);
  EXPECT_EQ(parsed.options->trace, "t.jsonl");
}

TEST(CommandLine, ABadOneIsToldAndEndsWithOne) {
  const std::vector<std::vector<const char*>> rows = {
      {},
      {"a", "b"},
      {"--wrong", "a"},
      {"--config"},
      {"--instrument", "real", "a"},
      {"--instrument", "Accepting", "a"},
      {"--format", "xml", "a"},
  };
  for (const auto& arguments : rows) {
    SCOPED_TRACE(arguments.empty() ? "no argument" : arguments.front());
    const Parsed parsed = Parse(arguments);
    EXPECT_FALSE(parsed.options);
    EXPECT_EQ(parsed.status, ExitStatus::Failed);
    EXPECT_EQ(parsed.out, "");
    EXPECT_NE(parsed.err, "");
  }
}

TEST(CommandLine, HelpIsNoFailure) {
  const Parsed parsed = Parse({"--help"});
  EXPECT_FALSE(parsed.options);
  EXPECT_EQ(parsed.status, ExitStatus::Performed);
  for (const char* option : {"--config", "--in-place", "--instrument", "--trace", "--format", "--addin", "SCRIPT"}) {
    EXPECT_NE(parsed.out.find(option), std::string::npos) << option;
  }
}

}  // namespace
}  // namespace Helmsway
