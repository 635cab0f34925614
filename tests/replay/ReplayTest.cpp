#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "bench/replay/Replay.h"
#include "tests/host/TemporaryFolder.h"
#include "tests/replay/ReplayRun.h"

namespace Helmsway {
namespace {

/// Brings the form to its main page, on which button 5 sends "HOME ALL" and nothing else.
constexpr const char* ToMainPage = "click 10\ncheck chkToolInstalled\nclick 9\n";

/// The trace with one short line for each event: its kind, then its values in the order of the trace.
std::string Shorten(const std::string& trace) {
  std::istringstream lines(trace);
  std::string result;
  for (std::string line; std::getline(lines, line);) {
    const auto event = nlohmann::ordered_json::parse(line);
    if (event["event"] == "form") {
      result += "form " + event["visible"].dump() + " " + event["status"].dump() + "\n";
      continue;
    }
    for (const auto& [name, value] : event.items()) {
      if (event["event"] == "message" && name == "text") continue;
      if (name != "event") result += ' ';
      result += value.is_string() ? value.get<std::string>() : value.dump();
    }
    result += '\n';
  }
  return result;
}

class ReplayRules : public testing::Test {
 protected:
  /// What the script's own actions give, behind those of `setUp`.
  std::string Play(const std::string& setUp, const std::string& script) {
    const ReplayRun whole = RunScript(options, setUp + script);
    const ReplayRun front = RunScript(options, setUp);
    EXPECT_EQ(whole.status, ExitStatus::Performed) << whole.complaints;
    EXPECT_TRUE(whole.output.starts_with(front.output));
    return "\n" + Shorten(whole.output.substr(front.output.size()));
  }

  TemporaryFolder configuration;
  ReplayOptions options = OptionsFor(configuration.PathOf(""));
};

TEST_F(ReplayRules, AScriptBeginsWithALoadedFormThatHasItsHost) {
  EXPECT_EQ(
      Play("", "host read Caption\nhost read Frame\nhost read HelpContextID\nhost read ShowStatusBar\nclick 10\n"),
      R"(
action host read Caption
read Caption Calibrate Syringe Axis
action host read Frame
read Frame picFrame
action host read HelpContextID
read HelpContextID 9014
action host read ShowStatusBar
read ShowStatusBar true
action click 10
stop false
status Retrieving configuration settings from Marivane
stop false
active true
send REV
sent REV ok 
changed false
status 
)");
}

TEST_F(ReplayRules, WhatWaitsForALineTakesPlaceBetweenItsBeginAndItsEnd) {
  EXPECT_EQ(Play(ToMainPage,
                 "during HOME click 5\nduring \"HOME ALL\" click 16\nduring MOVE show\nduring H click frame\n"
                 "during HOME check chkToolInstalled\nduring HOME host stop\nclick 5\nclick 5\n"),
            R"(
action during HOME click 5
action during "HOME ALL" click 16
action during MOVE show
action during H click frame
action during HOME check chkToolInstalled
action during HOME host stop
action click 5
stop false
status Home all
status Homing all axes
stop false
active true
send HOME ALL
action click 5
ignored click 5
action click 16
stop false
stop true
action click frame
focus
action check chkToolInstalled
ignored check chkToolInstalled
action host stop
sent HOME ALL ok 
status 
action click 5
stop false
status Home all
status Homing all axes
stop false
active true
send HOME ALL
sent HOME ALL ok 
status 
)");
}

/// The ends of all lines of a run.
std::string Ends(const std::string& shortTrace) {
  std::istringstream lines(shortTrace);
  std::string ends;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("sent ")) ends += line.substr(5) + "|";
  }
  return ends;
}

