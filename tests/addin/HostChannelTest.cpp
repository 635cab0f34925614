#include <gtest/gtest.h>

#include <set>

#include "addin/device/HostChannel.h"
#include "tests/support/FakeHost.h"
#include "tests/support/FakeIniService.h"

namespace OrvelCalibrateS::Testing {
namespace {

using Outcome = FakeHost::Outcome;
using Lines = std::vector<std::string>;

/// A connection that counts how often its link is fetched, and fails the fetches of given numbers (from 1).
class CountingConnection final : public Implements<HelmswayCmds::IParentConnection> {
 public:
  CountingConnection(FakeHost& host, std::set<int> failing)
      : connection_(host.Make<FakeHost::Connection>()), failing_(std::move(failing)) {}
  HelmswayCmds::Result GetDeviceLink(HelmswayCmds::IDeviceLink** link) noexcept override {
    return failing_.contains(++Fetches) ? HelmswayCmds::Result::Failed : connection_->GetDeviceLink(link);
  }
  int Fetches = 0;

 private:
  Ref<HelmswayCmds::IParentConnection> connection_;
  std::set<int> failing_;
};

struct Channel {
  FakeFiles Files;
  FakeHost Host;
  CountingConnection* Connection = nullptr;
  HostChannel Tested{Files.Files};

