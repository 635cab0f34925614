#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/host/TemporaryFolder.h"
#include "tests/replay/ReplayRun.h"

namespace Helmsway {
namespace {

using Json = nlohmann::json;

/// A model without X axis, on which 0.1 mm are four S steps, with the teach tool and two heads. The value on record is
/// -3000, and a saved value is 50 more than the position that it was saved at.
constexpr const char* Installation =
    "[DeviceType]\nInstalled=1\nItem1=\"Y\",False,\"\"\nUploadCalibrationData=1\n"
    "SDXYEncoderStatus=True\nSDXYEncoderMMStepFactorOn=30\n"
    "[CageType]\nInstalled=1\nItem1=\"C\",C,True,True,True,1,1,1,1\n"
    "[Device_Type1_Cage1]\n"
    "Axis1=\"Y\",0.02,100,100,100,-100,40000,0,0,0,0,0,1,-1,2000\n"
    "Axis2=\"Z\",0.0125,100,100,100,-17000,60,0,0,0,0,0,1,-1,-100\n"
    "Axis3=\"S\",0.025,100,100,100,-7000,100,0,0,0,0,0,1,-1,-90\n"
    "Axis4=\"SDX\",0.03,100,100,100,-10,70,0,0,0,0,0,1,-1,3\n"
    "Axis5=\"SDY\",0.03,100,100,100,-10,40,0,0,0,0,0,1,-1,2\n"
    "[Z_Calibration]\nMountHeight=286\nStageHeightUpper=66\nHeadDepth_8ch=47\nHeadDepth_TeachTool_1Ch=42\nNestDepth_Y="
    "17\n"
    "[HeadType]\nInstalled=2\nSDTeachToolOffsetMM=1.25\nSDHeadEjectOffsetMM=-5\n"
    "Item1=\"Tool\",CALIBRATE,9,0,0,1,0,0,0,0,-3200,0,-2950,1,0,0,1_CH_SHORT,0,\"\",0,0\n"
    "Item2=\"Eight\",SERIALDILUTE,9,125,0,8,0,0,0,0,-3200,0,-2950,1.5,0,0,8_CH,0,\"\",0,0\n"
    "[NestType]\nInstalled=1\nItem1=\"Nest\",NEST1,\"\",8_CH,1,0,0,0,\"\",1_CH_SHORT,2,20,0,0,\"\",12_CH,3,40,0,0\n"
    "[TipType]\nInstalled=0\nItem1=\"Tip\",SERIALDILUTE,1,1,1,1,1,4,4,8,30,1,1,1,1,1,1,1,\"\",0\n"
    "[PlateType]\nItem1=\"Rack\",TIPRACK,8,12,45,9,9,14,11,4,ROUND,42,1,2,1\n"
    "[Position_1]\nItem1=STAGE1,\"Stage 1\",TIPRACK,0,4000,10,0,10,0,10,0,False,True\n"
    "Item2=STAGE2,\"Stage 2\",PLATE,0,10000,10,0,10,0,10,0,False,True\n"
    "Item3=NEST1,\"Nest place\",NEST,0,28000,10,0,10,0,10,0,False,True\n";

constexpr const char* ToMainPage = "click 10\ncheck chkToolInstalled\nclick 9\n";
constexpr const char* Save = "answer yes\nanswer ok\nclick 6\n";

class TrainingRun : public testing::Test {
 protected:
  TrainingRun() {
    configuration_.Write("Marivane.ini", Installation);
    options_.instrument = InstrumentKind::Simulated;
  }

  ReplayRun Run(const std::string& script) const { return RunScript(options_, script); }

  /// The events of a run to the script's end.
  std::vector<Json> Play(const std::string& script) const {
    const ReplayRun run = Run(script);
    EXPECT_EQ(run.status, ExitStatus::Performed) << run.complaints;
    std::vector<Json> events;
    std::istringstream lines(run.output);
    for (std::string line; std::getline(lines, line);) events.push_back(Json::parse(line));
    return events;
  }

