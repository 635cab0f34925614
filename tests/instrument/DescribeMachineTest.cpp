#include <gtest/gtest.h>

#include "bench/instrument/DescribeMachine.h"
#include "tests/host/TemporaryFolder.h"

namespace Helmsway {
namespace {

TEST(DescribeMachine, ASlotBeyondThirtyTwoBitsIsAtTheirEnd) {
  const TemporaryFolder folder;
  const MachineDescription machine =
      DescribeMachine(folder.Write("Marivane.ini",
                                   "[DeviceType]\nInstalled=1\nItem1=Model,False,x\nSDXYEncoderMMStepFactorOff=1\n"
                                   "[NestType]\nItem1=Nest,N,Head,H,1,5,-5,0,Head,H,2,-7,7,0\n"
                                   "[Position_1]\nItem1=N,Nest place,NEST,0,0,2147483647,-2147483648,0,0,0,0,False\n"));
  ASSERT_EQ(machine.slots.size(), 2U);
  EXPECT_EQ(machine.slots[0].target.sdX, 2147483647);
  EXPECT_EQ(machine.slots[0].target.sdY, -2147483647 - 1);
  EXPECT_EQ(machine.slots[1].target.sdX, 2147483640);
  EXPECT_EQ(machine.slots[1].target.sdY, -2147483641);
}

}  // namespace
}  // namespace Helmsway
