#include "addin/wizard/ListOperations.h"

#include <algorithm>

#include "addin/base/Steps.h"
#include "addin/config/Conversions.h"

namespace OrvelCalibrateS {
namespace {

constexpr std::int32_t lastProbedNumber = 9;

/// The name after the equals sign of "Default"; empty for an "Installed" value, which is a bare item number.
std::string PreselectedName(const IniFiles& files, std::string_view section) {
  std::string value;
  Put(value, [&] { return files.ReadIni(section, "Default", files.MarivaneIni(), ""); });
  if (value.empty()) Put(value, [&] { return files.ReadIni(section, "Installed", files.MarivaneIni(), ""); });
  std::string name;
  if (!value.empty()) Put(name, [&] { return CleanText(files.SplitText("=", value).Place(1)); });
  return name;
}

char Capital(char letter) { return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter; }

bool IsSameLetter(char left, char right) { return Capital(left) == Capital(right); }

/// In any letter case, and without copies, because a list calls it for each of its lines.
bool Contains(const SplitResult& line, std::int16_t place, std::string_view text) {
  const std::string& piece = line.Place(static_cast<std::size_t>(place));
  return std::search(piece.begin(), piece.end(), text.begin(), text.end(), IsSameLetter) != piece.end() || text.empty();
}

/// When the line doesn't have the filter's place, the test fails, and a failed test counts as passed: the entry drops
/// out either way.
bool Stays(const SplitResult& line, const ItemFilter& filter) {
  bool stays = true;
  if (filter.includePlace != ItemFilter::Off &&
      Passes([&] { return !Contains(line, filter.includePlace, filter.includeText); })) {
    stays = false;
  }
  if (filter.excludePlace != ItemFilter::Off &&
      Passes([&] { return Contains(line, filter.excludePlace, filter.excludeText); })) {
    stays = false;
  }
  return stays;
}

}  // namespace

void FillItemList(const IniFiles& files, forms::ComboBox& list, std::string_view section, const ItemFilter& filter) {
  list.Clear();
  const std::string preselected = PreselectedName(files, section);
  std::int32_t selected = -1;
  for (std::int32_t number = 0;; ++number) {
    std::string value;
    Put(value, [&] { return files.ReadIni(section, "Item" + std::to_string(number), files.MarivaneIni(), ""); });
    if (value.empty()) {
      if (number >= lastProbedNumber) break;
      continue;
    }
    SplitResult line;
    Put(line, [&] { return files.SplitText(",", value); });
    std::string name;
    Put(name, [&] { return CleanText(line.Place(0)); });
    if (!Passes([&] { return !line.Place(0).empty(); }) || !Stays(line, filter)) continue;
    list.AddItem(name);
    Skip([&] { Require(list.SetItemData(list.NewIndex(), number)); });
    if (name == preselected) selected = list.NewIndex();
  }
  if (selected != -1) Skip([&] { Require(list.SetListIndex(selected)); });
}

std::int16_t FindListItem(std::string_view text, const forms::ComboBox& list) {
  constexpr std::int32_t lastIndex = 32767;
  for (std::int32_t i = 0; i < list.ListCount() && i <= lastIndex; ++i) {
    const std::string_view entry = list.List(i).value_or("");
    if (std::equal(entry.begin(), entry.end(), text.begin(), text.end(), IsSameLetter)) {
      return static_cast<std::int16_t>(i);
    }
  }
  return 0;
}

}  // namespace OrvelCalibrateS
