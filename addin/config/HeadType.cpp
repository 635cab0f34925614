#include "addin/config/HeadType.h"

#include <array>
#include <tuple>

#include "addin/config/AxisRecord.h"
#include "addin/config/Configuration.h"
#include "addin/config/ItemLine.h"
#include "addin/config/ItemSource.h"
#include "addin/config/RecordTable.h"

namespace OrvelCalibrateS {
namespace {

constexpr std::string_view section = "HeadType";
constexpr std::size_t headCodePlace = 16;

/// In the order of the places. The reader and the writer use the same rows.
constexpr auto rows = std::tuple{
    Place(0, &HeadType::Name, Convert::CleanText{}),
    Place(1, &HeadType::Kind, Convert::PlainText{}),
    Place(2, &HeadType::Field2, Convert::Number{}),
    Place(3, &HeadType::Volume, Convert::Number{}),
    Place(4, &HeadType::Field4, Convert::Number{}),
    Place(5, &HeadType::Channels, Convert::RoundedNumber{}),
    Place(6, &HeadType::Field6, Convert::Number{}),
    Place(7, &HeadType::Flag7, Convert::Flag{}),
    Place(8, &HeadType::Flag8, Convert::Flag{}),
    Place(9, &HeadType::Flag9, Convert::Flag{}),
    Place(10, &HeadType::EjectSPosition, Convert::RoundedNumber{}),
    Place(11, &HeadType::Field11, Convert::RoundedNumber{}),
    Place(12, &HeadType::SPosition, Convert::RoundedNumber{}),
    Place(13, &HeadType::SPositionMM, Convert::Number{}),
    Place(14, &HeadType::EjectZOffset, Convert::Number{}),
    Place(15, &HeadType::CollectZOffset, Convert::Number{}),
    Place(headCodePlace, &HeadType::HeadCode, Convert::PlainText{}),
    Place(17, &HeadType::Flag17, Convert::Flag{}),
    Place(18, &HeadType::Text18, Convert::CleanText{}),
    Place(19, &HeadType::Flag19, Convert::Flag{}),
    Place(20, &HeadType::Field20, Convert::Number{}),
};
constexpr std::size_t placeCount = std::tuple_size_v<decltype(rows)>;

struct VolumeClass {
  double volume;
  std::string_view word;
  double ZCalibration::*tipMountDepth;
};

constexpr std::array<VolumeClass, 5> volumeClasses{{
    {12.5, "12", &ZCalibration::TipMountDepth12},
    {30, "30", &ZCalibration::TipMountDepth30},
    {125, "125", &ZCalibration::TipMountDepth125},
    {300, "300", &ZCalibration::TipMountDepth300},
    {1250, "1250", &ZCalibration::TipMountDepth1250},
}};

/// The tip mount depth of the volume's class. The volume is compared exactly; 0 for any other volume.
double TipMountDepth(double volume, const ZCalibration& calibration) {
  for (const VolumeClass& row : volumeClasses) {
    if (volume == row.volume) return calibration.*row.tipMountDepth;
  }
  return 0;
}

struct SerialDiluteKey {
  double HeadType::*field;
  std::string_view section;  // one section, spelled in two ways
  std::string_view key;
  AxisRecord SharedRecords::*axis;
};

constexpr std::array<SerialDiluteKey, 5> serialDiluteKeys{{
    {&HeadType::SDTeachToolOffset, "HeadType", "SDTeachToolOffsetMM", &SharedRecords::AxisS},
    {&HeadType::SDHomeSensorSeekOffset, "Headtype", "SDHomeSensorSeekOffsetMM", &SharedRecords::AxisS},
    {&HeadType::SDPreCollectHeight, "Headtype", "SDPreCollectHeightMM", &SharedRecords::AxisZ},
    {&HeadType::SDRFIDReadHeight, "Headtype", "SDRFIDReadHeightMM", &SharedRecords::AxisZ},
    {&HeadType::SDHeadEjectOffset, "Headtype", "SDHeadEjectOffsetMM", &SharedRecords::AxisS},
}};

void ReadSerialDiluteKeys(HeadType& head, const Configuration& configuration) {
  const IniFiles& files = configuration.Files;
  for (const SerialDiluteKey& row : serialDiluteKeys) {
    Put(head.*row.field, [&] {
      const auto length = StrictReal<double>(files.ReadIni(row.section, row.key, files.MarivaneIni(), ""));
      return WholeNumberTerm(Divide(length, (configuration.Records.*row.axis).MmPerStep));
    });
  }
}

std::vector<std::string> LineOf(const HeadType& head) {
  std::vector<std::string> texts(placeCount);
  std::apply([&](const auto&... row) { ((texts[row.place] = row.conversion.ToText(head.*row.field)), ...); }, rows);
  // The release position moves with the S position; the record still holds the one for the old S position.
  texts[10] = GeneralForm(static_cast<double>(head.SPosition) + head.SDHeadEjectOffset);
  return texts;
}

}  // namespace

std::string_view VolumeClassWord(double volume) {
  for (const VolumeClass& row : volumeClasses) {
    if (volume == row.volume) return row.word;
  }
  return {};
}

bool IsTeachTool(const HeadType& head) { return head.Kind == CalibrateKind && head.HeadCode == ShortOneChannelCode; }

bool IsCalibrated(const HeadType& head) { return head.Kind == SerialDiluteKind || IsTeachTool(head); }

HeadType ReadHeadType(const Configuration& configuration, std::string_view item, std::string_view file) {
  const ItemSource source = FindItem(configuration.Files, section, item, file, EmptyItem::Installed);
  HeadType head;
  head.Index = source.item;
  RowReader(head, configuration.Files, section, source.line).Read(rows);
  head.TipMountDepth = TipMountDepth(head.Volume, configuration.Records.ZCalibration);

  // The test reads the line's place, not the field. On a line that ends before that place the test fails, and a failed
  // test counts as passed.
  const bool hasSerialDiluteKeys = Passes([&] {
    const bool isShortOneChannel = source.line.Place(headCodePlace) == ShortOneChannelCode;
    return head.Kind == SerialDiluteKind || (head.Kind == CalibrateKind && isShortOneChannel);
  });
  if (hasSerialDiluteKeys) ReadSerialDiluteKeys(head, configuration);
  return head;
}

void WriteHeadType(const IniFiles& files, const HeadType& head, std::string_view file) {
  WriteItemLine(files, section, "Item" + head.Index, LineOf(head), file);
}

}  // namespace OrvelCalibrateS
