#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>

#include "bench/host/PrintableText.h"
#include "bench/replay/JsonText.h"
#include "bench/replay/Script.h"
#include "bench/replay/SessionRecord.h"
#include "tests/host/TemporaryFolder.h"
#include "tests/replay/ReplayRun.h"

// Texts of scripts and files may hold anything.
namespace Helmsway {
namespace {

using Json = nlohmann::ordered_json;

/// The bytes of a text that a trace shows as this JSON.
std::string BytesOf(std::string json) {
  std::string bytes;
  for (std::size_t at = json.find("\\udc"); at != std::string::npos; at = json.find("\\udc")) {
    bytes += Json::parse(json.substr(0, at) + '"').get<std::string>();
    bytes += static_cast<char>(std::stoi(json.substr(at + 4, 2), nullptr, 16));
    json = '"' + json.substr(at + 6);
  }
  return bytes + Json::parse(json).get<std::string>();
}

TEST(HostileText, ATraceHasUtf8AsItIsAndEachOtherByteAsAnEscape) {
  // Of ASCII, of several languages, at the ends of the ranges of UTF-8.
  const std::string valid =
      "a\"\\\x01\t\xC2\xA0\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBD\xEF\xBF\xBF"
      "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF\\udc80";
  EXPECT_EQ(JsonText(valid), Json(valid).dump());
  const Json nested = {{"a", {1, -2.5, true, nullptr, {{"b", Json::array()}, {"c", Json::object()}}}}, {"d", valid}};
  EXPECT_EQ(JsonText(nested), nested.dump());
  EXPECT_EQ(JsonText({nested, "\xFF"}), "[" + nested.dump() + R"(,"\udcff"])");

  // What a terminal obeys is an escape that means the same.
  EXPECT_EQ(JsonText("\x7F\xC2\x80\xC2\x9F\xC2\xA0"), "\"\\u007f\\u0080\\u009f\xC2\xA0\"");
  EXPECT_EQ(Json::parse(JsonText("\x7F\xC2\x9B")), "\x7F\xC2\x9B");

  const std::pair<std::string, const char*> rows[] = {
      {"M\xFCller \x80", R"("M\udcfcller \udc80")"},
      {"\xC3", R"("\udcc3")"},
      {"\xC3(", R"("\udcc3(")"},
      {"\xC0\xAF", R"("\udcc0\udcaf")"},            // a longer form of "/"
      {"\xED\xB2\x80", R"("\udced\udcb2\udc80")"},  // U+DC80 itself
      {"\xE2\x82\xE2\x82\xAC", "\"\\udce2\\udc82\xE2\x82\xAC\""},
      {"\xF4\x90\x80\x80\xFE", R"("\udcf4\udc90\udc80\udc80\udcfe")"},
  };
  for (const auto& [bytes, json] : rows) {
    EXPECT_EQ(JsonText(bytes), json);
    EXPECT_EQ(BytesOf(JsonText(bytes)), bytes);
    EXPECT_EQ(JsonText(Json{{bytes, 1}}), "{" + std::string(json) + ":1}");
  }
}

TEST(HostileText, BytesThatAreNotUtf8PassThroughARunAndARecord) {
  const TemporaryFolder configuration;
  ReplayOptions options = OptionsFor(configuration.PathOf(""));
  options.workOn = WorkOn::Files;
  const std::string before = "[DeviceType]\r\nName=M\xFCller\r\n";
  configuration.Write("Marivane.ini", before);
  const std::string script = "file set \"\xC4 b\" \xFC \"\xE4\xE2\x82\xAC\xFF\"\nanswer ok\nhost SaveChanges\n";
  const ReplayRun run = RunScript(options, script);
  EXPECT_EQ(run.status, ExitStatus::Performed) << run.complaints;
  EXPECT_NE(run.output.find("\"text\":\"file set \\\"\\udcc4 b\\\" \\udcfc \\\"\\udce4\xE2\x82\xAC\\udcff\\\"\"}\n"),
            std::string::npos)
      << run.output;
  EXPECT_EQ(configuration.Read("Marivane.ini"),
            before + "AxisCalibratedS=1\r\n[\xC4 b]\r\n\xFC=\xE4\xE2\x82\xAC\xFF\r\n");

  SessionRecord record;
  for (const Action& action : ParseScript("host create\nfile remove A \xFC\r\r\n" + script).actions) {
    record.Performing(action, nullptr);
  }
  std::ostringstream written;
  record.WriteScript(written, "");
  EXPECT_EQ(written.str(), "host create\nfile remove A \xFC\r\r\n" + script);
}

TEST(HostileText, WhatATerminalWouldObeyIsShown) {
  const std::pair<const char*, const char*> rows[] = {
      {"plain \\ \xC3\xA4\xE2\x82\xAC\xF0\x9F\x94\xA7", "plain \\ \xC3\xA4\xE2\x82\xAC\xF0\x9F\x94\xA7"},
      {"\x1B[31m\a\b\x7F", R"(\x1b[31m\x07\x08\x7f)"},
      {"\t\r\n", R"(\t\r\n)"},
      {"\xC2\x9B[2J", "\\u{9b}[2J"},
      {"\xE2\x80\xAEtxt", "\\u{202e}txt"},  // NOLINT(misc-misleading-bidirectional)
      {"\xFC\x9B", "\\xfc\\x9b"},
  };
  for (const auto& [text, shown] : rows) EXPECT_EQ(Printable(text), shown);
  EXPECT_EQ(Shortened("abc\xC3\xA4xyz", 4), "abc ... (5 more bytes)");
  EXPECT_EQ(Shortened("abc", 3), "abc");

  const TemporaryFolder configuration;
  ReplayOptions options = OptionsFor(configuration.PathOf(""));
  options.format = OutputFormat::Text;
  const ReplayRun run = RunScript(options, "file set \x1B[2J \x9B \xC3\xA4\ninstrument reply REV \a\nclick 10\n");
  for (const char* shown :
       {"file set \\x1b[2J \\x9b \xC3\xA4\n", "reply \"\\x07\"\n", "\n+[\\x1b[2J]\n+\\x9b=\xC3\xA4\n"}) {
    EXPECT_NE(run.output.find(shown), std::string::npos) << run.output;
  }
  EXPECT_EQ(run.output.find_first_of("\x1B\a\x9B"), std::string::npos);
  options.format = OutputFormat::JsonLines;
  const std::string trace = RunScript(options,
                                      "file set \x7F"
                                      "a \xC2\x9B"
                                      "2J \xC2\xA0\xC3\x9B\n")
                                .output;
  EXPECT_NE(trace.find("file set \\u007fa \\u009b2J \xC2\xA0\xC3\x9B\"}"), std::string::npos) << trace;
  EXPECT_EQ(RunScript(options, "\x1B[2J\n").complaints, "-:1: unknown action: \\x1b[2J\n");
}

TEST(HostileText, ErrorsAreFewAndShort) {
  const TemporaryFolder configuration;
  std::string script = "press " + std::string(100'000, 'x') + "\n";
  for (int line = 0; line < 1300; ++line) script += line % 2 == 0 ? "press\n" : "instrument show\n";
  const std::string complaints = RunScript(OptionsFor(configuration.PathOf("")), script).complaints;
  EXPECT_TRUE(complaints.starts_with("-:1: unknown action: press xxx")) << complaints;
  EXPECT_TRUE(complaints.ends_with("\n-:20: unknown action: press\n-: ... and 1,281 errors more\n") ||
              complaints.ends_with("\n-:20: this needs the simulated instrument: instrument show\n"
                                   "-: ... and 1,281 errors more\n"))
      << complaints;
  EXPECT_LT(complaints.size(), 2000U);
}

TEST(HostileText, TheAccountSaysWhyNothingIsFoundInTheConfiguration) {
  const TemporaryFolder configuration;
  ReplayOptions options = OptionsFor(configuration.PathOf(""));
  options.format = OutputFormat::Text;
  const auto beginning = [&] {
    const std::string output = RunScript(options, "show\n").output;
    return output.substr(0, output.find('\n'));
  };
  EXPECT_EQ(beginning(), "Marivane.ini is missing: every value is a default.");
  const std::pair<std::string, const char*> rows[] = {
      {"", "Marivane.ini is empty: every value is a default."},
      {"\x01\xFFnoise", "Marivane.ini has no sections: every value is a default."},
      {std::string("[\0A\0]\0", 6),
       "Marivane.ini is UTF-16 and can't be understood: every value is a default. Save it as 8-bit text."},
      {"[A]", "host create"},
  };
  for (const auto& [bytes, first] : rows) {
    configuration.Write("Marivane.ini", bytes);
    EXPECT_EQ(beginning(), first);
  }
}

}  // namespace
}  // namespace Helmsway
