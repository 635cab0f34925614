#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "bench/replay/Replay.h"
#include "tests/host/TemporaryFolder.h"
#include "tests/replay/ReplayRun.h"

namespace Helmsway {
namespace {

/// Brings the form to its main page, on which button 5 sends "HOME ALL" and nothing else.
constexpr const char* ToMainPage = "click 10\ncheck chkToolInstalled\nclick 9\n";

/// The trace with one line for each action, and what it gives: kinds of events and their values, in their order.
/// Actions that take place during a line to the instrument stand indented.
std::string Shorten(const std::string& trace) {
  std::string result;
  bool lineUnderWay = false;
  for (const TraceEvent& event : EventsOf(trace)) {
    if (event.kind == "send" || event.kind == "sent") lineUnderWay = event.kind == "send";
    result += (event.kind != "action" ? " | " : lineUnderWay ? "\n  " : "\n") + event.text;
  }
  return result + "\n";
}

class ReplayRules : public testing::Test {
 protected:
  /// What the script's own actions give, behind those of `setUp`.
  std::string Play(const std::string& setUp, const std::string& script) {
    const ReplayRun run = RunScript(options, setUp + "host read ShowButtons\n" + script);
    EXPECT_EQ(run.status, ExitStatus::Performed) << run.complaints;
    const std::string text = Shorten(run.output);
    return text.substr(text.find('\n', text.find("\nhost read ShowButtons") + 1));
  }

  /// Plays what stands at the margin of `expected`, behind the actions of `setUp`.
  void ExpectPlay(const std::string& setUp, const std::string& expected) {
    std::istringstream lines(expected);
    std::string script;
    for (std::string line; std::getline(lines, line);) {
      if (!line.starts_with("  ")) script += line.substr(0, line.find(" |")) + "\n";
    }
    EXPECT_EQ(Play(setUp, script), expected);
  }