  TemporaryFolder configuration_;
  ReplayOptions options_ = OptionsFor(configuration_.PathOf(""));
};

std::vector<Json> Named(const std::vector<Json>& events, const std::string& name) {
  std::vector<Json> found;
  for (const Json& event : events) {
    if (event["event"] == name) found.push_back(event);
  }
  return found;
}

/// How the lines that begin with `prefix` ended: result and reason of each.
std::string Ends(const std::vector<Json>& events, const std::string& prefix) {
  std::string ends;
  for (const Json& sent : Named(events, "sent")) {
    if (!sent["line"].get<std::string>().starts_with(prefix)) continue;
    ends += sent["result"].get<std::string>();
    if (sent.contains("reason")) ends += ": " + sent["reason"].get<std::string>();
    ends += '|';
  }
  return ends;
}

std::string Presses(int count, int button) {
  std::string script;
  for (int press = 0; press < count; ++press) script += "click " + std::to_string(button) + "\n";
  return script;
}

TEST_F(TrainingRun, WhoJogsBySightMeetsTheTruthWithinHalfAJogTwice) {
  for (int seed = 0; seed < 12; ++seed) {
    SCOPED_TRACE(seed);
    const std::string start = "instrument seed " + std::to_string(seed) + "\n" + ToMainPage + "click 0\n";
    const std::vector<Json> look = Named(Play(start + "instrument show\n"), "instrument");
    ASSERT_EQ(look.size(), 1U);
    // Up is the button 7; a press is worth 0.1 mm.
    const double edge = look[0]["edge"];
    const int presses = static_cast<int>(std::round(std::abs(edge) / 0.1));
    ASSERT_GE(presses, 3);
    const std::string jogs = Presses(presses, edge < 0 ? 7 : 8);

    const std::string again = "click 5\nclick 0\ninstrument show\n";
    const auto events = Play(start + jogs + Save + "instrument score\n" + again + Save + "instrument score\n");
    const std::vector<Json> scores = Named(events, "score");
    ASSERT_EQ(scores.size(), 2U);
    EXPECT_LE(std::abs(scores[0]["saved"]["steps"].get<double>()), 2);
    EXPECT_LE(std::abs(scores[0]["saved"]["mm"].get<double>()), 0.05);
    EXPECT_EQ(scores[0]["jogs"], presses);
    EXPECT_EQ(scores[0]["refused"], 0);
    EXPECT_LE(std::abs(Named(events, "instrument")[0]["edge"].get<double>()), 0.05) << "nothing is left to correct";
    EXPECT_EQ(scores[1]["saved"], scores[0]["saved"]);
  }
}

TEST_F(TrainingRun, TheSeedSettlesTheRunToTheLastByte) {
  const auto output = [&](const std::string& seed) {
    return Run(seed + ToMainPage + "instrument fault garble REV\nclick 0\nclick 7\nclick 8\ninstrument show\n" + Save +
               "instrument score\n")
        .output;
  };
  const auto withoutAction = [](const std::string& trace) { return trace.substr(trace.find("\"click 10\"")); };
  EXPECT_EQ(output("instrument seed 3\n"), output("instrument seed 3\n"));
  EXPECT_EQ(withoutAction(output("instrument seed 1\n")), withoutAction(output(std::string("file reads work\n"))));
  EXPECT_NE(withoutAction(output("instrument seed 2\n")), withoutAction(output("instrument seed 3\n")));
}

TEST_F(TrainingRun, EachFaultShowsInTheTrace) {
  struct Row {
    const char* fault;
    const char* ends;  // of the three moves of S: to the location, and two jogs
    double seconds;    // at least, that the fault costs
  };
  const Row rows[] = {
      {"refuse \"MOVE S \"", "refused: planned fault: the line is refused|ok|ok|", 0},
      {"fail \"MOVE S -2996\"", "ok|failed: planned fault: the sending fails|ok|", 0},
      {"late \"MOVE S \" 1000", "ok|ok|ok|", 1000},
      {"silent \"MOVE S \" 300.5", "failed: planned fault: no answer within 300.5 s|ok|ok|", 300.5},
      {"silent \"MOVE S \"", "failed: planned fault: no answer within 60 s|ok|ok|", 60},
      // A press tries for the link twice: the first is in vain, and so is the second's first try.
      {"link \"MOVE S -3000\" 1.5", "failed: planned fault: the link was lost before the answer came|ok|", 2},
      {"power-cycle \"MOVE S -2996\"",
       "ok|failed: the instrument was switched off before the line had ended|refused: axis S is not homed|", 0},
  };
  const std::string rest = std::string(ToMainPage) + "click 0\nclick 7\nclick 7\ninstrument score\n";
  const double usual = Named(Play(rest), "score")[0]["time"];
  for (const Row& row : rows) {
    SCOPED_TRACE(row.fault);
    const auto events = Play("instrument fault " + std::string(row.fault) + "\n" + rest);
    EXPECT_EQ(Ends(events, "MOVE S "), row.ends);
    if (row.seconds > 0) {
      EXPECT_GE(Named(events, "score")[0]["time"].get<double>(), row.seconds);
    }
    if (row.seconds > 100) {
      EXPECT_LE(Named(events, "score")[0]["time"].get<double>(), usual + row.seconds);
    }
  }
  EXPECT_EQ(Ends(Play("instrument fault refuse #2\n" + rest), "HOME ALL"),
            "refused: planned fault: the line is refused|");
}

TEST_F(TrainingRun, AStallLeavesTheAxisWithoutAPlaceAndTheWizardWithoutAWord) {
  const auto events = Play(std::string(ToMainPage) + "click 0\ninstrument fault stall \"MOVE S \"\nclick 7\n" +
                           "instrument show\nshow\n");
  EXPECT_TRUE(Ends(events, "MOVE S -2996").starts_with("refused: axis S stalled"));
  EXPECT_EQ(Named(events, "instrument")[0]["edge"], nullptr);
  EXPECT_EQ(Named(events, "form")[0]["current"], "-2996");
}

TEST_F(TrainingRun, AGarbledReplyIsNoiseButTheScriptsReplyIsNot) {
  const auto reply = [&](const std::string& script) {
    return Named(Play("instrument fault garble REV\n" + script + "click 10\n"), "sent")[0]["reply"].get<std::string>();
  };
  EXPECT_GE(reply("").size(), 6U);
  EXPECT_EQ(reply("").find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ"), std::string::npos);
  EXPECT_EQ(reply("instrument reply REV fine\n"), "fine");
}

TEST_F(TrainingRun, APowerCycleLosesWhatWasNotSaved) {
  const std::string upTo = std::string(ToMainPage) + "click 0\n";
  struct Row {
    const char* name;
    std::string script;
    bool pendingIsLeft;
    bool memoryIsFilled;
  };
  const Row rows[] = {
      {"saved", std::string(Save), false, true},
      {"the save refused", std::string("instrument fault refuse \"SET_CALIBRATION SAVE\"\n") + Save, true, false},
      {"and then switched off",
       std::string("instrument fault refuse \"SET_CALIBRATION SAVE\"\n") + Save + "instrument power-cycle\n", false,
       false},
      {"switched off in the save", std::string("during \"SET_CALIBRATION SAVE\" instrument power-cycle\n") + Save,
       false, false},
      {"switched off when saved", std::string(Save) + "instrument power-cycle\n", false, true},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const auto events = Play(upTo + row.script + "instrument show\ninstrument score\n");
    const Json view = Named(events, "instrument")[0];
    EXPECT_EQ(!view["pending"].empty(), row.pendingIsLeft);
    EXPECT_EQ(!view["memory"].empty(), row.memoryIsFilled);
    if (row.memoryIsFilled) {
      EXPECT_EQ(view["memory"]["AspirateOrigin_8Ch_125_S"], "-2950");
    }
    const Json score = Named(events, "score")[0];
    EXPECT_EQ(score["pending"].is_null(), !row.pendingIsLeft);
    EXPECT_EQ(score["saved"].is_null(), !row.memoryIsFilled);
  }
}

TEST_F(TrainingRun, OnlyTheInstrumentsOwnRefusalsHaveAReason) {
  const std::string script = std::string(ToMainPage) + "click 0\ninstrument refuse MOVE\nclick 7\n" +
                             "instrument remote off\nclick 7\ninstrument remote on\nclick 7\n";
  const std::string ends = Ends(Play(script), "MOVE S ");
  EXPECT_TRUE(ends.starts_with("ok|refused|refused: ")) << ends;
  EXPECT_TRUE(ends.ends_with("|ok|")) << ends;
}

TEST_F(TrainingRun, StopEndsASilence) {
  const auto events = Play(std::string(ToMainPage) + "instrument fault silent HOME\nduring HOME click 16\nclick 5\n");
  EXPECT_EQ(Ends(events, "HOME"), "failed: planned fault: no answer before Stop|");
}

TEST_F(TrainingRun, TheOperatorPutsOnTheToolThatIsRegistered) {
  const auto views =
      Named(Play("click 10\ninstrument show\ncheck chkToolInstalled\nclick 9\ninstrument show\n"), "instrument");
  EXPECT_EQ(views[0]["head"], "Eight");
  EXPECT_EQ(views[1]["head"], "Tool");
}

TEST_F(TrainingRun, FileAndMemoryAreCompared) {
  const std::string otherHead = "file set HeadType Item2 \"Eight,SERIALDILUTE,,125,,8,,,,,,,-2900,1.5\"\n";
  const auto views = Named(Play(std::string(ToMainPage) + "instrument show\nclick 0\n" + Save + "instrument show\n" +
                                otherHead + "instrument show\n"),
                           "instrument");
  // 1.5 mm are 60 steps; the save at -3000 makes the position -2950, the one on record.
  EXPECT_EQ(views[0]["differences"], Json::parse(R"([
      {"name": "AspirateOrigin_8Ch_125_S", "file": "-2950", "memory": null},
      {"name": "TipEject_8Ch_125_S", "file": "-60", "memory": null}])"));
  EXPECT_EQ(views[1]["differences"], Json::array());
  EXPECT_EQ(views[2]["differences"],
            Json::parse(R"([{"name": "AspirateOrigin_8Ch_125_S", "file": "-2900", "memory": "-2950"}])"));
}

TEST_F(TrainingRun, AnEjectedHeadIsTakenAwayByButton11AndNotByACheckedBox) {
  const std::string eject = "check chkToolUninstalled\nclick 9\ncheck chkStageEmpty\nclick 4\n";
  const std::string again =
      "host release\nhost create\nhost ObjectParent given\nhost FormParent given\nclick 10\n"
      "check chkToolInstalled\nclick 9\nanswer cancel\nclick 14\n";
  const auto twice = Named(Play("click 10\n" + eject + again + eject), "sent");
  EXPECT_EQ(twice.back()["result"], "refused");
  EXPECT_NE(twice.back()["reason"].get<std::string>().find("Eight"), std::string::npos) << twice.back().dump();
  const auto events = Play("click 10\n" + eject + "instrument show\nclick 11\ninstrument show\n");
  const auto views = Named(events, "instrument");
  EXPECT_EQ(views[0]["places"]["Stage 2"], "Eight") << views[0].dump();
  EXPECT_EQ(views[1]["places"]["Stage 2"], "empty");
  EXPECT_EQ(views[0]["places"]["Stage 1"], "Rack") << "as picked";
}

TEST_F(TrainingRun, WhatIsSaidTooLateOrToTheWrongInstrumentIsAScriptError) {
  struct Row {
    const char* script;
    InstrumentKind instrument;
    const char* complaint;
  };
  const Row rows[] = {
      {"click 10\ninstrument seed 2\n", InstrumentKind::Simulated,
       "-:2: the seed comes too late: a line has reached the instrument already\n"},
      {"click 10\ninstrument memory AspirateOrigin_8Ch_125_S 1\n", InstrumentKind::Simulated,
       "-:2: the memory comes too late: a line has reached the instrument already\n"},
      {"instrument memory AspirateOrigin_8Ch_125_S 1.5\n", InstrumentKind::Simulated,
       "-:1: the instrument keeps no such calibration value: AspirateOrigin_8Ch_125_S 1.5\n"},
      {"click 10\ninstrument fault fail #1\n", InstrumentKind::Simulated,
       "-:2: the fault comes too late: line #1 has reached the instrument already\n"},
      {"during REV instrument seed 2\nclick 10\n", InstrumentKind::Simulated,
       "-:2: the seed comes too late: a line has reached the instrument already\n"},
      {"click 10\nduring REV instrument score\npick\n", InstrumentKind::Accepting,
       "-:2: this needs the simulated instrument: during REV instrument score\n"
       "-:3: wrong number of words; the action is written: pick LIST INDEX\n"},
      {"instrument seed -1\ninstrument seed 2147483647\ninstrument seed 1 lost\n", InstrumentKind::Simulated,
       "-:1: not a seed: -1; seeds are whole numbers from 0 to 2147483646\n"
       "-:2: not a seed: 2147483647; seeds are whole numbers from 0 to 2147483646\n"
       "-:3: behind a seed stands lost-steps or nothing, not lost\n"},
      {"instrument fault fail #0\ninstrument fault late REV\ninstrument fault link REV 0\n", InstrumentKind::Simulated,
       "-:1: not the number of a line: #0; the first is #1\n"
       "-:2: wrong number of words; the action is written: instrument fault late LINE SECONDS\n"
       "-:3: not a number of seconds: 0; it is more than 0 and at most 1000000000\n"},
      // Added up, they would make a time that a trace can't hold.
      {"instrument fault late REV 1e999\ninstrument fault link REV 1000000000.5\ninstrument fault late REV inf\n",
       InstrumentKind::Simulated,
       "-:1: not a number of seconds: 1e999; it is more than 0 and at most 1000000000\n"
       "-:2: not a number of seconds: 1000000000.5; it is more than 0 and at most 1000000000\n"
       "-:3: not a number of seconds: inf; it is more than 0 and at most 1000000000\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.script);
    options_.instrument = row.instrument;
    const ReplayRun run = Run(row.script);
    EXPECT_EQ(run.status, ExitStatus::ScriptError);
    EXPECT_EQ(run.complaints, row.complaint);
  }
}

TEST_F(TrainingRun, TheAccountTellsOfFaultsReasonsAndTheScore) {
  options_.format = OutputFormat::Text;
  const std::string account =
      Run(std::string(ToMainPage) + "instrument fault late HOME 5\nclick 0\ninstrument show\n" + Save).output;
  for (const char* told : {"planned fault: the answer comes 5 s late\n", "head: Tool, tip: none\n", " the ring\n",
                           "\nScore:\n  seed 1: the reference is at ", "saved value: position -3000, off by "}) {
    EXPECT_NE(account.find(told), std::string::npos) << told;
  }
}

}  // namespace
}  // namespace Helmsway
