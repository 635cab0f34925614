#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "bench/instrument/TrainingInstrument.h"
#include "tests/instrument/FakeMachine.h"

namespace Helmsway {
namespace {

using Result = Answer::Result;

/// 0.1 mm is four steps, whichever way the axis goes.
SyringeDescription Syringe(std::int32_t upSign = 1) {
  return {.mmPerStep = 0.025,
          .lowLimit = -7000,
          .highLimit = 100,
          .upSign = upSign,
          .onRecord = -3000,
          .toolOffset = 50,
          .toolName = "Tool"};
}

TEST(SyringeTruth, LiesWithinReachOfSmallJogsAndDiffersFromSeedToSeed) {
  std::set<double> references;
  for (std::uint32_t seed = 0; seed < 200; ++seed) {
    const double reference = SyringeTruth(Syringe(), {seed}).Reference();
    EXPECT_EQ(reference, SyringeTruth(Syringe(), {seed}).Reference());
    references.insert(reference);
    const double jogs = (reference + 3000) / 4;
    EXPECT_LE(std::abs(jogs - std::round(jogs)), 0.25) << seed;
    EXPECT_GE(std::abs(std::round(jogs)), 3) << seed;
    EXPECT_LE(std::abs(jogs) * 4 * 0.025, 2.5) << seed;

    SyringeDescription atTheEnd = Syringe();
    atTheEnd.onRecord = atTheEnd.highLimit;
    EXPECT_LE(SyringeTruth(atTheEnd, {seed}).Reference(), 100) << seed;
  }
  EXPECT_EQ(references.size(), 200U);
}

TEST(SyringeTruth, TheEdgeFollowsTheAxisWithinPlayAndScatter) {
  for (const std::int32_t upSign : {1, -1}) {
    std::set<double> homings;
    SyringeTruth truth(Syringe(upSign), {7});
    EXPECT_EQ(truth.Edge(), std::nullopt);
    for (int round = 0; round < 20; ++round) {
      truth.Homed(0);
      double steps[2];
      for (int side = 0; side < 2; ++side) {
        truth.MovedTo(side == 0 ? -4000 : 0);
        truth.MovedTo(-3000);
        steps[side] = *truth.Edge() / 0.025 * upSign;
        EXPECT_NEAR(steps[side], -3000 - truth.Reference(), 0.6);
      }
      // From above the edge is held higher than from below, by the play.
      EXPECT_GE(steps[1] - steps[0], 0.2);
      EXPECT_LE(steps[1] - steps[0], 0.6);
      homings.insert(steps[0]);
    }
    EXPECT_EQ(homings.size(), 20U) << "each homing has its own scatter";
    truth.PositionLost();
    EXPECT_EQ(truth.Edge(), std::nullopt);
  }
}

TEST(SyringeTruth, StepsGetLostOnlyOnRequestAndUntilTheNextHoming) {
  for (const LostSteps losses : {LostSteps::None, LostSteps::Some}) {
    SyringeTruth truth(Syringe(), {3, losses});
    truth.Homed(0);
    for (std::int32_t position = 0; position >= -3000; position -= 10) truth.MovedTo(position);
    const double deviation = *truth.Edge() / 0.025 - (-3000 - truth.Reference());
    // 300 moves downward: 30 of them are short, by 1 to 3 steps.
    if (losses == LostSteps::None) {
      EXPECT_LE(std::abs(deviation), 0.6);
    } else {
      EXPECT_GT(deviation, 15);
      EXPECT_LT(deviation, 120);
    }
    truth.Homed(0);
    EXPECT_NEAR(*truth.Edge() / 0.025, -truth.Reference(), 0.3);
  }
}

class Training : public testing::Test {
 protected:
  Training() {
    auto owned = std::make_unique<FakeMachine>("Tool");
    machine_ = owned.get();
    instrument_ = std::make_unique<TrainingInstrument>(std::move(owned), Syringe(), TrainingSeed{});
  }

  Answer Send(std::string_view line, bool stopRequested = false) {
    instrument_->Begin(line);
    return instrument_->End(stopRequested);
  }

