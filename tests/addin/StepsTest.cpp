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
  EXPECT_FALSE(Skip([&] {
    done += "a";
    Failing();
    done += "b";
  }));
  EXPECT_TRUE(Skip([&] { done += "c"; }));
  EXPECT_EQ(done, "ac");

  int field = 7;
  Put(field, Failing);
  EXPECT_EQ(field, 7) << "a field whose value fails stays as it was";
  Put(field, [] { return 8; });
  EXPECT_EQ(field, 8);

  EXPECT_FALSE(Passes([] { return false; }));
  EXPECT_TRUE(Passes([] { return Failing() == 0; })) << "a test that fails counts as passed";

  OrvelCalibrateS::Run(FailureMode::Skip, Failing);
  EXPECT_THROW(OrvelCalibrateS::Run(FailureMode::PassUp, Failing), StepFailed);
}

TEST(StepsTest, WhatIsNoFailedStepIsNotSkipped) {
  EXPECT_THROW(Passes([]() -> bool { throw std::bad_alloc(); }), std::bad_alloc);
}

TEST(BoundaryTest, NoExceptionCrossesAndAHostCallFailsItsStepByAnythingButOk) {
  EXPECT_EQ(AtBoundary([] { Require(Result::Ok); }), Result::Ok);
  EXPECT_EQ(AtBoundary([] { throw std::runtime_error("any"); }), Result::Failed);
  for (const Result result : {Result::Failed, Result::NoInterface}) EXPECT_THROW(Require(result), StepFailed);
}

struct Panel final : Implements<HelmswayCmds::IStatusPanel> {
  explicit Panel(bool& gone) : Gone(gone) {}
  ~Panel() override { Gone = true; }
  Result PutText(HelmswayCmds::Text) noexcept override { return Result::Ok; }
  bool& Gone;
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