TEST_F(ReplayRules, RefusalsAreSettledAtALinesBeginAndRepliesAtItsEnd) {
  struct Row {
    const char* name;
    std::string script;
    const char* ends;
  };
  const Row rows[] = {
      {"in the order in which they were said, one a line",
       "instrument refuse HOME 2\ninstrument fail \"HOME A\"\nclick 5\nclick 5\nclick 5\nclick 5\n",
       "HOME ALL refused |HOME ALL refused |HOME ALL failed |HOME ALL ok |"},
      {"a prefix that doesn't fit waits", "instrument fail \"HOME S\"\nclick 5\n", "HOME ALL ok |"},
      {"the prefix of every line", "instrument fail \"\"\nclick 5\nclick 5\n", "HOME ALL failed |HOME ALL ok |"},
      {"said during the line, a refusal waits for the next one",
       "during HOME instrument refuse HOME\nclick 5\nclick 5\n", "HOME ALL ok |HOME ALL refused |"},
      {"the reply said last counts, also the one said during the line",
       "instrument reply \"HOME ALL\" a\ninstrument reply HOME \"b c\"\nclick 5\nduring HOME instrument reply \"\" d\n"
       "click 5\n",
       "HOME ALL ok b c|HOME ALL ok d|"},
      {"a refused line has no reply", "instrument reply HOME a\ninstrument refuse HOME\nclick 5\n",
       "HOME ALL refused |"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Ends(Play(ToMainPage, row.script)), row.ends);
  }
}

TEST_F(ReplayRules, WithoutAFormAllOfHostAndOperatorIsIgnoredUntilTheNextCreation) {
  EXPECT_EQ(Play("",
                 "host ObjectParent none\nshow\nhost read Caption\nhost stop\nclick frame\nlink down\nlink up\n"
                 "host create\nhost create\nshow\nhost ObjectParent given\nhost release\nclick 10\nhost release\n"),
            R"(
action host ObjectParent none
active false
action show
ignored show
action host read Caption
ignored host read Caption
action host stop
ignored host stop
action click frame
ignored click frame
action link down
action link up
action host create
action host create
action show
form ["fraInitial"] ""
action host ObjectParent given
action host release
active false
action click 10
ignored click 10
action host release
ignored host release
)");
}

TEST_F(ReplayRules, TheOperatorCanDoOnlyWhatTheScreenAllows) {
  EXPECT_EQ(Play("", "click 16\nclick 2\nuncheck chkToolInstalled\npick cboCollectStep 1\nclick frame\n"), R"(
action click 16
ignored click 16
action click 2
ignored click 2
action uncheck chkToolInstalled
ignored uncheck chkToolInstalled
action pick cboCollectStep 1
ignored pick cboCollectStep 1
action click frame
focus
)");
  EXPECT_EQ(Play("click 10\n",
                 "uncheck chkToolInstalled\ncheck chkToolInstalled\ncheck chkToolInstalled\n"
                 "check chkStageEmpty\nclick 9\npick cboCollectStep 1\npick cboCollectStep 1\n"
                 "pick cboCollectStep 2\npick cboCollectStep -1\nhost FormParent none\nclick frame\n"),
            R"(
action uncheck chkToolInstalled
ignored uncheck chkToolInstalled
action check chkToolInstalled
action check chkToolInstalled
ignored check chkToolInstalled
action check chkStageEmpty
ignored check chkStageEmpty
action click 9
stop false
changed false
action pick cboCollectStep 1
action pick cboCollectStep 1
ignored pick cboCollectStep 1
action pick cboCollectStep 2
ignored pick cboCollectStep 2
action pick cboCollectStep -1
ignored pick cboCollectStep -1
action host FormParent none
action click frame
)");
}

TEST_F(ReplayRules, WhileTheLinkIsDownNothingReachesIt) {
  EXPECT_EQ(Play(ToMainPage, "during HOME link down\nclick 5\nclick 16\nclick 5\nshow\nhost ObjectParent none\n"), R"(
action during HOME link down
action click 5
stop false
status Home all
status Homing all axes
stop false
active true
send HOME ALL
action link down
sent HOME ALL ok 
status 
action click 16
action click 5
status Home all
status Homing all axes
action show
form ["fraMove","fraTest"] "Homing all axes"
action host ObjectParent none
)");
}

