#pragma once

#include <cstdint>
#include <string_view>

#include "forms/Design.h"

/// The interface between a live form and its renderer, which draws the form and passes on the operator's actions: a
/// window with native widgets, or a program that plays the operator. Both sides are built together; no exception
/// crosses.
namespace forms {

/// A control's index among the rows of its form's design, from 0. The outermost container is 0.
using ControlId = std::int32_t;

inline constexpr ControlId NoControl = -1;

/// The current state of a control. The texts are valid until the form changes.
struct ControlState {
  ControlKind kind = ControlKind::Label;
  std::string_view name;
  std::int16_t index = NoIndex;
  ControlId container = NoControl;
  Rectangle bounds;
  std::string_view caption;
  bool visible = true;  ///< the control's own flag; a control shows only when its containers are visible too
  bool enabled = true;
  Color backColor;
  bool bold = false;
  Alignment alignment = Alignment::Left;
  Arrow arrow = Arrow::None;
  bool locked = false;
  std::string_view text;        ///< of a text box: its content; of a list: the selected entry
  bool checked = false;         ///< of a check box
  std::int32_t listIndex = -1;  ///< of a list: the selected entry, -1 for none
  std::int32_t listCount = 0;   ///< of a list: number of entries
};

/// The property of a control that has changed.
enum class Aspect : std::uint8_t { Caption, Visible, Enabled, BackColor, Entries, Selection, Checked, Text };

/// Is notified of each change once, after the change and before the handlers that it triggers.
class IObserver {
 public:
  virtual void Changed(ControlId control, Aspect aspect) noexcept = 0;
  /// The form has been unloaded: nothing that the operator does reaches it any more.
  virtual void Closed() noexcept = 0;

 protected:
  ~IObserver() = default;
};

enum class MessageButtons : std::uint8_t { Ok, OkCancel, YesNo };
enum class MessageIcon : std::uint8_t { None, Exclamation };
enum class MessageAnswer : std::uint8_t { Ok, Cancel, Yes, No };

/// The answer that does the least: No, Cancel, or OK where there is nothing else.
inline MessageAnswer CarefulAnswer(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::YesNo:
      return MessageAnswer::No;
    case MessageButtons::OkCancel:
      return MessageAnswer::Cancel;
    case MessageButtons::Ok:
      break;
  }
  return MessageAnswer::Ok;
}

/// Shows modal message boxes: `Show` returns when the operator has answered.
class IMessageBoxes {
 public:
  /// Lines of `text` end in CR LF. An empty title means that the box has no title of its own.
  virtual MessageAnswer Show(std::string_view title, std::string_view text, MessageButtons buttons,
                             MessageIcon icon) noexcept = 0;

 protected:
  ~IMessageBoxes() = default;
};

class ISurface {
 public:
  virtual std::string_view FormCaption() const noexcept = 0;
  virtual std::int32_t ControlCount() const noexcept = 0;
  virtual ControlState State(ControlId control) const noexcept = 0;
  /// The control with that name and index (`NoIndex` outside an array); `NoControl` when there is none.
  virtual ControlId Find(std::string_view name, std::int16_t index) const noexcept = 0;

  /// Of a list, for 0 <= entry < listCount.
  virtual std::string_view Entry(ControlId list, std::int32_t entry) const noexcept = 0;
  virtual std::int32_t ItemData(ControlId list, std::int32_t entry) const noexcept = 0;

  /// Whether the operator can reach the control: it and its containers are visible, and no control above it covers its
  /// centre. Doesn't depend on `enabled`.
  virtual bool Reachable(ControlId control) const noexcept = 0;

  /// The operator's actions. Each returns false, and has no effect, when the screen doesn't allow it: the control is
  /// disabled or out of reach, or already has the requested state. The outermost container can always be clicked.
  virtual bool Click(ControlId control) noexcept = 0;
  virtual bool SetChecked(ControlId checkBox, bool checked) noexcept = 0;
  virtual bool Pick(ControlId list, std::int32_t entry) noexcept = 0;

  /// The objects that the renderer supplies; null removes them. Without message boxes, a box counts as answered at once
  /// by `CarefulAnswer`.
  virtual void SetObserver(IObserver* observer) noexcept = 0;
  virtual void SetMessageBoxes(IMessageBoxes* messageBoxes) noexcept = 0;
  /// The handle by which the window system knows the form; 0 while there is no window.
  virtual void SetWindowHandle(std::int32_t handle) noexcept = 0;

 protected:
  ~ISurface() = default;
};

}  // namespace forms
