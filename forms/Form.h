#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "forms/Controls.h"
#include "forms/Design.h"
#include "forms/Surface.h"

namespace forms {

/// A live form: its controls, created from the rows of a design, and its surface for a renderer. Single-threaded. The
/// design's rows must outlive the form.
class Form final : public ISurface {
 public:
  Form(std::string_view caption, std::span<const ControlDesign> design);
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  ~Form();

  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view caption) { caption_ = caption; }

  /// All controls in the order of the design.
  const std::vector<std::unique_ptr<Control>>& Controls() const { return controls_; }

  /// The control with that name and index. A request for a control that the design doesn't have, or for the wrong kind,
  /// is a programming error and ends the program.
  template <class Kind = Control>
  Kind& Get(std::string_view name, std::int16_t index = NoIndex) {
    return dynamic_cast<Kind&>(*controls_.at(static_cast<std::size_t>(Find(name, index))));
  }

  /// A closed form shows no more boxes, and an answer to a box that was open when the form closed doesn't count: the
  /// result is `CarefulAnswer` in both cases.
  MessageAnswer ShowMessage(std::string_view title, std::string_view text, MessageButtons buttons, MessageIcon icon);
  std::int32_t WindowHandle() const { return windowHandle_; }

  /// Keeps objects alive while the operator's events run, such as the form itself: `hold` is called when an event
  /// begins, and its result is released when the event has ended.
  void HoldDuringEvents(std::function<std::shared_ptr<void>()> hold) { hold_ = std::move(hold); }

  /// Closes the form: handlers, observer and message boxes are removed, and the operator can't reach anything any more.
  void Close();

  std::string_view FormCaption() const noexcept override { return caption_; }
  std::int32_t ControlCount() const noexcept override { return static_cast<std::int32_t>(controls_.size()); }
  ControlState State(ControlId control) const noexcept override;
  ControlId Find(std::string_view name, std::int16_t index) const noexcept override;
  std::string_view Entry(ControlId list, std::int32_t entry) const noexcept override;
  std::int32_t ItemData(ControlId list, std::int32_t entry) const noexcept override;
  bool Reachable(ControlId control) const noexcept override;
  bool Click(ControlId control) noexcept override;
  bool SetChecked(ControlId checkBox, bool checked) noexcept override;
  bool Pick(ControlId list, std::int32_t entry) noexcept override;
  void SetObserver(IObserver* observer) noexcept override { observer_ = observer; }
  void SetMessageBoxes(IMessageBoxes* messageBoxes) noexcept override { messageBoxes_ = messageBoxes; }
  void SetWindowHandle(std::int32_t handle) noexcept override { windowHandle_ = handle; }

 private:
  friend class Control;

  Control* At(ControlId control) const;
  template <class Kind>
  Kind* At(ControlId control) const {
    return dynamic_cast<Kind*>(At(control));
  }
  void Tell(ControlId control, Aspect aspect);
  bool Raise(const std::function<void()>& event) const noexcept;
  Rectangle BoundsOnForm(const Control& control) const;

  std::string caption_;
  std::vector<std::unique_ptr<Control>> controls_;
  IObserver* observer_ = nullptr;
  IMessageBoxes* messageBoxes_ = nullptr;
  std::function<std::shared_ptr<void>()> hold_;
  std::int32_t windowHandle_ = 0;
  bool closed_ = false;
};

}  // namespace forms
