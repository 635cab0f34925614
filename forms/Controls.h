#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/Design.h"
#include "forms/Surface.h"

namespace forms {

class Form;

/// A live control: its design and its changeable state. A change notifies the form's observer; setting the current
/// value again changes nothing. Changes by code and by the operator are handled in the same way.
class Control {
 public:
  Control(Form& form, ControlId id, const ControlDesign& design, Control* container);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  ControlId Id() const { return id_; }
  ControlKind Kind() const { return design_.kind; }
  std::string_view Name() const { return design_.name; }
  /// Index in the control array; none for a control outside an array.
  std::optional<std::int16_t> Index() const;
  const Control* Container() const { return container_; }
  const ControlDesign& Design() const { return design_; }

  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view caption);
  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  const Color& BackColor() const { return backColor_; }
  void SetBackColor(const Color& color);

  /// Runs when the operator clicks; for a list when its selection changes, for a check box when its value changes, both
  /// also by code. An exception that leaves the handler leaves the statement that made the change.
  std::function<void()> OnClick;
  void RaiseClick();

  /// The control's complete state for a renderer.
  virtual ControlState State() const;

 protected:
  void Tell(Aspect aspect);

 private:
  Form& form_;
  ControlId id_;
  const ControlDesign& design_;
  Control* container_;
  std::string caption_;
  bool visible_;
  bool enabled_;
  Color backColor_;
};

/// A box that is checked or not.
class CheckBox final : public Control {
 public:
  using Control::Control;

  /// 0 (unchecked) or 1 (checked).
  std::int16_t Value() const { return checked_ ? 1 : 0; }
  void SetValue(std::int16_t value);

  ControlState State() const override;

 private:
  bool checked_ = false;
};

/// A text that only code writes.
class TextBox final : public Control {
 public:
  using Control::Control;

  const std::string& Text() const { return text_; }
  void SetText(std::string_view text);

  ControlState State() const override;

 private:
  std::string text_;
};

/// A drop-down list from which the operator can pick, never type.
class ComboBox final : public Control {
 public:
  ComboBox(Form& form, ControlId id, const ControlDesign& design, Control* container);

  /// Removes all entries and leaves nothing selected, without running a handler.
  void Clear();
  /// Adds an entry at the end, with the item data 0.
  void AddItem(std::string_view text);
  /// Index of the entry that was added last; -1 when there is none.
  std::int32_t NewIndex() const { return newIndex_; }
  std::int32_t ListCount() const { return static_cast<std::int32_t>(entries_.size()); }
  /// The selected entry, -1 for none.
  std::int32_t ListIndex() const { return listIndex_; }
  /// The selected entry's text, "" when none is selected.
  std::string_view Text() const;

  /// Each of these fails, without a change or a value, for an entry that the list doesn't have.
  [[nodiscard]] bool SetListIndex(std::int32_t entry);  ///< -1 is allowed: nothing selected
  [[nodiscard]] bool SetItemData(std::int32_t entry, std::int32_t data);
  std::optional<std::int32_t> ItemData(std::int32_t entry) const;
  std::optional<std::string_view> List(std::int32_t entry) const;

  ControlState State() const override;

 private:
  struct Entry {
    std::string text;
    std::int32_t data = 0;
  };

  bool Has(std::int32_t entry) const { return entry >= 0 && entry < ListCount(); }

  std::vector<Entry> entries_;
  std::int32_t listIndex_ = -1;
  std::int32_t newIndex_ = -1;
};

}  // namespace forms
