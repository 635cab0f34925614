#include "forms/Form.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace forms {
namespace {

std::unique_ptr<Control> Make(Form& form, ControlId id, const ControlDesign& design, Control* container) {
  switch (design.kind) {
    case ControlKind::ComboBox:
      return std::make_unique<ComboBox>(form, id, design, container);
    case ControlKind::CheckBox:
      return std::make_unique<CheckBox>(form, id, design, container);
    case ControlKind::TextBox:
      return std::make_unique<TextBox>(form, id, design, container);
    default:
      return std::make_unique<Control>(form, id, design, container);
  }
}

bool HoldsCentreOf(const Rectangle& cover, const Rectangle& covered) {
  const std::int32_t x = covered.left + covered.width / 2;
  const std::int32_t y = covered.top + covered.height / 2;
  return x >= cover.left && x < cover.left + cover.width && y >= cover.top && y < cover.top + cover.height;
}

}  // namespace

Form::Form(std::string_view caption, std::span<const ControlDesign> design) : caption_(caption) {
  controls_.reserve(design.size());
  for (const ControlDesign& row : design) {
    Control* const container = row.container.empty() ? nullptr : At(Find(row.container, NoIndex));
    controls_.push_back(Make(*this, ControlCount(), row, container));
  }
}

Form::~Form() = default;

MessageAnswer Form::ShowMessage(std::string_view title, std::string_view text, MessageButtons buttons,
                                MessageIcon icon) {
  if (closed_ || messageBoxes_ == nullptr) return CarefulAnswer(buttons);
  const MessageAnswer answer = messageBoxes_->Show(title, text, buttons, icon);
  return closed_ ? CarefulAnswer(buttons) : answer;
}

void Form::Close() {
  closed_ = true;
  for (const auto& control : controls_) control->OnClick = nullptr;
  messageBoxes_ = nullptr;
  if (IObserver* const observer = std::exchange(observer_, nullptr)) observer->Closed();
}

ControlState Form::State(ControlId control) const noexcept {
  const Control* const found = At(control);
  return found == nullptr ? ControlState() : found->State();
}

ControlId Form::Find(std::string_view name, std::int16_t index) const noexcept {
  const auto found = std::find_if(controls_.begin(), controls_.end(), [&](const auto& control) {
    return control->Name() == name && control->Design().index == index;
  });
  return found == controls_.end() ? NoControl : (*found)->Id();
}

std::string_view Form::Entry(ControlId list, std::int32_t entry) const noexcept {
  const auto* const found = At<ComboBox>(list);
  return found == nullptr ? std::string_view() : found->List(entry).value_or(std::string_view());
}

std::int32_t Form::ItemData(ControlId list, std::int32_t entry) const noexcept {
  const auto* const found = At<ComboBox>(list);
  return found == nullptr ? 0 : found->ItemData(entry).value_or(0);
}

bool Form::Reachable(ControlId control) const noexcept {
  const Control* const target = At(control);
  if (target == nullptr || closed_) return false;
  const Rectangle bounds = BoundsOnForm(*target);
  for (const Control* level = target; level != nullptr; level = level->Container()) {
    if (!level->Visible()) return false;
    // Of the level's neighbours, those in earlier rows are above it.
    const bool covered = std::any_of(controls_.begin(), controls_.begin() + level->Id(), [&](const auto& other) {
      return level->Container() != nullptr && other->Container() == level->Container() && other->Visible() &&
             HoldsCentreOf(BoundsOnForm(*other), bounds);
    });
    if (covered) return false;
  }
  return true;
}

bool Form::Click(ControlId control) noexcept {
  Control* const target = At(control);
  if (target == nullptr || !target->OnClick) return false;
  const bool background = target->Container() == nullptr;
  if (!background && (target->Kind() != ControlKind::CommandButton || !target->Enabled() || !Reachable(control))) {
    return false;
  }
  return Raise([target] { target->RaiseClick(); });
}

bool Form::SetChecked(ControlId checkBox, bool checked) noexcept {
  auto* const target = At<CheckBox>(checkBox);
  const std::int16_t value = checked ? 1 : 0;
  if (target == nullptr || !target->Enabled() || !Reachable(checkBox) || target->Value() == value) return false;
  return Raise([target, value] { target->SetValue(value); });
}

bool Form::Pick(ControlId list, std::int32_t entry) noexcept {
  auto* const target = At<ComboBox>(list);
  if (target == nullptr || !target->Enabled() || !Reachable(list)) return false;
  if (!target->List(entry) || target->ListIndex() == entry) return false;
  return Raise([target, entry] { static_cast<void>(target->SetListIndex(entry)); });
}

/// Runs an event that the operator raised. An exception that leaves its handlers ends here, because no caller could
/// handle it.
bool Form::Raise(const std::function<void()>& event) const noexcept {
  std::shared_ptr<void> held;  // may be the last reference to this form: no member is used after the event
  try {
    if (hold_) held = hold_();
    event();
  } catch (...) {  // NOLINT(bugprone-empty-catch): see above
  }
  return true;
}

Control* Form::At(ControlId control) const {
  return control >= 0 && control < ControlCount() ? controls_[static_cast<std::size_t>(control)].get() : nullptr;
}

void Form::Tell(ControlId control, Aspect aspect) {
  if (observer_ != nullptr) observer_->Changed(control, aspect);
}

Rectangle Form::BoundsOnForm(const Control& control) const {
  Rectangle bounds = control.Design().bounds;
  for (const Control* level = control.Container(); level != nullptr; level = level->Container()) {
    bounds.left += level->Design().bounds.left;
    bounds.top += level->Design().bounds.top;
  }
  return bounds;
}

}  // namespace forms
