#include <gtest/gtest.h>

#include <vector>

#include "bench/instrument/Clock.h"
#include "bench/instrument/SimulatedMarivane.h"
#include "tests/instrument/BenchModel.h"

namespace Helmsway {
namespace {

TEST(PacedClock, WaitsAsMuchLessAsItsFactorSays) {
  std::vector<double> slept;
  PacedClock clock(1000, [&](Seconds time) { slept.push_back(time.count()); });
  EXPECT_EQ(clock.Factor(), 100);
  clock.Wait(Seconds(12));
  clock.SetFactor(0.5);
  EXPECT_EQ(clock.Factor(), 1);
  clock.Wait(Seconds(12));
  clock.SetFactor(4);
  clock.Wait(Seconds(12));
  EXPECT_EQ(slept, (std::vector<double>{0.12, 12, 3}));
  EXPECT_EQ(clock.Now(), Seconds(36));
}

TEST(PacedClock, TheMachineTakesItsTimeByIt) {
  std::vector<double> slept;
  SimulatedMarivane machine(BenchModel(),
                            std::make_unique<PacedClock>(10, [&](Seconds time) { slept.push_back(time.count()); }));
  machine.Begin("HOME ALL");
  EXPECT_TRUE(slept.empty());
  machine.End(false);
  EXPECT_EQ(slept, (std::vector<double>{1.2}));
  EXPECT_EQ(machine.State().time, Seconds(12));
}

}  // namespace
}  // namespace Helmsway
