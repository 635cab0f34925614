#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "bench/instrument/AcceptingInstrument.h"
#include "bench/instrument/SimulatedMarivane.h"

namespace Helmsway {
namespace {

using Result = Answer::Result;

MachineDescription ModelWithXAxis() {
  return {.hasSlider = true,
          .axes = {{Axis::X, {-100, 9000}},
                   {Axis::Y, {0, 7000}},
                   {Axis::Z, {-20000, -50}},
                   {Axis::S, {200, 4000}},
                   {Axis::SdX, {0, 800}},
                   {Axis::SdY, {-5, 600}}},
          .firmware = "2.10.33"};
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
    const auto answer = instrument.Execute(line);
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
    const auto answer = instrument.Execute(refusal.line);
    EXPECT_EQ(answer.result, Result::Refused);
    EXPECT_EQ(answer.reply, "");
    EXPECT_EQ(answer.reason, refusal.reason);
    EXPECT_TRUE(instrument.State() == stateBefore);
    EXPECT_EQ(instrument.CalibrationMemory(), memoryBefore);
  }
}

std::optional<std::int32_t> PositionOf(const SimulatedMarivane& instrument, Axis axis) {
  return instrument.State().axes.at(axis).position;
}

TEST(SimulatedMarivane, HomingPutsEachAxisAtZeroOrAsNearAsItsLimitsLetIt) {
  SimulatedMarivane instrument(ModelWithXAxis());
  for (const auto& [axis, state] : instrument.State().axes) EXPECT_EQ(state.position, std::nullopt) << NameOf(axis);
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
  EXPECT_EQ(instrument.Execute("STATUS SLIDER").reply, "SLIDER CLOSED");
  ExpectAccepted(instrument, {"MOVE SLIDER_OPEN"});
  EXPECT_EQ(instrument.Execute("STATUS SLIDER").reply, "SLIDER OPEN");
  ExpectAccepted(instrument, {"MOVE SLIDER_OPEN", "MOVE SLIDER_CLOSED"});
  EXPECT_EQ(instrument.Execute("STATUS SLIDER").reply, "SLIDER CLOSED");
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
  EXPECT_EQ(instrument.State().zCollisionDetection, CollisionDetection::On);
  ExpectAccepted(instrument, {"SET_SPEED S 300", "SET_SPEED Z 500", "HW_Z_COLLISION OFF", "HOME ALL"});
  EXPECT_EQ(instrument.State().axes.at(Axis::S).speed, 300);
  EXPECT_EQ(instrument.State().axes.at(Axis::Z).speed, 500);
  EXPECT_EQ(instrument.State().zCollisionDetection, CollisionDetection::Off);
  ExpectAccepted(instrument, {"SET_SPEED Z 1000", "HW_Z_COLLISION ON"});
  EXPECT_EQ(instrument.State().axes.at(Axis::S).speed, 300);
  EXPECT_EQ(instrument.State().axes.at(Axis::Z).speed, 1000);
  EXPECT_EQ(instrument.State().zCollisionDetection, CollisionDetection::On);
}

TEST(SimulatedMarivane, RevTellsTheFirmware) {
  EXPECT_EQ(SimulatedMarivane(ModelWithXAxis()).Execute("REV").reply, "MARIVANE 2.10.33");
  EXPECT_EQ(SimulatedMarivane({}).Execute("REV").reply, "MARIVANE");
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
  EXPECT_TRUE(instrument.State().pendingCalibration.empty());

  ExpectAccepted(instrument,
                 {"SET_CALIBRATION AspirateOrigin_8Ch_125_S 601", "SET_CALIBRATION AspirateOrigin_8Ch_125_S 602",
                  "SET_CALIBRATION AspirateOrigin_1Ch_12_S -4", "SET_CALIBRATION SAVE"});
  EXPECT_EQ(instrument.CalibrationMemory(), (CalibrationValues{{"AspirateOrigin_1Ch_12_S", "-4"},
                                                               {"AspirateOrigin_8Ch_125_S", "602"},
                                                               {"TipEject_8Ch_125_S", "-30"}}));
}

TEST(SimulatedMarivane, APowerCycleLeavesNothingButTheMemory) {
  SimulatedMarivane instrument(ModelWithXAxis());
  const auto fresh = instrument.State();
  ExpectAccepted(instrument,
                 {"HOME ALL", "MOVE Y 70", "MOVE SLIDER_OPEN", "SET_SPEED S 300", "HW_Z_COLLISION OFF",
                  "SET_CALIBRATION TipEject_8Ch_125_S -30", "SET_CALIBRATION SAVE",
                  "SET_CALIBRATION TipEject_8Ch_125_S -31", "SET_CALIBRATION AspirateOrigin_8Ch_125_S 600"});
  instrument.PowerCycle();
  EXPECT_TRUE(instrument.State() == fresh);
  ExpectRefused(instrument, {{"MOVE Y 70", "axis Y is not homed"}});

  ExpectAccepted(instrument, {"SET_CALIBRATION SAVE"});
  EXPECT_EQ(instrument.CalibrationMemory(), (CalibrationValues{{"TipEject_8Ch_125_S", "-30"}}));
}

TEST(AcceptingInstrument, AcceptsWhateverItGetsAndKeepsNothing) {
  AcceptingInstrument instrument;
  for (const char* line :
       {"MOVE Q x", "", "STATUS SLIDER", "SET_CALIBRATION TipEject_8Ch_125_S -30", "SET_CALIBRATION SAVE"}) {
    SCOPED_TRACE(line);
    const auto answer = instrument.Execute(line);
    EXPECT_EQ(answer.result, Result::Ok);
    EXPECT_EQ(answer.reply, "");
  }
  EXPECT_TRUE(instrument.CalibrationMemory().empty());
}

}  // namespace
}  // namespace Helmsway