TEST_F(ReplayRules, FilesFailAndWorkAgain) {
  EXPECT_EQ(Play("answer ok\nanswer ok\nfile writes fail\nfile set DeviceType Own 1\n",
                 "host SaveChanges\nfile writes work\nhost SaveChanges\n"),
            R"(
action host SaveChanges
message Save S Axis Positions ok-cancel exclamation ok
status Saving values...
status 
changed false
action file writes work
action host SaveChanges
message Save S Axis Positions ok-cancel exclamation ok
status Saving values...
write DeviceType AxisCalibratedS 1
status 
changed false
)");
  // The catalogue's only head is the teach tool; where the file can't be read, there is none.
  const std::string tool =
      "file set HeadType Item1 \"\\\"Tool\\\",CALIBRATE,0,30,0,1,,,,,,,,,,,1_CH_SHORT\"\nclick 10\n"
      "check chkToolInstalled\n";
  EXPECT_EQ(Play(tool, "file reads fail\nclick 9\n"),
            "\naction file reads fail\naction click 9\nstop false\nchanged false\n");
  EXPECT_EQ(Play(tool + "file reads fail\nfile reads work\n", "click 9\n"),
            "\naction click 9\nstop false\nwrite HeadType Installed 1\nwrite TipType Installed 0\nchanged false\n");
  EXPECT_EQ(Play(tool + "file remove HeadType Item1\n", "click 9\n"), "\naction click 9\nstop false\nchanged false\n");
}

