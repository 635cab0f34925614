#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "tests/host/TemporaryFolder.h"
#include "tests/replay/ReplayRun.h"

namespace Helmsway {

/// Whole transcripts of sequences, played against an instrument that accepts every line.
///
/// The instrument of the configuration has an X axis. A step of Z is 0.125 mm, up is positive; a step of S is 0.25 mm,
/// so that the teach tool offset is 40 steps; serial-dilute values are multiplied by 10. The heads One, Eight and
/// Twelve, the teach tool's and the tip's depth in Z steps, counted from 100 mm:
///
///     upper stage   bare -563   One -443   Eight -395   Twelve -387   ninety-six -563   teach tool -467
///     lower stage   bare -707   One -587
///     with the tip, or at the depth at which one is mounted, 64 or 40 more
class SequenceTest : public testing::Test {
 protected:
  SequenceTest() {
    configuration_.Write("Marivane.ini",
                         "[DeviceType]\nInstalled=2\nItem2=XY,True,text\nSDXYEncoderMMStepFactorOff=10\n"
                         "[CageType]\nInstalled=1\nItem1=Cage\n"
                         "[Device_Type2_Cage1]\n"
                         "Axis1=Z,0.125,1,2,800,0,9000,0,0,0,0,0,1,-1,-100\n"
                         "Axis2=S,0.25,1,200,300,0,9000,0,0,0,0,0,1,-1,0\n"
                         "Axis3=SDX,0.1,1,2,3,0,90,0,0,0,0,0,1,-1,0\n"
                         "Axis4=SDY,0.1,1,2,3,0,90,0,0,0,0,0,1,-1,0\n"
                         "Axis5=Y,0.1,1,2,3,0,9000,0,0,0,0,0,1,-1,0\n"
                         "Axis6=X,0.1,1,2,3,0,9000,0,0,0,0,0,1,-1,50\n"
                         "[Z_Calibration]\nMountHeight=100\nStageHeightLower=12\nStageHeightUpper=30\n"
                         "HeadDepth_1ch_Short=15\nHeaddepth_1ch_Long=25\nHeadDepth_8ch=21\nHeadDepth_12ch=22\n"
                         "HeadDepth_96_384=23\nHeadDepth_TeachTool_1Ch=12\nHeadDepth_TeachTool_96_384=13\n"
                         "NestDepth_Y=6\nNestDepth_XY_6=7\nTipMountDepth30=5\nDeltaZ=3\n"
                         "[HeadType]\nInstalled=5\nSDTeachToolOffsetMM=10\n"
                         "Item1=One,SERIALDILUTE,0,30,0,1,0,0,0,0,900,0,500,2.5,5,7,1_CH_SHORT,0,,0,0\n"
                         "Item2=Eight,SERIALDILUTE,0,30,0,8,0,0,0,0,910,0,510,2.5,6,8,8_CH,0,,0,0\n"
                         "Item3=Twelve,SERIALDILUTE,0,30,0,12,0,0,0,0,920,0,520,2.5,0,-4,12_CH,0,,0,0\n"
                         "Item4=Many,SERIALDILUTE,0,30,0,96,0,0,0,0,930,0,530,2.5,0,0,96_CH,0,,0,0\n"
                         "Item5=Tool,CALIBRATE,0,30,0,1,0,0,0,0,700,0,480,0,9,0,1_CH_SHORT,0,,0,0\n"
                         "[NestType]\nInstalled=1\n"
                         "Item1=NestA,STAGE3,One,1_CH_SHORT,0,1,2,0.5,Eight,8_CH,0,3,4,0.75,Rest,REST,0,5,6,1\n"
                         "Item2=NestB,STAGE4,Any,OTHER,0,7,8,1.25,Eight,8_CH,0,9,10,1.5,Rest,REST,0,11,12,1.75\n"
                         "[TipType]\nInstalled=1\nItem1=Long,SERIALDILUTE,0,0,0,0,0,6,3,0,8\n"
                         "[PlateType]\nItem1=RackA,TIPRACK,8,12,14.5\nItem2=RackB,TIPRACK,8,12,20\n"
                         "[Position_2]\n"
                         "Item1=STAGE1,Upper,TIPRACK,1100,1200,10,11,12,13,14,15,False\n"
                         "Item2=STAGE2,Free2,FREE,2100,2200,20,21,22,23,24,25,False\n"
                         "Item3=STAGE3,Nest3,NEST,3100,3200,30,31,32,33,34,35,False\n"
                         "Item4=STAGE4,Nest4,NEST,4100,4200,40,41,42,43,44,45,True\n"
                         "Item5=STAGE5,Lower,TIPRACK,5100,5200,50,51,52,53,54,55,True\n"
                         "Item6=STAGE6,Free6,FREE,6100,6200,60,61,62,63,64,65,False\n"
                         "[Calibration_2]\n"
                         "Item1=STAGE2,0,0,0,0,0,0,7.1,7.2\nItem2=STAGE6,0,0,0,0,0,0,8.1,8.25\n");
  }

