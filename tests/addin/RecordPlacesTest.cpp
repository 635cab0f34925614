#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>

#include "addin/config/Calibration.h"
#include "addin/config/ConfigurationLoad.h"
#include "addin/config/PlateType.h"
#include "addin/config/Position.h"
#include "tests/addin/TestConfiguration.h"

namespace OrvelCalibrateS {
namespace {

using Testing::LineWith;
using Testing::TestConfiguration;

/// The numbers of the fields that aren't empty: "3 4 ".
template <class... Fields>
std::string Filled(const std::tuple<Fields&...>& fields) {
  std::string filled;
  int number = 0;
  const auto look = [&](const auto& field) {
    if (field != std::decay_t<decltype(field)>()) filled += std::to_string(number) + " ";
    ++number;
  };
  std::apply([&](const auto&... field) { (look(field), ...); }, fields);
  return filled;
}

/// Puts a text at each place of the line in turn; `fields` gives the record's fields in the order of the places.
template <class Read, class Fields>
void ExpectAFieldForEachPlace(std::string_view section, std::size_t count, Read&& read, Fields&& fields) {
  for (std::size_t place = 0; place < count; ++place) {
    TestConfiguration machine;
    machine.Records.DeviceType.SDXYEncoderMMStepFactorOff = 1;
    machine.Ini.Set(section, {{"Item1", LineWith(place, "1")}, {"TipChuteClearOffset", ""}});
    auto record = read(machine);
    EXPECT_EQ(Filled(fields(record)), std::to_string(place) + " ") << section;
  }
}

TEST(RecordPlacesTest, EachPlaceOfALineFillsItsOneField) {
  ExpectAFieldForEachPlace(
      "CageType", 9, [](auto& machine) { return ReadCageType(machine.Files, "1"); },
      [](auto& r) {
        return std::tie(r.Caption, r.Place1, r.Place2, r.Place3, r.Place4, r.Place5, r.Place6, r.Place7, r.Place8);
      });
  ExpectAFieldForEachPlace(
      "TipType", 20, [](auto& machine) { return ReadTipType(machine.Files, "1"); },
      [](auto& r) {
        return std::tie(r.Name, r.Kind, r.Place2, r.Place3, r.Place4, r.Place5, r.Place6, r.EjectHeight, r.CollectDepth,
                        r.Place9, r.TipLength, r.Place11, r.Place12, r.Place13, r.Place14, r.Place15, r.Place16,
                        r.Place17, r.Place18, r.Place19);
      });
  ExpectAFieldForEachPlace(
      "PlateType", 28, [](auto& machine) { return ReadPlateType(machine.Files, "1"); },
      [](auto& r) {
        return std::tie(r.Name, r.Kind, r.Place2, r.Place3, r.PlateHeight, r.Place5, r.Place6, r.Place7, r.Place8,
                        r.Place9, r.Place10, r.Place11, r.Place12, r.Place13, r.Place14, r.Place15, r.Place16,
                        r.Place17, r.Place18, r.Place19, r.Place20, r.Place21, r.Place22, r.Place23, r.Place24,
                        r.Place25, r.Place26, r.Place27);
      });
  ExpectAFieldForEachPlace(
      "Position_", 18, [](auto& machine) { return ReadPosition(machine.Config, "1"); },
      [](auto& r) {
        return std::tie(r.Name, r.DisplayName, r.Kind, r.X, r.Y, r.SdX1, r.SdY1, r.SdX8, r.SdY8, r.SdX12, r.SdY12,
                        r.LowerStage, r.Place12, r.Place13, r.Place14, r.Place15, r.Place16, r.Place17);
      });
  ExpectAFieldForEachPlace(
      "Calibration_", 10, [](auto& machine) { return ReadCalibration(machine.Config, "1"); },
      [](auto& r) {
        return std::tie(r.Name, r.Place1, r.Place2, r.Place3, r.Place4, r.Place5, r.Place6, r.SdX, r.SdY, r.Place9);
      });
}

TEST(RecordPlacesTest, APositionHasItsStageInTwoFlags) {
  using Row = std::tuple<const char*, bool, bool>;
  for (const auto& [text, lower, upper] : {Row{"True", true, false}, Row{"0", false, true}, Row{"", false, false}}) {
    TestConfiguration machine;
    machine.Ini.Set("Position_", {{"Item1", LineWith(11, text)}});
    const Position position = ReadPosition(machine.Config, "1");
    EXPECT_EQ(std::tie(position.LowerStage, position.UpperStage), std::tie(lower, upper)) << text;
  }
}

TEST(RecordPlacesTest, ALoadAsksForEachKeyOnce) {
  TestConfiguration machine;
  LoadInstalledRecords(machine.Config, FailureMode::PassUp);
  ReadPlateType(machine.Files, "");
  Testing::Lines reads = machine.Ini.Reads;
  std::sort(reads.begin(), reads.end());
  const auto twice = std::adjacent_find(reads.begin(), reads.end());
  EXPECT_TRUE(twice == reads.end()) << *twice;
}

}  // namespace
}  // namespace OrvelCalibrateS
