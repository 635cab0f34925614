#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "tests/host/TemporaryFolder.h"
#include "tests/replay/ReplayRun.h"

namespace Helmsway {
namespace {

namespace fs = std::filesystem;

const fs::path examples = HELMSWAY_EXAMPLES;

std::vector<nlohmann::json> Events(const std::string& trace) {
  std::vector<nlohmann::json> events;
  std::istringstream lines(trace);
  for (std::string line; std::getline(lines, line);) events.push_back(nlohmann::json::parse(line));
  return events;
}

std::vector<std::string> LinesOf(const std::string& bytes) {
  std::vector<std::string> lines;
  std::istringstream text(bytes);
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

std::string Place(const std::string& line, int place) {
  std::istringstream rest(line);
  std::string text;
  for (int i = 0; i <= place; ++i) std::getline(rest, text, ',');
  return text;
}

/// The shortest way through a calibration, run in place on a copy of the example installation.
class QuickCalibration : public testing::Test {
 protected:
  QuickCalibration() {
    for (const char* name : {"Marivane.ini", "Helmsway.ini"}) {
      fs::copy_file(examples / "installation" / name, folder_.PathOf(name));
    }
    before_ = folder_.Read("Marivane.ini");
    ReplayOptions options = OptionsFor(folder_.PathOf(""));
    options.workOn = WorkOn::Files;
    options.script = (examples / "scripts" / "quick-calibration.replay").string();
    const ReplayRun run = RunScript(options, "");
    EXPECT_EQ(run.status, ExitStatus::Performed) << run.complaints;
    events_ = Events(run.output);
    after_ = folder_.Read("Marivane.ini");
  }

  /// The lines sent to the instrument and the keys written, in order.
  std::vector<std::string> SentAndWritten() const {
    std::vector<std::string> steps;
    for (const auto& event : events_) {
      if (event["event"] == "send") steps.push_back(event["line"]);
      if (event["event"] == "write") {
        steps.push_back("write " + event["section"].get<std::string>() + " " + event["key"].get<std::string>());
      }
    }
    return steps;
  }

  TemporaryFolder folder_;
  std::string before_;
  std::string after_;
  std::vector<nlohmann::json> events_;
};

TEST_F(QuickCalibration, SendsItsLinesInOrderTheFileLeadingTheInstrument) {
  std::vector<std::string> expected{"REV", "write HeadType Installed", "write TipType Installed", "HOME ALL",
                                    // The calibration location.
                                    "STATUS SLIDER", "MOVE X 1180", "MOVE SD_Y -562", "MOVE SD_X 1235", "MOVE Z -16000",
                                    "MOVE S -3097",
                                    // Three presses of 0.1 mm, 4.27 steps each, rounded each time.
                                    "MOVE S -3093", "MOVE S -3089", "MOVE S -3085",
                                    // The verification.
                                    "HOME S", "MOVE S -3085"};
  // The heads concerned: all serial-dilute ones, and the one-channel teach tool (17). 18 is the 96-channel one.
  for (const int item : {3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 19}) {
    expected.push_back("write HeadType Item" + std::to_string(item));
  }
  expected.push_back("write DeviceType AxisCalibratedS");
  // The eject strokes are place 13 of the head lines in steps; the teach tool and the trial head have no volume class.
  const std::map<int, std::vector<std::pair<const char*, const char*>>> strokes{
      {1, {{"12", "-136"}, {"30", "-164"}, {"125", "-197"}, {"300", "-275"}, {"1250", "-400"}}},
      {8, {{"12", "-135"}, {"30", "-166"}, {"125", "-195"}, {"300", "-278"}, {"1250", "-403"}}},
      {12, {{"12", "-137"}, {"30", "-169"}, {"125", "-201"}, {"300", "-281"}}}};
  for (const auto& [channels, classes] : strokes) {
    for (const auto& [volumeClass, stroke] : classes) {
      const std::string head = "_" + std::to_string(channels) + "Ch_" + volumeClass + "_S ";
      expected.push_back("SET_CALIBRATION TipEject" + head + stroke);
      expected.push_back("SET_CALIBRATION AspirateOrigin" + head + "-3034");  // -3085 + 51
    }
  }
  expected.push_back("SET_CALIBRATION SAVE");
  EXPECT_EQ(SentAndWritten(), expected);
}

TEST_F(QuickCalibration, ChangesNothingInTheFileButTheseValues) {
  const std::vector<std::string> before = LinesOf(before_);
  const std::vector<std::string> after = LinesOf(after_);
  ASSERT_EQ(after.size(), before.size());
  std::vector<std::string> changed;
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (before[i] == after[i]) continue;
    const std::string key = after[i].substr(0, after[i].find('='));
    changed.push_back(key);
    EXPECT_EQ(before[i].substr(0, key.size()), key);
    EXPECT_EQ(after[i].back(), '\r');
    if (!key.starts_with("Item")) continue;
    EXPECT_EQ(Place(after[i], 12), "-3034") << after[i];
    EXPECT_EQ(Place(after[i], 10), "-3270") << after[i];  // plus 236 steps of eject offset
  }
  EXPECT_EQ(changed, (std::vector<std::string>{"AxisCalibratedS", "Installed", "Item3", "Item4", "Item5", "Item6",
                                               "Item7", "Item8", "Item9", "Item10", "Item11", "Item12", "Item13",
                                               "Item14", "Item15", "Item16", "Item17", "Item19"}));
}

TEST(ExampleInstallation, TheNestThatTheWizardOffersIsEmptiedForTheTeachTool) {
  ReplayOptions options = OptionsFor(examples / "installation");
  options.instrument = InstrumentKind::Simulated;
  for (const char* device : {"1", "2"}) {
    const ReplayRun run = RunScript(options, std::string("file set DeviceType Installed ") + device +
                                                 "\nclick 10\ncheck chkToolInstalled\nclick 9\nclick 5\n"
                                                 "instrument show\nanswer ok\nclick 14\ninstrument show\n");
    EXPECT_EQ(run.status, ExitStatus::Performed) << run.complaints;
    std::vector<std::string> firstSlot;
    for (const auto& event : Events(run.output)) {
      EXPECT_TRUE(event["event"] != "sent" || event["result"] == "ok") << event.dump();
      if (event["event"] == "instrument") firstSlot.push_back(event["places"]["Nest 1 rear, slot 1"]);
    }
    EXPECT_EQ(firstSlot, (std::vector<std::string>{"1 Channel Short 12.5", "Teach Tool 1 Channel"})) << device;
  }
}

class ExampleScript : public testing::TestWithParam<fs::path> {};

TEST_P(ExampleScript, RunsOnTheSimulatedInstrumentToItsEnd) {
  ReplayOptions options = OptionsFor(examples / "installation");
  options.instrument = InstrumentKind::Simulated;
  options.script = GetParam().string();
  const ReplayRun run = RunScript(options, "");
  ASSERT_EQ(run.status, ExitStatus::Performed) << run.complaints;
  int refused = 0;
  for (const auto& event : Events(run.output)) {
    EXPECT_NE(event["event"], "ignored") << event.dump();
    if (event["event"] == "sent" && event["result"] != "ok") ++refused;
  }
  std::ifstream script(GetParam());
  const std::string text{std::istreambuf_iterator<char>(script), std::istreambuf_iterator<char>()};
  const bool refusalsAreMeant =
      text.find("\ninstrument refuse") != std::string::npos || text.find("\ninstrument fault") != std::string::npos;
  EXPECT_TRUE(refusalsAreMeant || refused == 0) << refused << " lines were refused";
}

std::vector<fs::path> Scripts() {
  std::vector<fs::path> scripts;
  for (const auto& entry : fs::directory_iterator(examples / "scripts")) scripts.push_back(entry.path());
  std::sort(scripts.begin(), scripts.end());
  return scripts;
}

INSTANTIATE_TEST_SUITE_P(Examples, ExampleScript, testing::ValuesIn(Scripts()), [](const auto& script) {
  std::string name = script.param.stem().string();
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
});

}  // namespace
}  // namespace Helmsway