  /// What a script gives behind the actions that come before it, as text: a line that goes through stands bare, one
  /// that doesn't with its result, one during which something happens around what happens.
  std::string Play(const std::string& before, const std::string& script) const {
    const ReplayRun run =
        RunScript(OptionsFor(configuration_.PathOf("")), before + "host read HelpContextID\n" + script);
    EXPECT_EQ(run.status, ExitStatus::Performed) << run.complaints;
    return TranscriptBehindTheRead(run.output);
  }

  /// A script in front of what every row presses, and the whole transcript of both.
  struct Row {
    const char* name;
    std::string script;
    std::string transcript;
  };

  void ExpectAll(const std::string& before, const char* press, std::initializer_list<Row> rows) const {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.name);
      EXPECT_EQ(Play(before, row.script + press), row.transcript);
    }
  }

  // Parts of scripts.

  /// The main page as designed, with the teach tool installed and nothing homed.
  static constexpr const char* MainPage = "click 10\ncheck chkToolInstalled\nclick 9\n";
  /// The main page where a head can be collected.
  static constexpr const char* NoHead = "click 10\ncheck chkToolInstalled\nclick 9\nanswer cancel\nclick 14\nclick 9\n";
  static constexpr const char* NoXAxis = "file set DeviceType Item2 Y,False,text\n";
  static constexpr const char* ZCollision = "file set DeviceType ZCollisionStatus True\n";
  static constexpr const char* NoZStep = "file set Device_Type2_Cage1 Axis1 Z,0,1,2,800,0,9000,0,0,0,0,0,1,-1,-100\n";
  static constexpr const char* ZReversed =
      "file set Device_Type2_Cage1 Axis1 Z,0.125,1,2,800,0,9000,0,0,0,0,0,-1,1,-100\n";
  static constexpr const char* NoAxes = "file remove Device_Type2_Cage1 Axis1\n";

  static constexpr const char* Homing = "status Home all\nstatus Homing all axes\nHOME ALL\nstatus cleared\n";

  /// The transcript with other lines in place of some. Each must be there, once.
  static std::string Changed(std::string text,
                             std::initializer_list<std::pair<std::string_view, std::string_view>> changes) {
    for (const auto& [from, to] : changes) {
      const std::size_t at = text.find(from);
      EXPECT_NE(at, std::string::npos) << from;
      if (at == std::string::npos) continue;
      EXPECT_EQ(text.find(from, at + 1), std::string::npos) << from << " isn't the only one";
      text.replace(at, from.size(), to);
    }
    return text;
  }

  /// The transcript in front of that line.
  static std::string Before(std::string_view line, const std::string& text) {
    const std::size_t at = text.find(line);
    EXPECT_NE(at, std::string::npos) << line;
    return text.substr(0, at);
  }

  /// A line during which the operator presses Stop.
  static std::string Stopped(const std::string& line, const std::string& result = "") {
    return line + " ...\n  stop\n... " + line + result + "\n";
  }

 private:
  using Json = nlohmann::ordered_json;

  static std::string Described(const Json& event) {
    const std::string kind = event["event"];
    const auto word = [&](const char* name) { return event[name].get<std::string>(); };
    if (kind == "status") return word("text").empty() ? "status cleared" : "status " + word("text");
    if (kind == "stop") return event["value"] ? "stop" : "";
    if (kind == "write") return "write [" + word("section") + "] " + word("key") + "=" + word("value");
    if (kind == "ignored") return "ignored " + word("action");
    if (kind == "form") return "current " + word("current");
    if (kind == "message") {
      return "message \"" + word("title") + "\" " + word("buttons") + " " + word("icon") + " " + word("answer") + "\n" +
             word("text");
    }
    return kind == "action" || kind == "active" ? "" : kind;
  }

  static std::string TranscriptBehindTheRead(const std::string& trace) {
    std::istringstream lines(trace);
    std::string transcript;
    std::string line;
    while (std::getline(lines, line) && Json::parse(line)["event"] != "read") continue;
    std::string pending;  // a line under way during which nothing has happened yet
    bool nested = false;
    while (std::getline(lines, line)) {
      const Json event = Json::parse(line);
      if (event["event"] == "send") {
        pending = event["line"];
      } else if (event["event"] == "sent") {
        const std::string result = event["result"];
        transcript += (nested ? "... " : "") + event["line"].get<std::string>();
        transcript += result == "ok" ? "\n" : " " + result + "\n";
        pending.clear();
        nested = false;
      } else if (const std::string text = Described(event); !text.empty()) {
        if (!pending.empty()) {
          transcript += pending + " ...\n";
          pending.clear();
          nested = true;
        }
        transcript += (nested ? "  " : "") + text + "\n";
      }
    }
    return transcript;
  }

  TemporaryFolder configuration_;
};

}  // namespace Helmsway