TEST_F(ReplayRules, ABoxWithoutAFittingAnswerEndsTheRun) {
  options.workOn = WorkOn::Files;
  struct Row {
    const char* script;
    const char* lastLine;
    const char* complaint;
  };
  const Row rows[] = {
      {"# none\n\nhost SaveChanges\nshow\n", "action host SaveChanges\n",
       "-:3: no answer is queued for the message box \"Save S Axis Positions\" (ok-cancel)\n"},
      {"answer yes\nanswer ok\nhost SaveChanges\nshow\n", "action host SaveChanges\n",
       "-:3: the answer yes isn't among the buttons of the message box \"Save S Axis Positions\" (ok-cancel)\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.script);
    const ReplayRun run = RunScript(options, row.script);
    EXPECT_EQ(run.status, ExitStatus::ScriptError);
    EXPECT_TRUE(Shorten(run.output).ends_with(row.lastLine)) << run.output;
    EXPECT_EQ(run.complaints, row.complaint);
    EXPECT_EQ(configuration.Names(), std::set<std::string>{});
  }
}

TEST_F(ReplayRules, CopiesLeaveTheFolderAloneAndInPlaceWorksOnItsFiles) {
  const std::string script = "answer ok\nhost SaveChanges\nfile set DeviceType Own 1\n";
  const std::string before = "[DeviceType]\r\nAxisCalibratedS=0\r\n";
  configuration.Write("Marivane.ini", before);
  EXPECT_EQ(RunScript(options, script).status, ExitStatus::Performed);
  EXPECT_EQ(configuration.Read("Marivane.ini"), before);

  options.workOn = WorkOn::Files;
  EXPECT_EQ(RunScript(options, script).status, ExitStatus::Performed);
  EXPECT_EQ(configuration.Read("Marivane.ini"), "[DeviceType]\r\nAxisCalibratedS=1\r\nOwn=1\r\n");

  std::filesystem::remove(configuration.PathOf("Marivane.ini"));
  EXPECT_EQ(RunScript(options, script).status, ExitStatus::Performed);
  EXPECT_EQ(configuration.Read("Marivane.ini"), "[DeviceType]\r\nAxisCalibratedS=1\r\nOwn=1\r\n");
  EXPECT_EQ(configuration.Names(), std::set<std::string>{"Marivane.ini"});
}

TEST_F(ReplayRules, ARunLeavesNothingBehindAndGivesTheSameAgain) {
  const TemporaryFolder temporary;
  setenv("TMPDIR", temporary.PathOf("").c_str(), 1);
  const std::string script = std::string(ToMainPage) + "click 5\nhost SaveChanges\n";
  const ReplayRun first = RunScript(options, script);
  const ReplayRun second = RunScript(options, script);
  options.addIn = "/no/such/library.so";
  EXPECT_EQ(RunScript(options, script).status, ExitStatus::Failed);
  unsetenv("TMPDIR");
  EXPECT_EQ(first.output, second.output);
  EXPECT_EQ(temporary.Names(), std::set<std::string>{});
  // A library that stayed loaded would carry its records into the next run.
  std::ifstream maps("/proc/self/maps");
  const std::string mapped{std::istreambuf_iterator<char>(maps), std::istreambuf_iterator<char>()};
  EXPECT_EQ(mapped.find("OrvelCalibrateS"), std::string::npos);
}

TEST_F(ReplayRules, WhatCantBeUsedIsToldAndNothingIsPlayed) {
  configuration.Write("script.replay", "show\nclick 15\n");
  configuration.Write("library.so", "no library");
  struct Row {
    const char* name;
    void (*change)(ReplayOptions& options, const TemporaryFolder& folder);
    ExitStatus status;
  };
  const Row rows[] = {
      {"no such folder", [](auto& changed, const auto& folder) { changed.configuration = folder.PathOf("none"); },
       ExitStatus::Failed},
      {"a file for a folder",
       [](auto& changed, const auto& folder) { changed.configuration = folder.PathOf("script.replay"); },
       ExitStatus::Failed},
      {"no such script", [](auto& changed, const auto& folder) { changed.script = folder.PathOf("none"); },
       ExitStatus::Failed},
      {"a folder for a script", [](auto& changed, const auto& folder) { changed.script = folder.PathOf(""); },
       ExitStatus::Failed},
      {"a script with an error",
       [](auto& changed, const auto& folder) { changed.script = folder.PathOf("script.replay"); },
       ExitStatus::ScriptError},
      {"no library", [](auto& changed, const auto& folder) { changed.addIn = folder.PathOf("library.so"); },
       ExitStatus::Failed},
      {"a trace that can't be written",
       [](auto& changed, const auto& folder) { changed.trace = folder.PathOf("none/trace.jsonl"); },
       ExitStatus::Failed},
      {"a full disk", [](auto& changed, const auto&) { changed.trace = "/dev/full"; }, ExitStatus::Failed},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    ReplayOptions changed = options;
    row.change(changed, configuration);
    const ReplayRun run = RunScript(changed, "show\n");
    EXPECT_EQ(run.status, row.status);
    EXPECT_EQ(run.output, "");
    EXPECT_NE(run.complaints, "");
  }
}

TEST_F(ReplayRules, BytesThatAreNoUtf8AreReplaced) {
  const ReplayRun run = RunScript(options, "instrument reply REV \"\xFF\"\nclick 10\n");
  EXPECT_EQ(run.status, ExitStatus::Performed);
  EXPECT_NE(run.output.find(R"("line":"REV","result":"ok","reply":")"
                            "\xEF\xBF\xBD\""),
            std::string::npos);
}

TEST_F(ReplayRules, TheAccountTellsARunToAPerson) {
  options.format = OutputFormat::Text;
  const ReplayRun run = RunScript(options, std::string(ToMainPage) +
                                               "instrument refuse HOME\nduring HOME click 16\nclick 5\nclick 2\n"
                                               "answer ok\nhost SaveChanges\n");
  EXPECT_EQ(run.status, ExitStatus::Performed);
  EXPECT_EQ(run.output, R"(host create
host ObjectParent given
host FormParent given
press [Continue] (button 10)
  status: Retrieving configuration settings from Marivane
  REV -> ok
  host window: marked unchanged
  status cleared
check chkToolInstalled
press [Continue] (button 9)
  host window: marked unchanged
instrument refuse HOME
during HOME click 16
press [Home All] (button 5)
  status: Home all
  status: Homing all axes
  HOME ALL ...
      press [Stop] (button 16)
      stop requested
  ... HOME ALL -> REFUSED: the script says so
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
