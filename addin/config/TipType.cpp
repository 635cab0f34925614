#include "addin/config/TipType.h"

#include <tuple>

#include "addin/config/ItemSource.h"
#include "addin/config/RecordTable.h"

namespace OrvelCalibrateS {
namespace {

constexpr std::string_view section = "TipType";

constexpr auto rows = std::tuple{
    Place(0, &TipType::Name, Convert::CleanText{}),
    Place(1, &TipType::Kind, Convert::PlainText{}),
    Place(2, &TipType::Place2, Convert::Number{}),
    Place(3, &TipType::Place3, Convert::Number{}),
    Place(4, &TipType::Place4, Convert::RoundedNumber{}),
    Place(5, &TipType::Place5, Convert::RoundedNumber{}),
    Place(6, &TipType::Place6, Convert::Flag{}),
    Place(7, &TipType::EjectHeight, Convert::RoundedNumber{}),
    Place(8, &TipType::CollectDepth, Convert::RoundedNumber{}),
    Place(9, &TipType::Place9, Convert::RoundedNumber{}),
    Place(10, &TipType::TipLength, Convert::Number{}),
    Place(11, &TipType::Place11, Convert::RoundedNumber{}),
    Place(12, &TipType::Place12, Convert::Flag{}),
    Place(13, &TipType::Place13, Convert::Flag{}),
    Place(14, &TipType::Place14, Convert::Flag{}),
    Place(15, &TipType::Place15, Convert::Flag{}),
    Place(16, &TipType::Place16, Convert::Flag{}),
    Place(17, &TipType::Place17, Convert::Flag{}),
    Place(18, &TipType::Place18, Convert::CleanText{}),
    Key("TipChuteClearOffset", &TipType::TipChuteClearOffset, Convert::StrictReal{}, "12.5"),
    Place(19, &TipType::Place19, Convert::Number{}),
};

}  // namespace

TipType ReadTipType(const IniFiles& files, std::string_view item, std::string_view file) {
  const ItemSource source = FindItem(files, section, item, file, EmptyItem::Installed);
  TipType tip;
  tip.Item = source.item;
  RowReader(tip, files, section, source.line).Read(rows);
  return tip;
}

}  // namespace OrvelCalibrateS