  explicit Channel(std::set<int> failingFetches = {}) {
    Connection = new CountingConnection(Host, std::move(failingFetches));
    *Tested.ParentConnection.Out() = Connection;
  }
  Lines Sent() const {
    Lines lines;
    for (const std::string& entry : Host.Log) {
      if (entry.starts_with("send ")) lines.push_back(entry.substr(5));
    }
    return lines;
  }
};

TEST(CommandText, LinesCarryWholeNumbersAndEndInCrLf) {
  using Command::Axis;
  CommandText text;
  EXPECT_EQ(text.Text(), "");
  text += Command::Move(Axis::X, std::int32_t{-2147483648});
  text += Command::Move(Axis::Y, 0.5);
  text += Command::Move(Axis::Z, -2.5);
  text += Command::Move(Axis::SD_X, -0.4);
  text += Command::Move(Axis::SD_Y, 1234567.49);
  text += Command::Move(Axis::S, std::string_view("as it stands"));
  EXPECT_EQ(text.Text(),
            "MOVE X -2147483648\r\nMOVE Y 1\r\nMOVE Z -3\r\nMOVE SD_X 0\r\nMOVE SD_Y 1234567\r\n"
            "MOVE S as it stands\r\n");
}

TEST(SendDeviceCommand, ClearsTheStopThenMarksTheAddInActiveThenSends) {
  struct Row {
    const char* name;
    Outcome outcome;
    bool result;
    const char* reply;
  };
  for (const Row& row : {Row{"a line that goes through gives its reply", Outcome::Ok, true, "SLIDER OPEN"},
                         Row{"a refused line gives no reply", Outcome::Refused, false, ""},
                         Row{"a line that fails outright gives no reply", Outcome::Failed, false, ""}}) {
    SCOPED_TRACE(row.name);
    Channel channel;
    channel.Host.StopRequested = true;
    channel.Host.Replies["STATUS SLIDER"] = "SLIDER OPEN";
    channel.Host.Outcomes["STATUS SLIDER"] = row.outcome;
    std::string reply = "an earlier reply";
    EXPECT_EQ(channel.Tested.SendDeviceCommand("STATUS SLIDER", reply), row.result);
    EXPECT_EQ(reply, row.reply);
    EXPECT_EQ(channel.Host.Log, (Lines{"stop False", "active True", "send STATUS SLIDER", "sent STATUS SLIDER"}));
    EXPECT_EQ(channel.Connection->Fetches, 3) << "the link is fetched anew for each use";
  }
}

TEST(SendDeviceCommand, AStepThatFailsCostsThatStepOnly) {
  struct Row {
    const char* name;
    std::set<int> failingFetches;
    bool result;
    Lines log;
  };
  const std::vector<Row> rows = {
      {"the Stop can't be cleared", {1}, true, {"active True", "send REV", "sent REV"}},
      {"the mark can't be set", {2}, true, {"stop False", "send REV", "sent REV"}},
      {"the line can't be sent", {3}, false, {"stop False", "active True"}},
      {"the link is down", {1, 2, 3}, false, {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Channel channel(row.failingFetches);
    EXPECT_EQ(channel.Tested.SendDeviceCommand("REV"), row.result);
    EXPECT_EQ(channel.Host.Log, row.log);
    EXPECT_EQ(channel.Connection->Fetches, 3);
  }
  Channel unconnected;
  unconnected.Tested.ParentConnection = {};
  EXPECT_FALSE(unconnected.Tested.SendDeviceCommand("REV"));
}

TEST(RunCommandText, SendsUntilARefusalAndSkipsBehindAStop) {
  struct Row {
    const char* name;
    const char* text;
    const char* stopDuring;  ///< "before": the Stop stands when the run begins
    const char* refused;
    Lines sent;
    bool result;
  };
  const std::vector<Row> rows = {
      {"nothing to send", "", "", "", {}, true},
      {"a line end behind the last line makes no empty line", "A\r\nB\r\n", "", "", {"A", "B"}, true},
      {"one line without a line end", "A", "", "", {"A"}, true},
      {"an empty line within is sent", "A\r\n\r\nB\r\n", "", "", {"A", "", "B"}, true},
      {"a Stop before the first line skips all", "A\r\nB\r\n", "before", "", {}, true},
      {"a Stop during the first line", "A\r\nB\r\nC\r\n", "A", "", {"A"}, true},
      {"a Stop during a middle line", "A\r\nB\r\nC\r\n", "B", "", {"A", "B"}, true},
      {"a Stop during the last line has nothing left to skip", "A\r\nB\r\n", "B", "", {"A", "B"}, true},
      {"a refusal ends the run", "A\r\nB\r\nC\r\n", "", "B", {"A", "B"}, false},
      {"a refusal wins over a Stop during the same line", "A\r\nB\r\nC\r\n", "A", "A", {"A"}, false},
      {"a Stop wins over the refusal of a line behind it", "A\r\nB\r\nC\r\n", "A", "B", {"A"}, true},
  };
  for (const FailureMode mode : {FailureMode::Skip, FailureMode::PassUp}) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.name);
      Channel channel;
      channel.Host.StopRequested = std::string(row.stopDuring) == "before";
      channel.Host.Meanwhile[row.stopDuring] = [&] { channel.Tested.WriteStopRequested(true); };
      channel.Host.Outcomes[row.refused] = *row.refused == '\0' ? Outcome::Ok : Outcome::Refused;
      if (*row.stopDuring == '\0') channel.Host.Meanwhile.clear();
      EXPECT_EQ(channel.Tested.RunCommandText(row.text, mode), row.result);
      EXPECT_EQ(channel.Sent(), row.sent);
    }
  }
}

TEST(RunCommandText, AFailingStepEndsItInPassUpModeAndIsPassedOverInSkipMode) {
  {
    Channel channel({1});  // the first fetch is the first look at the Stop
    EXPECT_THROW(channel.Tested.RunCommandText("A\r\nB\r\n", FailureMode::PassUp), StepFailed);
    EXPECT_EQ(channel.Sent(), Lines{});
  }
  {
    Channel channel({1});
    EXPECT_TRUE(channel.Tested.RunCommandText("A\r\nB\r\n", FailureMode::Skip));
    EXPECT_EQ(channel.Sent(), (Lines{"A", "B"})) << "a Stop that can't be read counts as none";
  }
  {
    Channel channel;
    channel.Files.Service->SplitsFail = true;
    EXPECT_THROW(channel.Tested.RunCommandText("A\r\n", FailureMode::PassUp), StepFailed);
    EXPECT_TRUE(channel.Tested.RunCommandText("A\r\n", FailureMode::Skip));
    EXPECT_EQ(channel.Sent(), Lines{});
  }
}

TEST(HostChannel, ALineIsUnderWayOnlyWhileItIsBeingSent) {
  Channel channel;
  std::vector<bool> seen;
  const auto look = [&] { seen.push_back(channel.Tested.LineUnderWay()); };
  channel.Host.Meanwhile["INNER"] = look;
  channel.Host.Meanwhile["OUTER"] = [&] {
    channel.Tested.SendDeviceCommand("INNER");
    look();
  };
  channel.Host.Outcomes["OUTER"] = Outcome::Failed;
  look();
  channel.Tested.SendDeviceCommand("OUTER");
  look();
  EXPECT_EQ(seen, (std::vector<bool>{false, true, true, false}));
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
