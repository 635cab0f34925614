#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "addin/base/Boundary.h"
#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/base/Steps.h"
#include "addin/contract/HelmswayCmds.h"

namespace OrvelCalibrateS {
namespace {

using HelmswayCmds::Result;

int Failing() { throw StepFailed{}; }

TEST(StepsTest, AFailedStepEndsAloneAndTheNextOneRuns) {
  std::string done;
  EXPECT_TRUE(Skip([&] { done += "a"; }));
  EXPECT_FALSE(Skip([&] {
    done += "b";
    Failing();
    done += "c";
  }));
  EXPECT_TRUE(Skip([&] { done += "d"; }));
  EXPECT_EQ(done, "abd");
}

TEST(StepsTest, AFieldWhoseValueFailsStaysAsItWas) {
  int field = 7;
  Put(field, Failing);
  EXPECT_EQ(field, 7);
  Put(field, [] { return 8; });
  EXPECT_EQ(field, 8);
}

TEST(StepsTest, ATestThatFailsCountsAsPassed) {
  EXPECT_TRUE(Passes([] { return true; }));
  EXPECT_FALSE(Passes([] { return false; }));
  EXPECT_TRUE(Passes([] { return Failing() == 0; }));
}

TEST(StepsTest, TheModeDecidesWhoEndsWithAFailedStep) {
  EXPECT_NO_THROW(OrvelCalibrateS::Run(FailureMode::Skip, Failing));
  EXPECT_THROW(OrvelCalibrateS::Run(FailureMode::PassUp, Failing), StepFailed);
  int runs = 0;
  OrvelCalibrateS::Run(FailureMode::Skip, [&] { ++runs; });
  OrvelCalibrateS::Run(FailureMode::PassUp, [&] { ++runs; });
  EXPECT_EQ(runs, 2);
}

TEST(StepsTest, WhatIsNoFailedStepIsNotSkipped) {
  int field = 0;
  EXPECT_THROW(Skip([] { throw std::bad_alloc(); }), std::bad_alloc);
  EXPECT_THROW(Put(field, []() -> int { throw std::bad_alloc(); }), std::bad_alloc);
  EXPECT_THROW(Passes([]() -> bool { throw std::bad_alloc(); }), std::bad_alloc);
}

TEST(StepsTest, AHostCallFailsItsStepByAnythingButOk) {
  EXPECT_NO_THROW(Require(Result::Ok));
  for (const Result result : {Result::Failed, Result::NoInterface, Result::InvalidPointer, Result::ClassNotAvailable}) {
    EXPECT_THROW(Require(result), StepFailed);
  }
}

TEST(BoundaryTest, NoExceptionCrosses) {
  EXPECT_EQ(AtBoundary([] {}), Result::Ok);
  EXPECT_EQ(AtBoundary(Failing), Result::Failed);
  EXPECT_EQ(AtBoundary([] { throw std::runtime_error("any"); }), Result::Failed);
  EXPECT_EQ(AtBoundary([] { throw 1; }), Result::Failed);
}

class Panel final : public Implements<HelmswayCmds::IStatusPanel> {
 public:
  explicit Panel(bool& gone) : gone_(gone) {}
  ~Panel() override { gone_ = true; }
  Result PutText(HelmswayCmds::Text /*text*/) noexcept override { return Result::Ok; }

 private:
  bool& gone_;
};

TEST(RefTest, AnObjectLivesAsLongAsItsLastReference) {
  bool gone = false;
  Ref<HelmswayCmds::IStatusPanel> first;
  *first.Out() = new Panel(gone);
  {
    const Ref<HelmswayCmds::IStatusPanel> copy = first;
    Ref<HelmswayCmds::IStatusPanel> moved = std::move(first);
    const auto& same = moved;
    moved = same;
    EXPECT_EQ(moved->AddRef(), 3U);
    EXPECT_EQ(moved->Release(), 2U);
    first = Query<HelmswayCmds::IStatusPanel>(copy.Get());
    EXPECT_FALSE(static_cast<bool>(Query<HelmswayCmds::IStatusBar>(copy.Get())));
  }
  HelmswayCmds::IStatusPanel* const given = first.Detach();
  EXPECT_FALSE(static_cast<bool>(first));
  EXPECT_FALSE(gone);
  *first.Out() = given;
  first.Out();
  EXPECT_TRUE(gone);
}

}  // namespace
}  // namespace OrvelCalibrateS
