#include "addin/config/CageType.h"

#include <tuple>

#include "addin/config/ItemSource.h"
#include "addin/config/RecordTable.h"

namespace OrvelCalibrateS {
namespace {

constexpr std::string_view section = "CageType";

constexpr auto rows = std::tuple{
    Place(0, &CageType::Caption, Convert::CleanText{}),
    Place(1, &CageType::Place1, Convert::PlainText{}),
    Place(2, &CageType::Place2, Convert::Flag{}),
    Key("CageReleaseBarHeight", &CageType::CageReleaseBarHeight, Convert::RoundedNumber{}),
    Key("CageReleaseHeight", &CageType::CageReleaseHeight, Convert::RoundedNumber{}),
    Place(3, &CageType::Place3, Convert::Flag{}),
    Place(4, &CageType::Place4, Convert::Flag{}),
    Place(5, &CageType::Place5, Convert::RoundedNumber{}),
    Place(6, &CageType::Place6, Convert::RoundedNumber{}),
    Place(7, &CageType::Place7, Convert::RoundedNumber{}),
    Place(8, &CageType::Place8, Convert::RoundedNumber{}),
};

}  // namespace

CageType ReadCageType(const IniFiles& files, std::string_view name, std::string_view file) {
  const ItemSource source = FindItem(files, section, name, file, EmptyItem::Installed);
  CageType cage;
  cage.Name = source.item;
  RowReader(cage, files, section, source.line).Read(rows);
  return cage;
}

}  // namespace OrvelCalibrateS
