#include "forms/Controls.h"

#include "forms/Form.h"

namespace forms {

Control::Control(Form& form, ControlId id, const ControlDesign& design, Control* container)
    : form_(form),
      id_(id),
      design_(design),
      container_(container),
      caption_(design.caption),
      visible_(design.visible),
      enabled_(design.enabled),
      backColor_(design.backColor) {}

std::optional<std::int16_t> Control::Index() const {
  if (design_.index == NoIndex) return std::nullopt;
  return design_.index;
}

void Control::SetCaption(std::string_view caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  Tell(Aspect::Caption);
}

void Control::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  Tell(Aspect::Visible);
}

void Control::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  Tell(Aspect::Enabled);
}

void Control::SetBackColor(const Color& color) {
  if (backColor_ == color) return;
  backColor_ = color;
  Tell(Aspect::BackColor);
}

ControlState Control::State() const {
  ControlState state;
  state.kind = design_.kind;
  state.name = design_.name;
  state.index = design_.index;
  state.container = container_ == nullptr ? NoControl : container_->Id();
  state.bounds = design_.bounds;
  state.caption = caption_;
  state.visible = visible_;
  state.enabled = enabled_;
  state.backColor = backColor_;
  state.bold = design_.bold;
  state.alignment = design_.alignment;
  state.arrow = design_.arrow;
  state.locked = design_.locked;
  return state;
}

void Control::Tell(Aspect aspect) { form_.Tell(id_, aspect); }

void Control::RaiseClick() {
  // A copy, because the handler may close the form, which removes the handlers.
  if (const auto handler = OnClick) handler();
}

void CheckBox::SetValue(std::int16_t value) {
  const bool checked = value != 0;
  if (checked_ == checked) return;
  checked_ = checked;
  Tell(Aspect::Checked);
  RaiseClick();
}

ControlState CheckBox::State() const {
  ControlState state = Control::State();
  state.checked = checked_;
  return state;
}

void TextBox::SetText(std::string_view text) {
  if (text_ == text) return;
  text_ = text;
  Tell(Aspect::Text);
}

ControlState TextBox::State() const {
  ControlState state = Control::State();
  state.text = text_;
  return state;
}

ComboBox::ComboBox(Form& form, ControlId id, const ControlDesign& design, Control* container)
    : Control(form, id, design, container) {
  for (std::string_view rest = design.entries; !rest.empty();) {
    const std::size_t end = rest.find('\n');
    entries_.push_back({std::string(rest.substr(0, end)), 0});
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  }
}

void ComboBox::Clear() {
  entries_.clear();
  listIndex_ = -1;
  newIndex_ = -1;
  Tell(Aspect::Entries);
}

void ComboBox::AddItem(std::string_view text) {
  entries_.push_back({std::string(text), 0});
  newIndex_ = ListCount() - 1;
  Tell(Aspect::Entries);
}

std::string_view ComboBox::Text() const { return List(listIndex_).value_or(std::string_view()); }

bool ComboBox::SetListIndex(std::int32_t entry) {
  if (entry != -1 && !Has(entry)) return false;
  if (listIndex_ == entry) return true;
  listIndex_ = entry;
  Tell(Aspect::Selection);
  RaiseClick();
  return true;
}

bool ComboBox::SetItemData(std::int32_t entry, std::int32_t data) {
  if (!Has(entry)) return false;
  entries_[static_cast<std::size_t>(entry)].data = data;
  return true;
}

std::optional<std::int32_t> ComboBox::ItemData(std::int32_t entry) const {
  if (!Has(entry)) return std::nullopt;
  return entries_[static_cast<std::size_t>(entry)].data;
}

std::optional<std::string_view> ComboBox::List(std::int32_t entry) const {
  if (!Has(entry)) return std::nullopt;
  return entries_[static_cast<std::size_t>(entry)].text;
}

ControlState ComboBox::State() const {
  ControlState state = Control::State();
  state.text = Text();
  state.listIndex = listIndex_;
  state.listCount = ListCount();
  return state;
}

}  // namespace forms
