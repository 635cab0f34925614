#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>

#include "tests/host/TemporaryFolder.h"
#include "tests/replay/ReplayRun.h"

namespace Helmsway {

/// Whole transcripts of sequences, run against an instrument that accepts every line.
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
    configuration_.Write(
        "Marivane.ini",
        "[DeviceType]\nInstalled=2\nItem2=XY,True,text\nSDXYEncoderMMStepFactorOff=10\n[CageType]\nInstalled=1\nItem1="
        "Cage\n"
        "[Device_Type2_Cage1]\nAxis1=Z,0.125,1,2,800,0,9000,0,0,0,0,0,1,-1,-100\n"
        "Axis2=S,0.25,1,200,300,0,9000,0,0,0,0,0,1,-1,0\nAxis3=SDX,0.1,1,2,3,0,90,0,0,0,0,0,1,-1,0\n"
        "Axis4=SDY,0.1,1,2,3,0,90,0,0,0,0,0,1,-1,0\nAxis5=Y,0.1,1,2,3,0,9000,0,0,0,0,0,1,-1,0\n"
        "Axis6=X,0.1,1,2,3,0,9000,0,0,0,0,0,1,-1,50\n"
        "[Z_Calibration]\nMountHeight=100\nStageHeightLower=12\nStageHeightUpper=30\n"
        "HeadDepth_1ch_Short=15\nHeaddepth_1ch_Long=25\nHeadDepth_8ch=21\nHeadDepth_12ch=22\nHeadDepth_96_384=23\n"
        "HeadDepth_TeachTool_1Ch=12\nHeadDepth_TeachTool_96_384=13\n"
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
        "[PlateType]\nItem1=RackA,TIPRACK,8,12,14.5\nItem2=RackB,TIPRACK,8,12,20\n[Position_2]\n"
        "Item1=STAGE1,Upper,TIPRACK,1100,1200,10,11,12,13,14,15,False\nItem2=STAGE2,Free2,FREE,2100,2200,20,21,22,23,"
        "24,25,False\n"
        "Item3=STAGE3,Nest3,NEST,3100,3200,30,31,32,33,34,35,False\nItem4=STAGE4,Nest4,NEST,4100,4200,40,41,42,43,44,"
        "45,True\n"
        "Item5=STAGE5,Lower,TIPRACK,5100,5200,50,51,52,53,54,55,True\nItem6=STAGE6,Free6,FREE,6100,6200,60,61,62,63,64,"
        "65,False\n"
        "[Calibration_2]\nItem1=STAGE2,0,0,0,0,0,0,7.1,7.2\nItem2=STAGE6,0,0,0,0,0,0,8.1,8.25\n");
  }

  /// The transcript of a script after the actions in `before`. An accepted line is shown bare, any other line with its
  /// result. Events during a line come before it, indented.
  std::string Play(const std::string& before, const std::string& script) const {
    const ReplayRun run =
        RunScript(OptionsFor(configuration_.PathOf("")), before + "host read HelpContextID\n" + script);
    EXPECT_EQ(run.status, ExitStatus::Performed) << run.complaints;
    std::string transcript;
    bool lineUnderWay = false;
    for (const auto& [kind, text, members] : EventsOf(run.output)) {
      if (kind == "read") transcript.clear();
      if (kind == "send" || kind == "sent") lineUnderWay = kind == "send";
      if (kind == "sent") {
        const bool isOk = members["result"] == "ok";
        transcript += (isOk ? members["line"].get<std::string>() : text.substr(5)) + "\n";
      } else if (kind != "read" && kind != "send" && kind != "action" && kind != "active" && text != "stop false") {
        transcript += (lineUnderWay ? "  " : "") + text + "\n";
      }
      if (kind == "message") transcript += members["text"].get<std::string>() + "\n";
    }
    return transcript;
  }

  /// A script that runs before the presses common to all rows, and the whole transcript of both.
  struct Row {
    const char* name;
    std::string script;
    std::string transcript;
  };

  void ExpectAll(const std::string& before, const char* press, std::initializer_list<Row> rows) const {
    for (const Row& row : rows) EXPECT_EQ(Play(before, row.script + press), row.transcript) << row.name;
  }

  // Parts of scripts.

  /// The main page as designed, with the teach tool installed and nothing homed.
  const std::string MainPage = "click 10\ncheck chkToolInstalled\nclick 9\n";
  /// The main page where a head can be collected.
  const std::string NoHead = MainPage + "answer cancel\nclick 14\nclick 9\n";
  const std::string AnyPick = "pick cboTipRack 1\npick cboTipRack 0\n";  ///< resets the flags for homed and at the rack
  /// An empty list of heads; the installed head has a later number.
  const std::string NoHeads =
      "file remove HeadType Item1\nfile remove HeadType Item2\nfile remove HeadType Item3\n"
      "file remove HeadType Item4\n";
  const std::string NoXAxis = "file set DeviceType Item2 Y,False,text\n";
  const std::string ZCollision = "file set DeviceType ZCollisionStatus True\n";
  const std::string FarAway = "file set Z_Calibration MountHeight 1e12\n";  ///< beyond 32 bits
  /// The first nest where SD_X and an offset don't fit 32 bits.
  const std::string WideNest = "file set Position_2 Item3 STAGE3,Nest3,NEST,3100,3200,214748364,31,32,33,34,35,False\n";

  static std::string AxisZ(const std::string& step, const std::string& signs) {
    return "file set Device_Type2_Cage1 Axis1 Z," + step + ",1,2,800,0,9000,0,0,0,0,0," + signs + ",-100\n";
  }
  static std::string AxisS(const std::string& step, const std::string& signs) {
    return "file set Device_Type2_Cage1 Axis2 S," + step + ",1,200,300,0,9000,0,0,0,0,0," + signs + ",0\n";
  }
  const std::string ZReversed = AxisZ("0.125", "-1,1");
  const std::string NoZStep = AxisZ("0", "1,-1");

  static std::string Refuse(const std::string& line) { return "instrument refuse \"" + line + "\"\n"; }
  static std::string Stop(const std::string& line) { return "during \"" + line + "\" click 16\n"; }

  // Parts of transcripts.

  const std::string Homing = "status Home all\nstatus Homing all axes\nHOME ALL\nstatus\n";

  /// The transcript with replacements: "this>that|...". Each replaced text must occur exactly once.
  static std::string With(std::string text, std::string_view changes) {
    while (!changes.empty()) {
      const std::string_view change = changes.substr(0, changes.find('|'));
      changes.remove_prefix(std::min(change.size() + 1, changes.size()));
      const std::string_view from = change.substr(0, change.find('>'));
      const std::size_t at = text.find(from);
      EXPECT_TRUE(at != std::string::npos && text.find(from, at + 1) == std::string::npos) << from << " isn't one";
      if (at != std::string::npos) text.replace(at, from.size(), change.substr(from.size() + 1));
    }
    return text;
  }

  /// The transcript before that line.
  static std::string Before(const std::string& line, const std::string& text) {
    EXPECT_NE(text.find(line), std::string::npos) << line;
    return text.substr(0, text.find(line));
  }

  /// The transcript up to that line, which is refused, or during which the operator presses Stop.
  static std::string Refused(const std::string& line, const std::string& text) {
    return Before(line + "\n", text) + line + " refused\n";
  }
  static std::string Stopped(const std::string& line, const std::string& text, const std::string& result = "") {
    return Before(line + "\n", text) + "  stop true\n" + line + result + "\n";
  }

 private:
  TemporaryFolder configuration_;
};

}  // namespace Helmsway
