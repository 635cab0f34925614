#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "bench/instrument/DescribeMachine.h"
#include "tests/host/TemporaryFolder.h"
#include "tests/instrument/BenchModel.h"

namespace Helmsway {
namespace {

/// What stands on a stage position or in a slot.
std::string ContentsOf(const SimulatedMarivane& machine, const std::string& name) {
  for (const auto& place : machine.State().places) {
    if (place.name == name) return place.contents;
  }
  return "no such place";
}

/// A machine that has been homed and brought into some state by lines that it must accept. A line "rack" puts the rack
/// with its tips on stage 1, "tool" the teach tool on the module.
class Prepared {
 public:
  explicit Prepared(const std::vector<std::string>& lines, MachineDescription model = BenchModel())
      : machine(std::move(model)) {
    Do({"HOME ALL"});
    Do(lines);
  }

  void Do(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
      if (line == "rack") {
        machine.LoadRack("1", "1", "1");
      } else if (line == "rack of long tips") {
        machine.LoadRack("1", "1", "2");
      } else if (line == "tool") {
        machine.PutOnModule("1");
      } else {
        EXPECT_EQ(Execute(machine, line).reason, "") << line;
      }
    }
  }

  SimulatedMarivane machine;
};

const std::vector<std::string> OverRack{"rack", "MOVE X 1000", "MOVE Y 1000"};
const std::vector<std::string> OverSlot1{"MOVE X 1000", "MOVE Y 5000"};
const std::vector<std::string> OverEjectPlace{"MOVE X 5000", "MOVE Y 1000"};
const std::vector<std::string> OverSlot2{"MOVE X 1000", "MOVE Y 5000", "MOVE SD_X 200"};

std::vector<std::string> operator+(std::vector<std::string> left, const std::vector<std::string>& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

TEST(Handling, HarmIsRefusedJustBehindTheBorderAndWithItsReason) {
  struct Row {
    std::vector<std::string> before;
    const char* allowed;
    std::vector<std::string> then;  ///< between the line that is allowed and the one that is refused
    const char* refused;
    const char* reason;
  };
  const std::vector<Row> rows{
      // The slider.
      {{"MOVE X 100"},
       "MOVE SLIDER_OPEN",
       {"MOVE SLIDER_CLOSED", "MOVE X 101"},
       "MOVE SLIDER_OPEN",
       "the slider can't open: axis X is at 101, its safe position is 100"},
      {{"MOVE X 100", "MOVE SLIDER_OPEN", "MOVE X 900", "MOVE Z -10"},
       "MOVE SLIDER_CLOSED",
       {"MOVE X 100", "MOVE SLIDER_OPEN", "MOVE X 900", "MOVE Z -11"},
       "MOVE SLIDER_CLOSED",
       "the slider can't close: axis X is at 900, its safe position is 100"},
      {{"MOVE X 100", "MOVE Z -1950"},
       "MOVE SLIDER_OPEN",
       {"MOVE Z -1952"},
       "MOVE SLIDER_CLOSED",
       "the slider can't close: Short hangs 0.2 mm below its level, axis Z is at -1952"},
      // Sideways.
      {{"rack", "MOVE Y 1000", "MOVE Z -1450"},
       "MOVE X 2000",
       {"MOVE X 100", "MOVE Z -1452"},
       "MOVE X 1000",
       "axis X can't go to 1000: Short hangs 0.2 mm too low for Rack on Stage 1, axis Z is at -1452"},
      {{"rack", "MOVE Y 1000", "MOVE Z -1452"},
       "MOVE X 350",
       {},
       "MOVE X 370",
       "axis X can't go to 370: Short hangs 0.2 mm too low for Rack on Stage 1, axis Z is at -1452"},
      {OverSlot2 + std::vector<std::string>{"MOVE SD_Y 300", "MOVE Z -1235"},
       "MOVE SD_Y 0",
       {"MOVE SD_Y 300", "MOVE Z -1237"},
       "MOVE SD_Y 0",
       "axis SD_Y can't go to 0: Short hangs 0.2 mm too low for Eight in Nest, slot 2, axis Z is at -1237"},
      // Down.
      {OverRack,
       "MOVE Z -1560",
       {},
       "MOVE Z -1597",
       "axis Z can't go to -1597: it would run Short 0.2 mm into the tips of Rack on Stage 1"},
      {OverRack + std::vector<std::string>{"MOVE Z -1580", "MOVE Z 0"},
       "MOVE Z -1465",
       {},
       "MOVE Z -1467",
       "axis Z can't go to -1467: it would run Tip on Short 0.2 mm into the tips of Rack on Stage 1"},
      {OverRack + std::vector<std::string>{"rack of long tips"},
       "MOVE Z -1564",
       {},
       "MOVE Z -1566",
       "axis Z can't go to -1566: it would run Short 16.6 mm into the stage at Stage 1"},
      {OverRack + std::vector<std::string>{"tool"},
       "MOVE Z -1430",
       {},
       "MOVE Z -1432",
       "axis Z can't go to -1432: it would run Tool 0.2 mm into the rim of Rack on Stage 1"},
      {{"MOVE X 3000", "MOVE Y 1000"},
       "MOVE Z -1950",
       {},
       "MOVE Z -1952",
       "axis Z can't go to -1952: it would run Short 0.2 mm into the closed slider over Stage 4"},
      {{"MOVE X 100", "MOVE SLIDER_OPEN", "MOVE X 3000", "MOVE Y 1000"},
       "MOVE Z -2350",
       {},
       "MOVE Z -2352",
       "axis Z can't go to -2352: it would run Short 0.2 mm into the stage at Stage 4"},
      {OverSlot1,
       "MOVE Z -1815",
       {},
       "MOVE Z -1817",
       "axis Z can't go to -1817: it would run Short 0.2 mm into the seat of Nest, slot 1"},
      {OverSlot2,
       "MOVE Z -1250",
       {},
       "MOVE Z -1252",
       "axis Z can't go to -1252: it would run Short 0.2 mm into Eight in Nest, slot 2"},
      // Letting go.
      {OverSlot2 + std::vector<std::string>{"HW_Z_COLLISION OFF", "MOVE Z -1790", "HW_Z_COLLISION ON"},
       "MOVE S -349",
       {},
       "MOVE S -350",
       "axis S can't go to -350: this ejects Short, and Eight stands in Nest, slot 2"},
      {OverEjectPlace + std::vector<std::string>{"MOVE S -350", "tool"},
       "MOVE S -349",
       {},
       "MOVE S -350",
       "axis S can't go to -350: this ejects Tool, and Short lies on Stage 6"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.reason);
    Prepared prepared(row.before + std::vector<std::string>{row.allowed} + row.then);
    const auto before = prepared.machine.State();
    const auto answer = Execute(prepared.machine, row.refused);
    EXPECT_EQ(answer.result, Answer::Result::Refused);
    EXPECT_EQ(answer.reason, row.reason);
    const auto after = prepared.machine.State();
    EXPECT_EQ(after.time, before.time);
    EXPECT_EQ(after.head + after.slider, before.head + before.slider);
    for (std::size_t i = 0; i < after.axes.size(); ++i) EXPECT_EQ(after.axes[i].position, before.axes[i].position);
  }
}

TEST(Handling, HeadsAndTipsComeAndGoWithTheMoves) {
  const auto withTip = OverRack + std::vector<std::string>{"MOVE Z -1580", "MOVE Z 0"};
  const auto inSlot = OverSlot1 + std::vector<std::string>{"MOVE Z -1790", "MOVE S -400", "MOVE Z 0"};
  struct Row {
    std::vector<std::string> lines;
    const char* head;
    const char* tip;
    const char* slot1;
    const char* stage6;
  };
  const std::vector<Row> rows{
      {{}, "Short", "", "empty", "empty"},
      // A tip comes on to the head 8 mm below the rim, 1.5 mm sooner or later, and only exactly over its place.
      {OverRack + std::vector<std::string>{"MOVE Z -1566"}, "Short", "Tip", "empty", "empty"},
      {OverRack + std::vector<std::string>{"MOVE Z -1594"}, "Short", "Tip", "empty", "empty"},
      {OverRack + std::vector<std::string>{"MOVE Z -1564"}, "Short", "", "empty", "empty"},
      // It goes on the half of the stroke from -294 to -334, where it hangs in the rack.
      {withTip + std::vector<std::string>{"MOVE Z -1460", "MOVE S -313"}, "Short", "Tip", "empty", "empty"},
      {withTip + std::vector<std::string>{"MOVE Z -1460", "MOVE S -314"}, "Short", "", "empty", "empty"},
      {withTip + std::vector<std::string>{"MOVE S -400"}, "Short", "Tip", "empty", "empty"},
      {withTip + std::vector<std::string>{"MOVE S -400", "MOVE Z -1460", "MOVE S -320"}, "Short", "Tip", "empty",
       "empty"},
      // A head stays in its slot from 1.5 mm above the seat at 121 mm, half-way to its eject position.
      {OverSlot1 + std::vector<std::string>{"MOVE Z -1776", "MOVE S -350"}, "", "", "Short", "empty"},
      {OverSlot1 + std::vector<std::string>{"MOVE Z -1776", "MOVE S -349"}, "Short", "", "empty", "empty"},
      {OverSlot1 + std::vector<std::string>{"MOVE Z -1774", "MOVE S -400"}, "Short", "", "empty", "empty"},
      {OverSlot1 + std::vector<std::string>{"MOVE S -400", "MOVE Z -1790", "MOVE S -400"}, "", "", "Short", "empty"},
      // It is collected at 120 mm.
      {inSlot + std::vector<std::string>{"MOVE Z -1784"}, "", "", "Short", "empty"},
      {inSlot + std::vector<std::string>{"MOVE Z -1786"}, "Short", "", "empty", "empty"},
      // Over the stage position for ejected heads, from any height, and its tip goes with it.
      {withTip + OverEjectPlace + std::vector<std::string>{"MOVE S -350"}, "", "", "empty", "Short"},
      {OverEjectPlace + std::vector<std::string>{"MOVE X 5009", "MOVE S -350"}, "", "", "empty", "Short"},
      {OverEjectPlace + std::vector<std::string>{"MOVE X 5011", "MOVE S -350"}, "Short", "", "empty", "empty"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.lines));
    const Prepared prepared(row.lines);
    EXPECT_EQ(prepared.machine.State().head, row.head);
    EXPECT_EQ(prepared.machine.State().tip, row.tip);
    EXPECT_EQ(ContentsOf(prepared.machine, "Nest, slot 1"), row.slot1);
    EXPECT_EQ(ContentsOf(prepared.machine, "Stage 6"), row.stage6);
    EXPECT_TRUE(prepared.machine.State().damage.empty());
  }
}

TEST(Handling, WithoutCollisionDetectionTheRunIsAllowedAndTheDamageRemembered) {
  Prepared prepared(OverSlot2 + std::vector<std::string>{"HW_Z_COLLISION OFF", "MOVE Z -1252", "MOVE Z 0"});
  EXPECT_EQ(prepared.machine.State().damage,
            (std::vector<std::string>{"MOVE Z -1252 ran Short 0.2 mm into Eight in Nest, slot 2"}));
}

TEST(Handling, TheOperatorSwapsHeadsByHand) {
  Prepared prepared({});
  SimulatedMarivane& machine = prepared.machine;
  EXPECT_EQ(ContentsOf(machine, "Nest, slot 1"), "empty") << "the slot of the teach tool waits for it";
  EXPECT_EQ(ContentsOf(machine, "Nest, slot 2"), "Eight") << "the first head of its shape";
  machine.PutOnModule("1");
  EXPECT_EQ(machine.State().head, "Tool");
  machine.PutInNest("1", "4");
  EXPECT_EQ(ContentsOf(machine, "Nest, slot 2"), "Spare");
  machine.PutInNest("1", "1");
  EXPECT_EQ(machine.State().head, "Tool") << "it stays on the module";
  EXPECT_EQ(ContentsOf(machine, "Nest, slot 1"), "empty");

  prepared.Do(OverSlot1 + std::vector<std::string>{"MOVE Z -1780", "MOVE S -400", "MOVE Z 0"});
  EXPECT_EQ(ContentsOf(machine, "Nest, slot 1"), "Tool");
  machine.PutOnModule("1");
  EXPECT_EQ(machine.State().head, "") << "it has been put away";

  machine.PutOnModule("2");
  prepared.Do({"MOVE S 0"});
  prepared.Do(OverEjectPlace + std::vector<std::string>{"MOVE SD_X 0", "MOVE S -400"});
  EXPECT_EQ(ContentsOf(machine, "Stage 6"), "Short");
  machine.ClearStage("STAGE6");
  EXPECT_EQ(ContentsOf(machine, "Stage 6"), "empty");
}

TEST(Handling, WithNoHeadRegisteredTheTeachToolIsOnTheModule) {
  auto model = BenchModel();
  model.installedHead = "0";
  EXPECT_EQ(SimulatedMarivane(model).State().head, "Tool");
}

TEST(Handling, ACalibratedEjectPositionLetsGoAsTheOldOneDoes) {
  const TemporaryFolder folder;
  const auto headLine = [](int s, int eject) {
    return "[HeadType]\nInstalled=1\nItem1=Short,SERIALDILUTE,0,30,0,1,0,1,1,1," + std::to_string(eject) + ",0," +
           std::to_string(s) + ",4,0,0,1_CH_SHORT,1,x,1,0\n";
  };
  const std::string rest =
      "[DeviceType]\nInstalled=1\nItem1=Model,False,x\nSDXYEncoderMMStepFactorOff=10\n[CageType]\nInstalled=1\n"
      "[Device_Type1_Cage1]\nAxis1=Y,0.1,1,100,1,0,9000,0,0,0,0,0,1,-1,0\nAxis2=Z,0.1,1,100,1,-3000,50,0,0,0,0,0,1,-1,"
      "0\n"
      "Axis3=S,0.1,1,100,1,-5000,50,0,0,0,0,0,1,-1,0\n"
      "[Position_1]\nItem1=STAGE2,Stage "
      "2,PLATE,0,700,9,9,9,9,9,9,False\n[Calibration_1]\nItem1=STAGE2,0,0,0,0,0,0,0,0\n";
  for (const int ejectPosition : {-400, -250}) {
    const std::string file = folder.Write("Marivane.ini", rest + headLine(-300, -400));
    SimulatedMarivane machine(DescribeMachine(file));
    EXPECT_EQ(machine.State().head, "Short");
    folder.Write("Marivane.ini", rest + headLine(-150, -250));
    for (const std::string& line : {std::string("HOME ALL"), std::string("MOVE Y 700")}) Execute(machine, line);
    Execute(machine, "MOVE S -199");
    EXPECT_EQ(machine.State().head, "Short") << "neither is half-way";
    EXPECT_EQ(Execute(machine, "MOVE S " + std::to_string(ejectPosition)).reason, "");
    EXPECT_EQ(machine.State().head, "");
    EXPECT_EQ(ContentsOf(machine, "Stage 2"), "Short");
  }
}

}  // namespace
}  // namespace Helmsway
