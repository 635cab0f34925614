#include "bench/replay/FormSnapshot.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace Helmsway {
namespace {

using forms::ControlKind;
using forms::ControlState;
using forms::ISurface;
using Json = nlohmann::ordered_json;

constexpr std::string_view ButtonArray = "cmdButton";

/// Calls `visit` for each control in the order of the design.
template <class Visit>
void ForEachControl(const ISurface& form, Visit visit) {
  for (forms::ControlId id = 0; id < form.ControlCount(); ++id) visit(id, form.State(id));
}

/// Indices, ascending, of the buttons that `test` accepts.
template <class Test>
std::vector<std::int16_t> Buttons(const ISurface& form, Test test) {
  std::vector<std::int16_t> indices;
  ForEachControl(form, [&](forms::ControlId, const ControlState& state) {
    if (state.name == ButtonArray && test(state)) indices.push_back(state.index);
  });
  std::sort(indices.begin(), indices.end());
  return indices;
}

std::vector<std::string_view> CheckedBoxes(const ISurface& form) {
  constexpr std::array<std::string_view, 3> Boxes = {"chkStageEmpty", "chkToolInstalled", "chkToolUninstalled"};
  std::vector<std::string_view> checked;
  for (const std::string_view box : Boxes) {
    if (form.State(form.Find(box, forms::NoIndex)).checked) checked.push_back(box);
  }
  return checked;
}

Json Captions(const ISurface& form) {
  Json captions = Json::object();
  ForEachControl(form, [&](forms::ControlId, const ControlState& state) {
    if (!state.caption.empty()) captions[FullName(state)] = state.caption;
  });
  return captions;
}

Json Lists(const ISurface& form) {
  Json lists = Json::object();
  ForEachControl(form, [&](forms::ControlId id, const ControlState& state) {
    if (state.kind != ControlKind::ComboBox) return;
    Json entries = Json::array();
    Json data = Json::array();
    for (std::int32_t entry = 0; entry < state.listCount; ++entry) {
      entries.push_back(form.Entry(id, entry));
      data.push_back(form.ItemData(id, entry));
    }
    lists[FullName(state)] = {{"index", state.listIndex}, {"entries", std::move(entries)}, {"data", std::move(data)}};
  });
  return lists;
}

}  // namespace

Json FormSnapshot(const ISurface& form, std::string_view statusText) {
  Json snapshot;
  snapshot["caption"] = form.FormCaption();
  snapshot["visible"] = VisiblePanels(form);
  snapshot["enabled"] = Buttons(form, [](const ControlState& state) { return state.enabled; });
  snapshot["highlighted"] = Buttons(form, [](const ControlState& state) {
    return state.backColor == forms::Color(forms::SystemColor::WindowBackground);
  });
  snapshot["checked"] = CheckedBoxes(form);
  snapshot["current"] = form.State(form.Find("txtCurrentCollect", forms::NoIndex)).text;
  snapshot["captions"] = Captions(form);
  snapshot["lists"] = Lists(form);
  snapshot["status"] = statusText;
  return snapshot;
}

std::vector<std::string_view> VisiblePanels(const ISurface& form) {
  std::vector<std::string_view> panels;
  // The rows stand in stacking order.
  ForEachControl(form, [&](forms::ControlId, const ControlState& state) {
    if (state.kind == ControlKind::Frame && state.visible) panels.push_back(state.name);
  });
  return panels;
}

std::string FullName(const ControlState& control) {
  std::string name(control.name);
  if (control.index != forms::NoIndex) name.append("(").append(std::to_string(control.index)).append(")");
  return name;
}

}  // namespace Helmsway
