#include "addin/config/PlateType.h"

#include <tuple>

#include "addin/config/ItemSource.h"
#include "addin/config/RecordTable.h"

namespace OrvelCalibrateS {
namespace {

constexpr std::string_view section = "PlateType";

/// The numbers are read strictly, unlike a tip's: text after a number makes the whole place fail.
constexpr auto rows = std::tuple{
    Place(0, &PlateType::Name, Convert::CleanText{}),
    Place(1, &PlateType::Kind, Convert::PlainText{}),
    Place(2, &PlateType::Place2, Convert::StrictWhole{}),
    Place(3, &PlateType::Place3, Convert::StrictWhole{}),
    Place(4, &PlateType::PlateHeight, Convert::StrictReal{}),
    Place(5, &PlateType::Place5, Convert::StrictReal{}),
    Place(6, &PlateType::Place6, Convert::StrictReal{}),
    Place(7, &PlateType::Place7, Convert::StrictReal{}),
    Place(8, &PlateType::Place8, Convert::StrictReal{}),
    Place(9, &PlateType::Place9, Convert::StrictReal{}),
    Place(10, &PlateType::Place10, Convert::PlainText{}),
    Place(11, &PlateType::Place11, Convert::StrictReal{}),
    Place(12, &PlateType::Place12, Convert::StrictReal{}),
    Place(13, &PlateType::Place13, Convert::StrictReal{}),
    Place(14, &PlateType::Place14, Convert::Flag{}),
    Key("SBSA1Xmm", &PlateType::SBSA1Xmm, Convert::StrictReal{}),
    Key("SBSA1Ymm", &PlateType::SBSA1Ymm, Convert::StrictReal{}),
    Place(15, &PlateType::Place15, Convert::Flag{}),
    Place(16, &PlateType::Place16, Convert::Flag{}),
    Place(17, &PlateType::Place17, Convert::Flag{}),
    Place(18, &PlateType::Place18, Convert::Flag{}),
    Place(19, &PlateType::Place19, Convert::Flag{}),
    Place(20, &PlateType::Place20, Convert::Flag{}),
    Place(21, &PlateType::Place21, Convert::Flag{}),
    Place(22, &PlateType::Place22, Convert::Flag{}),
    Place(23, &PlateType::Place23, Convert::Flag{}),
    Place(24, &PlateType::Place24, Convert::Flag{}),
    Place(25, &PlateType::Place25, Convert::Flag{}),
    Place(26, &PlateType::Place26, Convert::Flag{}),
    Place(27, &PlateType::Place27, Convert::Flag{}),
};

}  // namespace

PlateType ReadPlateType(const IniFiles& files, std::string_view item, std::string_view file) {
  const ItemSource source = FindItem(files, section, item, file, EmptyItem::AsGiven);
  PlateType plate;
  plate.Item = source.item;
  RowReader(plate, files, section, source.line).Read(rows);
  return plate;
}

}  // namespace OrvelCalibrateS
