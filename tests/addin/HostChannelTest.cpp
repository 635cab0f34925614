#include <gtest/gtest.h>

#include <set>
#include <tuple>
#include <vector>

#include "addin/device/HostChannel.h"
#include "tests/support/FakeHost.h"
#include "tests/support/FakeIniService.h"

namespace OrvelCalibrateS::Testing {
namespace {

using Outcome = FakeHost::Outcome;

/// A connection that counts how often its link is fetched, and fails the fetches of given numbers (from 1).
struct CountingConnection final : FakeHost::Object<HelmswayCmds::IParentConnection> {
  using Object::Object;
  Result GetDeviceLink(HelmswayCmds::IDeviceLink** link) noexcept override {
    if (Failing.contains(++Fetches)) return Result::Failed;
    *link = new FakeHost::DeviceLink(Host);
    return Result::Ok;
  }
  int Fetches = 0;
  std::set<int> Failing;
};

/// A link that violates the contract: it fails after writing out values, or hands out nothing and returns Ok.
struct LyingConnection final : FakeHost::Object<HelmswayCmds::IParentConnection> {
  struct Link final : FakeHost::Object<HelmswayCmds::IDeviceLink> {
    using Object::Object;
    Result SendCommand(HelmswayCmds::Text, HelmswayCmds::ITextTarget& reply, std::int32_t,
                       Boolean* ok) noexcept override {
      *ok = HelmswayCmds::True;
      reply.Assign(AsText("SLIDER CLOSED"));
      return Result::Failed;
    }
    Result GetStopRequested(Boolean* value) noexcept override {
      *value = HelmswayCmds::True;
      return Result::Failed;
    }
    Result PutStopRequested(Boolean) noexcept override { return Result::Ok; }
    Result PutAddInActive(Boolean) noexcept override { return Result::Ok; }
  };

  using Object::Object;
  Result GetDeviceLink(HelmswayCmds::IDeviceLink** link) noexcept override {
    *link = HandsOutNothing ? nullptr : new Link(Host);
    return Result::Ok;
  }
  bool HandsOutNothing = false;
};

struct Channel {
  FakeFiles Files;
  FakeHost Host;
  CountingConnection* Connection = new CountingConnection(Host);
  SendState Sending;
  HostChannel Tested{Files.Files, Sending};

