#include <gtest/gtest.h>

#include <string>

#include "addin/config/AxisData.h"
#include "addin/config/Conversions.h"
#include "addin/config/MachineLocale.h"
#include "tests/addin/TestConfiguration.h"

// These run under a locale whose decimal separator is the comma; the conversions' default separator is what they test.
namespace OrvelCalibrateS {
namespace {

TEST(DecimalCommaTest, TheMachineHasAComma) { ASSERT_EQ(MachineDecimalSeparator(), ","); }

TEST(DecimalCommaTest, StrictConversionsAndFlagsTakeTheCommaAndRefuseThePoint) {
  EXPECT_EQ(StrictReal<double>(" 12,5 "), 12.5);
  EXPECT_EQ(StrictReal<float>("0,05"), 0.05F);
  EXPECT_EQ(StrictWhole<std::int16_t>("2,5"), 2);
  EXPECT_EQ(StrictWhole<std::int32_t>("12"), 12);
  EXPECT_TRUE(Flag("0,5"));
  EXPECT_FALSE(Flag("0,0"));
  EXPECT_TRUE(Flag("true"));
  for (const char* text : {"12.5", "0.5", "1.250", "1.250,5", "12.0", "1,2,3"}) {
    EXPECT_THROW(StrictReal<double>(text), StepFailed) << text;
    EXPECT_THROW(StrictReal<float>(text), StepFailed) << text;
    EXPECT_THROW(StrictWhole<std::int32_t>(text), StepFailed) << text;
    EXPECT_THROW(Flag(text), StepFailed) << text;
  }
}

TEST(DecimalCommaTest, NumberAndTheFormatsKeepThePoint) {
  EXPECT_EQ(Number("12.5"), 12.5);
  EXPECT_EQ(Number("12,5"), 12);
  EXPECT_EQ(RoundedNumber<std::int32_t>("3.5"), 4);
  EXPECT_EQ(GeneralForm(12.5), "12.5");
  EXPECT_EQ(GeneralForm(1234567.25), "1234567.25");
  EXPECT_EQ(WholeNumber(1234567.25), "1234567");
}

TEST(DecimalCommaTest, RecordsAreReadByBothRules) {
  Testing::TestConfiguration machine;
  // The comma divides an item line, so a strict place of it can't hold decimals here.
  machine.Ini.Set("Device_Type_Cage", {{"Axis1", "X,0.05,2.5,7,4.5"}});
  ReadAxisData(machine.Config);
  EXPECT_EQ(machine.Records.AxisX.MmPerStep, 0);
  EXPECT_EQ(machine.Records.AxisX.SpeedA, 0);
  EXPECT_EQ(machine.Records.AxisX.SpeedB, 7);
  EXPECT_EQ(machine.Records.AxisX.SpeedC, 4);
  machine.Ini.Set("TipType", {{"Item1", "\"T\",,2.5"}, {"TipChuteClearOffset", "12,5"}});
  const TipType tip = ReadTipType(machine.Files, "1");
  EXPECT_EQ(tip.Place2, 2.5);
  EXPECT_EQ(tip.TipChuteClearOffset, 12.5);
  machine.Ini.Set("DeviceType", {{"Firmware", "1.2.3"}});
  std::string name;
  EXPECT_EQ(ReadDeviceType(machine.Files, name).FirmwareNumber, 10203);
}

}  // namespace
}  // namespace OrvelCalibrateS
