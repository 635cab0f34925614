#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bench/instrument/AcceptingInstrument.h"
#include "bench/instrument/SimulatedMarivane.h"
#include "tests/instrument/BenchModel.h"

namespace Helmsway {
namespace {

using Result = Answer::Result;

/// Limits of all kinds; no step has a length, so that nothing is in any way.
MachineDescription ModelWithXAxis() {
  MachineDescription model;
  model.hasSlider = true;
  model.axes = {{Axis::X, {-100, 9000}}, {Axis::Y, {0, 7000}},  {Axis::Z, {-20000, -50}},
                {Axis::S, {200, 4000}},  {Axis::SdX, {0, 800}}, {Axis::SdY, {-5, 600}}};
  model.firmware = "2.10.33";
  return model;
}

MachineDescription ModelWithoutXAxis() {
  auto model = ModelWithXAxis();
  model.hasSlider = false;
  model.axes.erase(Axis::X);
  return model;
}

void ExpectAccepted(SimulatedMarivane& instrument, std::initializer_list<const char*> lines) {
  for (const char* line : lines) {
    SCOPED_TRACE(line);
    const auto answer = Execute(instrument, line);
    EXPECT_EQ(answer.result, Result::Ok) << answer.reason;
    EXPECT_EQ(answer.reason, "");
  }
}

struct Refusal {
  const char* line;
  const char* reason;
};

/// A refusal gives a reason and no reply, and leaves all state as it was.
void ExpectRefused(SimulatedMarivane& instrument, const std::vector<Refusal>& refusals) {
  for (const Refusal& refusal : refusals) {
    SCOPED_TRACE(refusal.line);
    const auto stateBefore = instrument.State();
    const auto memoryBefore = instrument.CalibrationMemory();
    const auto answer = Execute(instrument, refusal.line);
    EXPECT_EQ(answer.result, Result::Refused);
    EXPECT_EQ(answer.reply, "");
    EXPECT_EQ(answer.reason, refusal.reason);
    EXPECT_TRUE(instrument.State() == stateBefore);
    EXPECT_EQ(instrument.CalibrationMemory(), memoryBefore);
  }
}

MachineState::AxisState StateOf(const SimulatedMarivane& instrument, Axis axis) {
  for (const auto& state : instrument.State().axes) {
    if (state.name == NameOf(axis)) return state;
  }
  return {};
}

std::optional<std::int32_t> PositionOf(const SimulatedMarivane& instrument, Axis axis) {
  return StateOf(instrument, axis).position;
}

TEST(SimulatedMarivane, HomingPutsEachAxisAtZeroOrAsNearAsItsLimitsLetIt) {
  SimulatedMarivane instrument(ModelWithXAxis());
  for (const auto& axis : instrument.State().axes) EXPECT_EQ(axis.position, std::nullopt) << axis.name;
  ExpectAccepted(instrument, {"HOME ALL"});
  EXPECT_EQ(PositionOf(instrument, Axis::X), 0);
  EXPECT_EQ(PositionOf(instrument, Axis::Y), 0);
  EXPECT_EQ(PositionOf(instrument, Axis::Z), -50) << "0 lies above the limits";
  EXPECT_EQ(PositionOf(instrument, Axis::S), 200) << "0 lies below the limits";
  EXPECT_EQ(PositionOf(instrument, Axis::SdX), 0);
  EXPECT_EQ(PositionOf(instrument, Axis::SdY), 0);

  ExpectAccepted(instrument, {"MOVE S 900", "MOVE Y 900", "HOME S"});
  EXPECT_EQ(PositionOf(instrument, Axis::S), 200);
  EXPECT_EQ(PositionOf(instrument, Axis::Y), 900);
}

TEST(SimulatedMarivane, AnAxisThatIsNotHomedDoesNotMove) {
  SimulatedMarivane instrument(ModelWithXAxis());
  ExpectRefused(instrument, {{"MOVE X 0", "axis X is not homed"},
                             {"MOVE S 500", "axis S is not homed"},
                             {"MOVE SD_Y 0", "axis SD_Y is not homed"}});
  ExpectAccepted(instrument, {"HOME S", "MOVE S 500"});
  ExpectRefused(instrument, {{"MOVE Z -16000", "axis Z is not homed"}});
}

TEST(SimulatedMarivane, AMoveReachesBothLimitsAndNotBeyond) {
  SimulatedMarivane instrument(ModelWithXAxis());
  ExpectAccepted(instrument, {"HOME ALL", "MOVE X -100", "MOVE Z -20000", "MOVE SD_X 0"});
  EXPECT_EQ(PositionOf(instrument, Axis::X), -100);
  EXPECT_EQ(PositionOf(instrument, Axis::Z), -20000);
  ExpectAccepted(instrument, {"MOVE X 9000", "MOVE Z -50", "MOVE SD_X 800", "MOVE SD_Y 600"});
  EXPECT_EQ(PositionOf(instrument, Axis::X), 9000);
  EXPECT_EQ(PositionOf(instrument, Axis::Z), -50);
  EXPECT_EQ(PositionOf(instrument, Axis::SdX), 800);
  EXPECT_EQ(PositionOf(instrument, Axis::SdY), 600);
  ExpectRefused(instrument, {{"MOVE X -101", "axis X can't go to -101, its limits are -100 and 9000"},
                             {"MOVE X 9001", "axis X can't go to 9001, its limits are -100 and 9000"},
                             {"MOVE Z -20001", "axis Z can't go to -20001, its limits are -20000 and -50"},
                             {"MOVE Z 0", "axis Z can't go to 0, its limits are -20000 and -50"},
                             {"MOVE SD_X 801", "axis SD_X can't go to 801, its limits are 0 and 800"},
                             {"MOVE SD_Y -6", "axis SD_Y can't go to -6, its limits are -5 and 600"}});
}

TEST(SimulatedMarivane, TheSliderIsClosedAtFirstAndTellsItsState) {
  SimulatedMarivane instrument(ModelWithXAxis());
  ExpectRefused(instrument, {{"MOVE SLIDER_OPEN", "the slider can't open: axis X is not homed"}});
  ExpectAccepted(instrument, {"HOME ALL"});
  EXPECT_EQ(Execute(instrument, "STATUS SLIDER").reply, "SLIDER CLOSED");
  ExpectAccepted(instrument, {"MOVE SLIDER_OPEN"});
  EXPECT_EQ(Execute(instrument, "STATUS SLIDER").reply, "SLIDER OPEN");
  ExpectAccepted(instrument, {"MOVE SLIDER_OPEN", "MOVE SLIDER_CLOSED"});
  EXPECT_EQ(Execute(instrument, "STATUS SLIDER").reply, "SLIDER CLOSED");
}

TEST(SimulatedMarivane, WhatTheModelLacksIsRefused) {
  SimulatedMarivane withoutXAxis(ModelWithoutXAxis());
  ExpectAccepted(withoutXAxis, {"HOME ALL", "MOVE Y 10"});
  ExpectRefused(withoutXAxis, {{"MOVE X 0", "this model has no axis X"},
                               {"MOVE SLIDER_OPEN", "this model has no slider"},
                               {"MOVE SLIDER_CLOSED", "this model has no slider"},
                               {"STATUS SLIDER", "this model has no slider"}});

  SimulatedMarivane withNothing({});
  ExpectAccepted(withNothing, {"HOME ALL"});
  ExpectRefused(withNothing, {{"HOME S", "this model has no axis S"},
                              {"SET_SPEED Z 500", "this model has no axis Z"},
                              {"HW_Z_COLLISION OFF", "this model has no axis Z"}});
}

TEST(SimulatedMarivane, AMalformedLineIsRefusedWithItsReason) {
  SimulatedMarivane instrument(ModelWithXAxis());
  ExpectAccepted(instrument, {"HOME ALL", "SET_CALIBRATION TipEject_8Ch_125_S -30"});
  ExpectRefused(instrument, {{"MOVEX 5", "unknown command \"MOVEX\""},
                             {"MOVE Y 12.5", "MOVE Y needs a whole number, not \"12.5\""},
                             {"SET_SPEED S 0", "SET_SPEED S needs a speed of 1 or more, not 0"},
                             {"SET_CALIBRATION SAVE 1", "nothing may follow SET_CALIBRATION SAVE, but \"1\" does"}});
}

TEST(SimulatedMarivane, SpeedsAndCollisionDetectionStayAsSet) {
  SimulatedMarivane instrument(ModelWithXAxis());
  EXPECT_TRUE(instrument.State().zCollisionDetection);
  ExpectAccepted(instrument, {"SET_SPEED S 300", "SET_SPEED Z 500", "HW_Z_COLLISION OFF", "HOME ALL"});
  EXPECT_EQ(StateOf(instrument, Axis::S).speed, 300);
  EXPECT_EQ(StateOf(instrument, Axis::Z).speed, 500);
  EXPECT_FALSE(instrument.State().zCollisionDetection);
  ExpectAccepted(instrument, {"SET_SPEED Z 1000", "HW_Z_COLLISION ON"});
  EXPECT_EQ(StateOf(instrument, Axis::S).speed, 300);
  EXPECT_EQ(StateOf(instrument, Axis::Z).speed, 1000);
  EXPECT_TRUE(instrument.State().zCollisionDetection);
}

std::string Reply(MachineDescription model, const char* line) {
  SimulatedMarivane instrument(std::move(model));
  return Execute(instrument, line).reply;
}

TEST(SimulatedMarivane, RevTellsTheFirmware) {
  EXPECT_EQ(Reply(ModelWithXAxis(), "REV"), "MARIVANE 2.10.33");
  EXPECT_EQ(Reply({}, "REV"), "MARIVANE");
}

TEST(SimulatedMarivane, SaveMergesThePendingValuesIntoTheMemory) {
  SimulatedMarivane instrument(ModelWithXAxis());
  ExpectAccepted(instrument, {"SET_CALIBRATION SAVE"});
  EXPECT_TRUE(instrument.CalibrationMemory().empty());

  ExpectAccepted(instrument,
                 {"SET_CALIBRATION TipEject_8Ch_125_S -30", "SET_CALIBRATION AspirateOrigin_8Ch_125_S 600"});
  EXPECT_TRUE(instrument.CalibrationMemory().empty());
  ExpectAccepted(instrument, {"SET_CALIBRATION SAVE"});
  EXPECT_EQ(instrument.CalibrationMemory(),
            (CalibrationValues{{"AspirateOrigin_8Ch_125_S", "600"}, {"TipEject_8Ch_125_S", "-30"}}));
  EXPECT_TRUE(instrument.State().pending.empty());

  ExpectAccepted(instrument,
                 {"SET_CALIBRATION AspirateOrigin_8Ch_125_S 601", "SET_CALIBRATION AspirateOrigin_8Ch_125_S 602",
                  "SET_CALIBRATION AspirateOrigin_1Ch_12_S -4", "SET_CALIBRATION SAVE"});
  EXPECT_EQ(instrument.CalibrationMemory(), (CalibrationValues{{"AspirateOrigin_1Ch_12_S", "-4"},
                                                               {"AspirateOrigin_8Ch_125_S", "602"},
                                                               {"TipEject_8Ch_125_S", "-30"}}));
}

TEST(SimulatedMarivane, APowerCycleLeavesTheMemoryAndWhatStandsWhere) {
  SimulatedMarivane instrument(ModelWithXAxis());
  auto expected = instrument.State();
  ExpectAccepted(instrument,
                 {"HOME ALL", "MOVE Y 7000", "MOVE SLIDER_OPEN", "SET_SPEED S 300", "HW_Z_COLLISION OFF",
                  "SET_CALIBRATION TipEject_8Ch_125_S -30", "SET_CALIBRATION SAVE",
                  "SET_CALIBRATION TipEject_8Ch_125_S -31", "SET_CALIBRATION AspirateOrigin_8Ch_125_S 600"});
  expected.time = instrument.State().time;
  for (auto& axis : expected.axes) axis.at = axis.name == "Y" ? 7000 : axis.at;
  expected.slider = "open";
  expected.memory = {{"TipEject_8Ch_125_S", "-30"}};
  instrument.PowerCycle();
  EXPECT_TRUE(instrument.State() == expected);
  ExpectRefused(instrument, {{"MOVE Y 70", "axis Y is not homed"}});
  ExpectAccepted(instrument, {"SET_CALIBRATION SAVE"});
  EXPECT_EQ(instrument.CalibrationMemory(), expected.memory);

  ExpectAccepted(instrument, {"HOME ALL"});
  instrument.Begin("MOVE Y 70");
  instrument.PowerCycle();
  EXPECT_EQ(instrument.End(false).result, Result::Failed);
  ExpectRefused(instrument, {{"MOVE Y 70", "axis Y is not homed"}});
}

TEST(SimulatedMarivane, InLocalModeItOnlyAnswersQuestions) {
  SimulatedMarivane instrument(ModelWithXAxis());
  instrument.SetRemote(false);
  ExpectAccepted(instrument, {"REV", "STATUS SLIDER"});
  for (const char* line : {"HOME ALL", "SET_SPEED S 300", "SET_CALIBRATION SAVE"}) {
    ExpectRefused(instrument, {{line, "the instrument is not in remote mode"}});
  }
  ExpectRefused(instrument, {{"REV 1", "nothing may follow REV, but \"1\" does"}});
  instrument.SetRemote(true);
  ExpectAccepted(instrument, {"HOME ALL"});
}

TEST(SimulatedMarivane, AMoveTakesTheTimeOfItsDistanceAndSpeed) {
  SimulatedMarivane instrument(BenchModel());
  struct Row {
    const char* line;
    double seconds;
  };
  for (const Row& row :
       {Row{"HOME ALL", 12}, Row{"MOVE X 500", 0.5}, Row{"MOVE X 500", 0}, Row{"MOVE X 100", 0.4},
        Row{"MOVE S -100", 0.5}, Row{"SET_SPEED S 50", 0}, Row{"MOVE S 0", 2}, Row{"MOVE SLIDER_OPEN", 2},
        Row{"MOVE SLIDER_OPEN", 0}, Row{"HOME S", 4}, Row{"MOVE X 30000", 0}, Row{"STATUS SLIDER", 0}}) {
    const Seconds before = instrument.State().time;
    instrument.Begin(row.line);
    EXPECT_NEAR(instrument.TimeToEnd(false).count(), row.seconds, 1e-9) << row.line;
    instrument.End(false);
    EXPECT_NEAR((instrument.State().time - before).count(), row.seconds, 1e-9) << row.line;
  }
  instrument.Pass(Seconds(0.25));
  EXPECT_NEAR(instrument.State().time.count(), 21.65, 1e-9);
}

TEST(SimulatedMarivane, TravelsTellTheWayOfEachAxisThatMoves) {
  SimulatedMarivane instrument(BenchModel());
  ExpectAccepted(instrument, {"HOME ALL", "MOVE X 500", "MOVE S -100"});
  using Travels = std::vector<Travel>;
  EXPECT_EQ(instrument.Travels(), Travels{}) << "no line is under way";
  instrument.Begin("MOVE S -300");
  EXPECT_EQ(instrument.Travels(), (Travels{{"S", -100, -300}}));
  instrument.Stall();
  EXPECT_EQ(instrument.Travels(), (Travels{{"S", -100, -200}})) << "it stalls half-way";
  EXPECT_EQ(instrument.TimeToEnd(false), Seconds{0.5});
  instrument.PowerCycle();
  EXPECT_EQ(instrument.Travels(), Travels{});
  EXPECT_EQ(instrument.TimeToEnd(false), Seconds{0});
  instrument.End(false);
  instrument.Begin("HOME ALL");
  EXPECT_EQ(instrument.Travels(),
            (Travels{{"X", 500, 0}, {"Y", 0, 0}, {"Z", 0, 0}, {"S", -100, 0}, {"SD_X", 0, 0}, {"SD_Y", 0, 0}}));
}

TEST(SimulatedMarivane, AStalledAxisStandsBetweenAndMustBeHomed) {
  SimulatedMarivane instrument(BenchModel());
  ExpectAccepted(instrument, {"HOME ALL", "MOVE X 100"});
  const Seconds before = instrument.State().time;
  instrument.Begin("MOVE X 1100");
  instrument.Stall();
  const auto answer = instrument.End(false);
  EXPECT_EQ(answer.result, Result::Refused);
  EXPECT_EQ(answer.reason, "axis X stalled half-way from 100 to 1100, and must be homed");
  EXPECT_NEAR((instrument.State().time - before).count(), 0.5, 1e-9);
  ExpectRefused(instrument, {{"MOVE X 100", "axis X is not homed"}});
  ExpectAccepted(instrument, {"MOVE Y 10"});

  // Announced between two lines, it waits for something that really moves; the way on begins at 600.
  ExpectAccepted(instrument, {"HOME ALL"});
  instrument.Stall();
  ExpectAccepted(instrument, {"STATUS SLIDER", "MOVE Y 0"});
  EXPECT_EQ(Execute(instrument, "MOVE Y 500").reason, "axis Y stalled half-way from 0 to 500, and must be homed");
  ExpectAccepted(instrument, {"MOVE X 100"});
}

TEST(AcceptingInstrument, AcceptsWhateverItGetsAndKeepsNothing) {
  AcceptingInstrument instrument;
  for (const char* line :
       {"MOVE Q x", "", "STATUS SLIDER", "SET_CALIBRATION TipEject_8Ch_125_S -30", "SET_CALIBRATION SAVE"}) {
    SCOPED_TRACE(line);
    const auto answer = Execute(instrument, line);
    EXPECT_EQ(answer.result, Result::Ok);
    EXPECT_EQ(answer.reply, "");
  }
  EXPECT_TRUE(instrument.CalibrationMemory().empty());
}

}  // namespace
}  // namespace Helmsway