  TemporaryFolder configuration;
  ReplayOptions options = OptionsFor(configuration.PathOf(""));
};

TEST_F(ReplayRules, HostAndOperatorCanDoOnlyWhatThereIsAFormAndRoomOnTheScreenFor) {
  ExpectPlay("", R"(
host read Caption | read Caption Calibrate Syringe Axis
host read Frame | read Frame picFrame
host read HelpContextID | read HelpContextID 9014
host read ShowStatusBar | read ShowStatusBar true
click 16 | ignored click 16
click 2 | ignored click 2
pick cboCollectStep 1 | ignored pick cboCollectStep 1
click frame | focus
)");
  ExpectPlay("click 10\n", R"(
check chkToolInstalled
check chkToolInstalled | ignored check chkToolInstalled
check chkStageEmpty | ignored check chkStageEmpty
click 9 | stop false | changed false
pick cboCollectStep 1
pick cboCollectStep 1 | ignored pick cboCollectStep 1
pick cboCollectStep -1 | ignored pick cboCollectStep -1
host FormParent none
click frame
)");
  // Without a form all of host and operator is ignored until the next creation.
  ExpectPlay("", R"(
host ObjectParent none | active false
show | ignored show
host read Caption | ignored host read Caption
host stop | ignored host stop
click frame | ignored click frame
link up
host create
click 10
host create
show | form ["fraWarning"]
host ObjectParent given
host release | active false
click 10 | ignored click 10
)");
}

TEST_F(ReplayRules, WhatWaitsForALineTakesPlaceBetweenItsBeginAndItsEnd) {
  ExpectPlay(ToMainPage, R"(
during HOME click 5
during "HOME ALL" click 16
during MOVE show
during H click frame
during HOME check chkToolInstalled
during HOME host stop
click 5 | stop false | status Home all | status Homing all axes | stop false | active true | send HOME ALL
  click 5 | ignored click 5
  click 16 | stop false | stop true
  click frame | focus
  check chkToolInstalled | ignored check chkToolInstalled
  host stop | sent HOME ALL ok | status
during HOME link down
click 5 | stop false | status Home all | status Homing all axes | stop false | active true | send HOME ALL
  link down | sent HOME ALL ok | status
click 16
click 5 | status Home all | status Homing all axes
show | form ["fraMove","fraTest"] Homing all axes
host ObjectParent none
)");
}

TEST_F(ReplayRules, RefusalsAreSettledAtALinesBeginAndRepliesAtItsEnd) {
  // The actions in front, and how the lines of three presses end.
  const std::pair<const char*, const char*> rows[] = {
      {"instrument refuse HOME 2\ninstrument fail \"HOME A\"\n", "refused|refused|failed|"},
      {"instrument fail \"HOME S\"\ninstrument fail \"\"\n", "failed|ok|ok|"},
      {"during HOME instrument refuse HOME\n", "ok|refused|ok|"},
      {"instrument reply \"HOME ALL\" a\ninstrument reply HOME \"b c\"\n", "ok b c|ok b c|ok b c|"},
      {"instrument reply HOME a\nduring HOME instrument reply \"\" d\n", "ok d|ok d|ok d|"},
  };
  for (const auto& [script, expected] : rows) {
    std::string ends;
    const ReplayRun run = RunScript(options, std::string(ToMainPage) + script + "click 5\nclick 5\nclick 5\n");
    for (const TraceEvent& event : EventsOf(run.output)) {
      if (event.text.starts_with("sent HOME ALL ")) ends += event.text.substr(14) + "|";
    }
    EXPECT_EQ(ends, expected) << script;
  }
}

TEST_F(ReplayRules, FilesFailAndWorkAgain) {
  const std::string saving = "message Save S Axis Positions ok-cancel exclamation ok | status Saving values...";
  EXPECT_EQ(Play("answer ok\nanswer ok\nfile writes fail\nfile set DeviceType Own 1\n",
                 "host SaveChanges\nfile writes work\nhost SaveChanges\n"),
            "\nhost SaveChanges | " + saving + " | status | changed false\nfile writes work\nhost SaveChanges | " +
                saving + " | write DeviceType AxisCalibratedS 1 | status | changed false\n");
  // The catalogue's only head is the teach tool; where the file can't be read, there is none.
  const std::string tool =
      "file set HeadType Item1 \"\\\"Tool\\\",CALIBRATE,0,30,0,1,,,,,,,,,,,1_CH_SHORT\"\nclick 10\n"
      "check chkToolInstalled\n";
  EXPECT_EQ(Play(tool + "file reads fail\n", "click 9\n"), "\nclick 9 | stop false | changed false\n");
  EXPECT_EQ(Play(tool + "file reads fail\nfile reads work\n", "click 9\n"),
            "\nclick 9 | stop false | write HeadType Installed 1 | write TipType Installed 0 | changed false\n");
}

TEST_F(ReplayRules, ABoxWithoutAFittingAnswerEndsTheRun) {
  options.workOn = WorkOn::Files;
  const std::pair<const char*, const char*> rows[] = {
      {"# none\n\nhost SaveChanges\nshow\n", "-:3: no answer is queued for"},
      {"answer ok\nhost SaveChanges\nhost SaveChanges\nshow\n", "-:3: no answer is queued for"},
      {"answer yes\nanswer ok\nhost SaveChanges\nshow\n", "-:3: the answer yes isn't among the buttons of"},
  };
  for (const auto& [script, complaint] : rows) {
    SCOPED_TRACE(script);
    const ReplayRun run = RunScript(options, script);
    EXPECT_EQ(run.status, ExitStatus::ScriptError);
    EXPECT_TRUE(Shorten(run.output).ends_with("\nhost SaveChanges\n")) << run.output;
    EXPECT_EQ(run.complaints, std::string(complaint) + " the message box \"Save S Axis Positions\" (ok-cancel)\n");
  }
}

TEST_F(ReplayRules, CopiesLeaveTheFolderAloneAndInPlaceWorksOnItsFiles) {
  const std::string script = "answer ok\nhost SaveChanges\nfile set DeviceType Own 1\n";
  const std::string before = "[DeviceType]\r\nAxisCalibratedS=0\r\n";
  const std::string target = configuration.Write("target.ini", before);
  std::filesystem::create_symlink(target, configuration.PathOf("Marivane.ini"));
  EXPECT_EQ(RunScript(options, script).status, ExitStatus::Performed);
  EXPECT_EQ(configuration.Read("target.ini"), before);

  options.workOn = WorkOn::Files;
  for (int run = 0; run < 2; ++run) {
    EXPECT_EQ(RunScript(options, script).status, ExitStatus::Performed);
    EXPECT_EQ(configuration.Read("target.ini"), "[DeviceType]\r\nAxisCalibratedS=1\r\nOwn=1\r\n");
    EXPECT_TRUE(std::filesystem::is_symlink(configuration.PathOf("Marivane.ini")));
    EXPECT_EQ(configuration.Names(), (std::set<std::string>{"Marivane.ini", "target.ini"}));
    std::filesystem::remove(target);  // the second run makes the file
  }
}

TEST_F(ReplayRules, ARunLeavesNothingBehindAndGivesTheSameAgain) {
  const TemporaryFolder temporary;
  setenv("TMPDIR", temporary.PathOf("").c_str(), 1);
  const std::string script = std::string(ToMainPage) + "click 5\n";
  const ReplayRun first = RunScript(options, script);
  EXPECT_EQ(first.output, RunScript(options, script).output);
  options.addIn = "/no/such/library.so";
  EXPECT_EQ(RunScript(options, script).status, ExitStatus::Failed);
  unsetenv("TMPDIR");
  EXPECT_EQ(temporary.Names(), std::set<std::string>{});
  // A library that stayed loaded would carry its records into the next run.
  std::ifstream maps("/proc/self/maps");
  const std::string mapped{std::istreambuf_iterator<char>(maps), std::istreambuf_iterator<char>()};
  EXPECT_EQ(mapped.find("OrvelCalibrateS"), std::string::npos);
}

TEST_F(ReplayRules, WhatCantBeUsedIsToldAndNothingIsPlayed) {
  const std::string file = configuration.Write("script.replay", "show\nclick 15\n");
  const std::string none = configuration.PathOf("none/none");
  std::vector<ReplayOptions> rows(8, options);
  rows[0].configuration = none;
  rows[1].configuration = file;
  rows[2].script = none;
  rows[3].script = configuration.PathOf("");
  rows[4].addIn = file;
  rows[5].trace = none;
  rows[6].trace = "/dev/full";
  rows[7].script = file;  // and the script's error is told apart
  for (const ReplayOptions& row : rows) {
    const ReplayRun run = RunScript(row, "show\n");
    EXPECT_EQ(run.status, &row == &rows[7] ? ExitStatus::ScriptError : ExitStatus::Failed) << run.complaints;
    EXPECT_EQ(run.output, "");
    EXPECT_NE(run.complaints, "");
  }
}

TEST_F(ReplayRules, TheAccountTellsWhatTheAddInPassesOver) {
  options.configuration = HELMSWAY_EXAMPLES "/installation";
  options.instrument = InstrumentKind::Simulated;
  options.format = OutputFormat::Text;
  const std::string begin = "click 10\ncheck chkToolInstalled\nclick 9\nclick 0\n";
  const auto told = [&](const ReplayOptions& how, const std::string& script) {
    const std::string account = RunScript(how, begin + "host read Caption\n" + script).output;
    const std::size_t from = account.find("Caption is");
    return account.substr(from, account.find("\nCalibration memory") - from);
  };
  struct Row {
    const char* script;
    std::vector<const char*> told;
    std::vector<const char*> notTold;
  };
  const Row rows[] = {
      {"click 7\n", {"MOVE S -3093 -> ok"}, {"NOT ", "left over"}},
      // What was to move to the number and is ignored hasn't moved there, but nothing was to be confirmed either.
      {"instrument refuse MOVE\nclick 7\nclick 5\nclick 7\n",
       {"NOT CONFIRMED: the number on the form, -3093, was not reached\n  the status text is left over: Moving S "
        "Axis\n"},
       {}},
      {"instrument fault link MOVE 100\nclick 7\nclick 7\n",
       {"NOT CONFIRMED: the number on the form, -3093, may not have been reached",
        "LINK NOT REACHED, tried once\n  NOT CONFIRMED: the number on the form, -3089, was not reached"},
       {}},
      {"link down\nclick 7\nlink up\nclick 7\n", {"LINK NOT REACHED", "-3093, was not reached"}, {"-3089, was"}},
      {"instrument power-cycle\nlink up\n", {"-3097, was reached, but the axes have lost their positions since"}, {}},
      {"during \"MOVE SD_Y\" click 16\nclick 0\n", {"NOT SENT, since a stop was requested: 3 lines\n"}, {"left over"}},
      {"file writes fail\nanswer ok\nhost SaveChanges\n",
       {"NOT WRITTEN [DeviceType] AxisCalibratedS=1: the host's configuration service doesn't work"},
       {"  write ["}},
      {"file reads fail\nanswer ok\nhost SaveChanges\n", {"NOT READ: [", " more)\n"}, {}},
  };
  for (const Row& row : rows) {
    const std::string account = told(options, row.script);
    for (const char* words : row.told) EXPECT_NE(account.find(words), std::string::npos) << words << '\n' << account;
    for (const char* words : row.notTold) EXPECT_EQ(account.find(words), std::string::npos) << words << '\n' << account;
  }
  // A trace has no line for what failed.
  options.format = OutputFormat::JsonLines;
  const std::string failing = RunScript(options, begin + "file writes fail\nanswer ok\nhost SaveChanges\n").output;
  EXPECT_EQ(failing.find("\"event\":\"write\",\"section\":\"DeviceType\",\"key\":\"AxisCalibratedS"),
            std::string::npos);
  for (const TraceEvent& event : EventsOf(failing)) {
    const std::set<std::string> known = {"action", "status", "stop",    "active", "send",
                                         "sent",   "write",  "message", "changed"};
    EXPECT_TRUE(known.contains(event.kind)) << event.kind;
  }
}

TEST_F(ReplayRules, TheAccountTellsARunToAPerson) {
  options.format = OutputFormat::Text;
  const ReplayRun run = RunScript(options,
                                  "click 10\ncheck chkToolInstalled\nclick 9\ninstrument refuse HOME\n"
                                  "during HOME click 16\nclick 5\nclick 2\nanswer ok\nhost SaveChanges\n");
  EXPECT_EQ(run.status, ExitStatus::Performed);
  EXPECT_EQ(run.output.substr(run.output.find("press [Home")), R"(press [Home All] (button 5)
  status: Home all
  status: Homing all axes
  HOME ALL ...
      press [Stop] (button 16)
      stop requested
  ... HOME ALL -> REFUSED: the script says so
  the status text is left over: Homing all axes
press [Eject Tip] (button 2)
  ignored: can't be done now
answer ok
host SaveChanges
  message (!) "Save S Axis Positions"
    | The current S Axis value will be saved and used as the initial 
    | position for all 1, 8 and 12 channel pipetting heads.
    | 
    | This information will be stored on this computer and will
    | also be transferred into the Marivane's memory.
    | 
    | Click [OK] to save these values.
    answer: ok
  status: Saving values...
  write [DeviceType] AxisCalibratedS=1
  status: Updating the Marivane's memory...
  NOT SENT, since a stop was requested: 1 line
  status cleared
  host window: marked unchanged

Calibration memory of the instrument:
  nothing

Changes in Marivane.ini:
@@ -0,0 +1,2 @@
+[DeviceType]
+AxisCalibratedS=1
)");
}

}  // namespace
}  // namespace Helmsway