  FakeMachine* machine_ = nullptr;
  std::unique_ptr<TrainingInstrument> instrument_;
};

TEST_F(Training, EachFaultDoesItsHarmOnceAndToOneLine) {
  struct Row {
    const char* name;
    Fault fault;
    Result result;
    const char* reason;
    bool arrives;
    double seconds;  // that the line takes; the machine itself takes one
  };
  const Row rows[] = {
      {"refuse", {FaultKind::Refuse, "STATUS"}, Result::Refused, "planned fault: the line is refused", false, 0},
      {"fail", {FaultKind::Fail, "STATUS"}, Result::Failed, "planned fault: the sending fails", false, 0},
      {"late", {FaultKind::Late, "", 1, Seconds{5}}, Result::Ok, "", true, 6},
      {"silent",
       {FaultKind::Silent, "", 1, Seconds{7}},
       Result::Failed,
       "planned fault: no answer within 7 s",
       false,
       7},
      {"garble", {FaultKind::Garble, "STATUS"}, Result::Ok, "", true, 1},
      {"power", {FaultKind::PowerCycle, "STATUS"}, Result::Failed, "off", true, 0},
      {"link",
       {FaultKind::Link, "", 1, Seconds{2}},
       Result::Failed,
       "planned fault: the link was lost before the answer came",
       true,
       1},
  };
  std::uint32_t number = 0;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Fault fault = row.fault;
    if (fault.number != 0)
      fault.number = ++number;
    else
      ++number;
    ASSERT_TRUE(instrument_->Plan(fault));
    machine_->Notes.clear();
    const Seconds before = machine_->State().time;
    instrument_->Begin("STATUS SLIDER");
    EXPECT_DOUBLE_EQ(instrument_->TimeToEnd(false).count(), row.seconds);
    const Answer answer = instrument_->End(false);
    EXPECT_EQ(answer.result, row.result);
    EXPECT_EQ(answer.reason, row.reason);
    EXPECT_EQ(machine_->Notes.size(), row.arrives ? 1U : 0U);
    EXPECT_DOUBLE_EQ((machine_->State().time - before).count(), row.seconds);
    if (row.fault.kind == FaultKind::Garble) {
      EXPECT_EQ(answer.reply.size(), std::string_view("SLIDER CLOSED").size());
      EXPECT_EQ(answer.reply.find_first_of("CO"), std::string::npos) << answer.reply;
    }
    while (!instrument_->TryLink()) continue;
    EXPECT_EQ(Send("STATUS SLIDER").reply, "SLIDER CLOSED") << "each fault strikes once";
    ++number;
  }
}

TEST_F(Training, ALostLinkCostsASecondForEachTryInVain) {
  ASSERT_TRUE(instrument_->Plan({FaultKind::Link, "HOME", 0, Seconds{2.5}}));
  instrument_->Begin("HOME S");
  EXPECT_FALSE(instrument_->TryLink()) << "it is lost from the line's begin";
  instrument_->End(false);
  EXPECT_NE(instrument_->Look().edge, std::nullopt) << "the line has been carried out";
  int inVain = 0;
  while (!instrument_->TryLink()) ++inVain;
  EXPECT_EQ(inVain, 3);
  EXPECT_DOUBLE_EQ(machine_->State().time.count(), 1 + 3);
}

TEST_F(Training, SilenceEndsWithStopAndWithAPowerCycle) {
  for (const bool stop : {true, false}) {
    ASSERT_TRUE(instrument_->Plan({FaultKind::Silent, "HOME", 0, Seconds{60}}));
    instrument_->Begin("HOME S");
    if (!stop) instrument_->PowerCycle();
    EXPECT_EQ(instrument_->TimeToEnd(stop), Seconds{0});
    EXPECT_EQ(instrument_->End(stop).result, Result::Failed);
    EXPECT_EQ(machine_->State().time, Seconds{0});
  }
}

TEST_F(Training, WhatComesTooLateIsTurnedDown) {
  const double first = instrument_->CurrentScore().reference;
  EXPECT_TRUE(instrument_->Reseed({2}));
  EXPECT_NE(instrument_->CurrentScore().reference, first);
  EXPECT_TRUE(instrument_->Plan({FaultKind::Refuse, "", 1}));
  EXPECT_EQ(Send("REV").result, Result::Refused);
  EXPECT_FALSE(instrument_->Plan({FaultKind::Refuse, "", 1}));
  EXPECT_FALSE(instrument_->Reseed({1}));
}

TEST_F(Training, WhatTheMemoryHoldsFromBeforeIsNotScored) {
  const std::string name = "AspirateOrigin_8Ch_125_S";
  EXPECT_TRUE(instrument_->Remember(name, "-2950"));
  EXPECT_EQ(instrument_->CalibrationMemory(), (CalibrationValues{{name, "-2950"}}));
  EXPECT_FALSE(instrument_->CurrentScore().saved);
  Send("SET_CALIBRATION " + name + " -2940");
  EXPECT_FALSE(instrument_->Remember(name, "-2930"));
  ASSERT_TRUE(instrument_->Plan({FaultKind::Refuse, "SET_CALIBRATION SAVE"}));
  Send("SET_CALIBRATION SAVE");
  EXPECT_FALSE(instrument_->CurrentScore().saved);
  Send("SET_CALIBRATION SAVE");
  EXPECT_TRUE(instrument_->CurrentScore().saved);
}

TEST_F(Training, TheEdgeShowsOnTheToolOnceSIsHomed) {
  EXPECT_EQ(instrument_->Look().edge, std::nullopt);
  Send("HOME ALL");
  Send("MOVE S -3000");
  const auto edge = instrument_->Look().edge;
  ASSERT_TRUE(edge);
  EXPECT_NEAR(*edge, (-3000 - instrument_->CurrentScore().reference) * 0.025, 0.6 * 0.025);
  ASSERT_TRUE(instrument_->Plan({FaultKind::Stall, "MOVE S"}));
  Send("MOVE S -2000");
  EXPECT_NEAR(*instrument_->Look().edge - *edge, 2000 * 0.025, 1.2 * 0.025) << "half-way to -2000 is -1000 here";
  instrument_->PowerCycle();
  EXPECT_EQ(instrument_->Look().edge, std::nullopt);

  TrainingInstrument bare(std::make_unique<FakeMachine>("8 Channel"), Syringe(), {});
  bare.Begin("HOME ALL");
  bare.End(false);
  EXPECT_EQ(bare.Look().edge, std::nullopt);
}

TEST_F(Training, TheScoreCountsAndMeasures) {
  EXPECT_EQ(instrument_->CurrentScore().saved, std::nullopt);
  // Two jogs; the move to the location and the one of the verification are none, and neither are those elsewhere.
  for (const char* line : {"HOME ALL", "MOVE S -90", "MOVE S -80", "MOVE Z -16000", "MOVE S -3000", "MOVE S -2996",
                           "HOME S", "MOVE S -2996", "MOVE S -2992", "MOVE Y 5", "MOVE S -2988"}) {
    EXPECT_EQ(Send(line).result, Result::Ok) << line;
  }
  Send("nonsense");
  Send("SET_CALIBRATION AspirateOrigin_8Ch_125_S -2942");
  Send("SET_CALIBRATION TipEject_8Ch_125_S -30");
  Score score = instrument_->CurrentScore();
  EXPECT_EQ(score.jogs, 2U);
  EXPECT_EQ(score.lines, 14U);
  EXPECT_EQ(score.refused, 1U);
  EXPECT_EQ(score.saved, std::nullopt);
  ASSERT_TRUE(score.pending);
  EXPECT_EQ(score.pending->position, -2992);
  Send("SET_CALIBRATION SAVE");
  score = instrument_->CurrentScore();
  ASSERT_TRUE(score.saved);
  EXPECT_DOUBLE_EQ(score.saved->steps, -2992 - score.reference);
  EXPECT_DOUBLE_EQ(score.saved->mm, (-2992 - score.reference) * 0.025);
}

TEST(ScoreErrors, TakeTheWorstValueAndTheSignsOfTheAxis) {
  const CalibrationValues values{{"AspirateOrigin_1Ch_12_S", "-3040"},
                                 {"AspirateOrigin_8Ch_30_S", "-3060"},
                                 {"AspirateOrigin_8Ch_125_S", "-30x"},
                                 {"TipEject_8Ch_30_S", "-9999"}};
  const auto error = ErrorOf(values, Syringe(-1), -2992);
  ASSERT_TRUE(error);
  EXPECT_EQ(error->position, -3010);  // -3060 + 50; the other value is off by 2 steps only
  EXPECT_DOUBLE_EQ(error->steps, -18);
  EXPECT_DOUBLE_EQ(error->mm, 0.45);
  EXPECT_EQ(ErrorOf({{"TipEject_8Ch_30_S", "-9999"}}, Syringe(), 0), std::nullopt);
}

}  // namespace
}  // namespace Helmsway
