#pragma once

#include <QPointer>
#include <QWidget>
#include <vector>

#include "bench/desktop/form/FormControl.h"

namespace Helmsway {

/// Where the keyboard's focus is in a form, and where it goes when its control is disabled, hidden or covered, so that
/// the whole form can be worked without a mouse.
class FormFocus {
 public:
  /// Puts the controls in reading order for the Tab key. The controls must outlive this.
  FormFocus(QWidget& view, const std::vector<FormControl>& controls);

  /// The control that has the focus in the view's window, whether that window is the active one or not; null when it is
  /// elsewhere.
  const FormControl* Focused() const;

  /// Before the control is disabled: a focus that it has is parked on its panel, if that can have it, or on the view.
  void BeforeDisabled(const FormControl& control);
  /// After the control has been enabled: a focus that was parked for it and is still there comes back.
  void AfterEnabled(const FormControl& control);

  /// Before and after the control is shown or hidden. What the operator can't get at takes no focus, and a focus that
  /// was there goes to the first control of the panel that has come, or else of the form.
  void BeforeVisibility(const FormControl& control);
  void AfterVisibility(const FormControl& control, const forms::ISurface& surface);

  /// All that a click has led to is over, and with it the search for a better place: a focus that is still parked on
  /// the view goes on to the next control.
  void AfterClick();

  /// The view itself has been given the focus.
  void AfterViewFocused();

 private:
  QWidget* FocusWidget() const;
  bool Takes(const FormControl& control) const;
  bool StandsIn(const FormControl& control, const FormControl& panel) const;
  void Move(QWidget& widget);
  void MoveToFirst(const FormControl* panel);

  QWidget& view_;
  const std::vector<FormControl>& controls_;
  std::vector<const FormControl*> order_;  ///< all that can have the focus, in reading order
  const FormControl* parkedFrom_ = nullptr;
  QPointer<QWidget> parkedAt_;
  /// Where the focus was put for want of its control, while a click may still bring a better place.
  QPointer<QWidget> sought_;
  bool lost_ = false;
  bool moving_ = false;
};

}  // namespace Helmsway