  explicit Channel(std::set<int> failingFetches = {}) {
    Connection->Failing = std::move(failingFetches);
    Tested.ParentConnection = Adopt<HelmswayCmds::IParentConnection>(Connection);
  }
};

TEST(SendDeviceCommand, ClearsTheStopThenMarksTheAddInActiveThenSends) {
  using Row = std::tuple<Outcome, bool, const char*>;
  for (const auto& [outcome, result, expected] :
       {Row{Outcome::Ok, true, "SLIDER OPEN"}, Row{Outcome::Refused, false, ""}, Row{Outcome::Failed, false, ""}}) {
    Channel channel;
    channel.Host.StopRequested = true;
    channel.Host.Replies["STATUS SLIDER"] = "SLIDER OPEN";
    channel.Host.Outcomes["STATUS SLIDER"] = outcome;
    std::string reply = "an earlier reply";
    EXPECT_EQ(channel.Tested.SendDeviceCommand("STATUS SLIDER", reply), result);
    EXPECT_EQ(reply, expected);
    EXPECT_EQ(channel.Host.Log, (Lines{"stop False", "active True", "send STATUS SLIDER", "sent STATUS SLIDER"}));
    EXPECT_EQ(channel.Connection->Fetches, 3) << "the link is fetched anew for each use";
  }
}

TEST(SendDeviceCommand, AStepThatFailsCostsThatStepOnly) {
  using Row = std::tuple<const char*, std::set<int>, bool, Lines>;
  const std::vector<Row> rows = {
      {"the Stop can't be cleared", {1}, true, {"active True", "send REV", "sent REV"}},
      {"the mark can't be set", {2}, true, {"stop False", "send REV", "sent REV"}},
      {"the line can't be sent", {3}, false, {"stop False", "active True"}},
      {"the link is down", {1, 2, 3}, false, {}},
  };
  for (const auto& [name, failingFetches, result, log] : rows) {
    SCOPED_TRACE(name);
    Channel channel(failingFetches);
    EXPECT_EQ(channel.Tested.SendDeviceCommand("REV"), result);
    EXPECT_EQ(channel.Host.Log, log);
  }
}

TEST(SendDeviceCommand, WhatAFailingCallHasWrittenDoesNotCount) {
  for (const bool handsOutNothing : {false, true}) {
    Channel channel;
    auto* const connection = new LyingConnection(channel.Host);
    connection->HandsOutNothing = handsOutNothing;
    channel.Tested.ParentConnection = Adopt<HelmswayCmds::IParentConnection>(connection);
    std::string reply = "an earlier reply";
    EXPECT_FALSE(channel.Tested.SendDeviceCommand("STATUS SLIDER", reply));
    EXPECT_EQ(reply, "");
    EXPECT_THROW(channel.Tested.StopRequested(), StepFailed);
    EXPECT_FALSE(channel.Tested.RunCommandText("A\r\nB\r\n", FailureMode::Skip)) << "no Stop has been read";
  }
}

TEST(RunCommandText, SendsUntilARefusalAndSkipsBehindAStop) {
  // "before" means that the Stop is set when the run begins.
  using Row = std::tuple<const char*, const char*, const char*, const char*, Lines, bool>;
  const std::vector<Row> rows = {
      {"one line without a line end", "A", "", "", {"A"}, true},
      {"an empty line within is sent", "A\r\n\r\nB\r\n", "", "", {"A", "", "B"}, true},
      {"a Stop before the first line skips all", "A\r\nB\r\n", "before", "", {}, true},
      {"a Stop during the first line", "A\r\nB\r\nC\r\n", "A", "", {"A"}, true},
      {"a Stop during a middle line", "A\r\nB\r\nC\r\n", "B", "", {"A", "B"}, true},
      {"a refusal ends the run", "A\r\nB\r\nC\r\n", "", "B", {"A", "B"}, false},
      {"a refusal wins over a Stop during the same line", "A\r\nB\r\nC\r\n", "A", "A", {"A"}, false},
      {"a Stop wins over the refusal of a line behind it", "A\r\nB\r\nC\r\n", "A", "B", {"A"}, true},
  };
  for (const FailureMode mode : {FailureMode::Skip, FailureMode::PassUp}) {
    for (const auto& [name, text, stopDuring, refused, sent, result] : rows) {
      SCOPED_TRACE(name);
      Channel channel;
      channel.Host.StopRequested = std::string(stopDuring) == "before";
      channel.Host.Meanwhile[stopDuring] = [&] { channel.Tested.WriteStopRequested(true); };
      channel.Host.Outcomes[refused] = *refused == '\0' ? Outcome::Ok : Outcome::Refused;
      if (*stopDuring == '\0') channel.Host.Meanwhile.clear();
      EXPECT_EQ(channel.Tested.RunCommandText(text, mode), result);
      EXPECT_EQ(channel.Host.Sent(), sent);
    }
  }
}

TEST(RunCommandText, AFailingStepEndsItInPassUpModeAndIsPassedOverInSkipMode) {
  Channel passUp({1});  // the first fetch is the first read of the Stop
  EXPECT_THROW(passUp.Tested.RunCommandText("A\r\nB\r\n", FailureMode::PassUp), StepFailed);
  EXPECT_EQ(passUp.Host.Sent(), Lines{});
  Channel skip({1});
  EXPECT_TRUE(skip.Tested.RunCommandText("A\r\nB\r\n", FailureMode::Skip));
  EXPECT_EQ(skip.Host.Sent(), (Lines{"A", "B"})) << "a Stop that can't be read counts as none";
  Channel unsplit;
  unsplit.Files.Service->SplitsFail = true;
  EXPECT_THROW(unsplit.Tested.RunCommandText("A\r\n", FailureMode::PassUp), StepFailed);
  EXPECT_TRUE(unsplit.Tested.RunCommandText("A\r\n", FailureMode::Skip));
  EXPECT_EQ(unsplit.Host.Sent(), Lines{});
}

TEST(RunCommandText, AStopThatHasBeenReadHoldsWhereTheNextReadFails) {
  // Fetches 1 to 4 belong to the first line, 5 is the read that finds the Stop, 6 and 7 fail. So does 8, the first of
  // the next run.
  Channel channel({6, 7, 8});
  channel.Host.Meanwhile["A"] = [&] { channel.Host.StopRequested = true; };
  bool stopRequested = false;
  EXPECT_TRUE(channel.Tested.RunCommandText("A\r\nB\r\nC\r\nD\r\n", FailureMode::Skip, stopRequested));
  EXPECT_EQ(channel.Host.Sent(), Lines{"A"});
  EXPECT_TRUE(stopRequested);
  EXPECT_TRUE(channel.Host.StopRequested) << "no send has taken the Stop back";
  EXPECT_TRUE(channel.Tested.RunCommandText("E\r\n", FailureMode::Skip, stopRequested));
  EXPECT_EQ(channel.Host.Sent(), (Lines{"A", "E"})) << "the next run starts without";
  EXPECT_FALSE(stopRequested);
}

TEST(RunCommandText, ACountBeyondThePiecesIsAFailedStepForEachMissingLine) {
  for (const std::int32_t excess : {1, 2, 2'000'000'000}) {
    Channel skip;
    skip.Files.Service->ExcessCount = excess;
    EXPECT_TRUE(skip.Tested.RunCommandText("A\r\nB", FailureMode::Skip));
    EXPECT_EQ(skip.Host.Sent(), (Lines{"A", "B"}));
    Channel passUp;
    passUp.Files.Service->ExcessCount = excess;
    EXPECT_THROW(passUp.Tested.RunCommandText("A\r\nB", FailureMode::PassUp), StepFailed);
    EXPECT_EQ(passUp.Host.Sent(), (Lines{"A", "B"}));
    Channel stopped;
    stopped.Files.Service->ExcessCount = excess;
    stopped.Host.StopRequested = true;
    EXPECT_TRUE(stopped.Tested.RunCommandText("A\r\nB", FailureMode::PassUp)) << "a skipped line isn't missed";
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
  HostChannel ofTheNextForm{channel.Files.Files, channel.Sending};
  channel.Host.Meanwhile["OUTER"] = [&] { EXPECT_TRUE(ofTheNextForm.LineUnderWay()); };
  channel.Tested.SendDeviceCommand("OUTER");
}

}  // namespace
}  // namespace OrvelCalibrateS::Testing
