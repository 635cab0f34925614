#include "addin/wizard/FillSelectionLists.h"

#include "addin/config/ConfigurationLoad.h"
#include "addin/config/Conversions.h"
#include "addin/config/ItemSource.h"
#include "addin/config/Position.h"
#include "addin/config/SValues.h"
#include "addin/wizard/ListOperations.h"

namespace OrvelCalibrateS {
namespace {

void Select(forms::ComboBox& list, std::int32_t entry) {
  Skip([&] { Require(list.SetListIndex(entry)); });
}

/// The value of the list's first serial-dilute head counts; without one the working value stays.
void WriteSValueOnRecord(SequenceContext& context) {
  const auto head = FindHeadOnRecord(context.Configuration, FailureMode::Skip);
  if (!head) return;
  Skip([&] {
    const double onRecord = SValueOnRecord(*head, context.Configuration.Records.AxisS);
    context.Selections.txtCurrentCollect.SetText(WholeNumber(onRecord));
  });
}

void FillPositions(SequenceContext& context) {
  forms::ComboBox& cboPosition = context.Selections.cboPosition;
  cboPosition.Clear();
  WalkItems(FailureMode::Skip, [&](const std::string& number) {
    const Position position = ReadPosition(context.Configuration, number);
    if (position.Kind == TipRackKind) {
      cboPosition.AddItem(position.DisplayName);
      Skip([&] { Require(cboPosition.SetItemData(cboPosition.NewIndex(), StrictWhole<std::int32_t>(position.Item))); });
    }
    return !position.DisplayName.empty();
  });
}

}  // namespace

void FillSelectionLists(SequenceContext& context) {
  const IniFiles& files = context.Configuration.Files;
  const SharedRecords& records = context.Configuration.Records;
  const Selections& lists = context.Selections;

  LoadInstalledRecords(context.Configuration, FailureMode::Skip);
  WriteSValueOnRecord(context);

  FillItemList(files, lists.cboNestType, "NestType", {});
  Select(lists.cboNestType, FindListItem(records.Nest.Name, lists.cboNestType));
  FillItemList(files, lists.cboHeadType, "HeadType", {.includePlace = 1, .includeText = SerialDiluteKind});
  Select(lists.cboHeadType, FindListItem(records.Head.Name, lists.cboHeadType));
  FillPositions(context);
  Select(lists.cboPosition, 0);
  FillItemList(files, lists.cboTipRack, "PlateType", {.includePlace = 1, .includeText = TipRackKind});
  Select(lists.cboTipRack, 0);
  FillItemList(files, lists.cboTipType, "TipType", {.includePlace = 1, .includeText = SerialDiluteKind});
  Select(lists.cboTipType, FindListItem(records.Tip.Name, lists.cboTipType));
  Select(lists.cboCollectStep, 0);

  Skip([&] { context.Host.WriteChanged(false); });
}

}  // namespace OrvelCalibrateS
