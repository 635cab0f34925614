#include "bench/desktop/form/FormFocus.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "bench/desktop/form/ReadingOrder.h"

namespace Helmsway {

FormFocus::FormFocus(QWidget& view, const std::vector<FormControl>& controls) : view_(view), controls_(controls) {
  for (const FormControl* control : ReadingOrder(controls)) {
    control->widget->setFocusPolicy(control->focusPolicy);
    if (control->focusPolicy == Qt::NoFocus) continue;
    if (!order_.empty()) QWidget::setTabOrder(order_.back()->widget, control->widget);
    order_.push_back(control);
  }
}

const FormControl* FormFocus::Focused() const {
  const QWidget* const focus = FocusWidget();
  const auto found =
      std::find_if(order_.begin(), order_.end(), [&](const auto* control) { return control->widget == focus; });
  return found == order_.end() ? nullptr : *found;
}

void FormFocus::BeforeDisabled(const FormControl& control) {
  if (FocusWidget() != control.widget) return;
  const FormControl& panel = controls_[static_cast<std::size_t>(std::max(control.container, 0))];
  parkedFrom_ = &control;
  parkedAt_ = Takes(panel) ? panel.widget : &view_;
  Move(*parkedAt_);
}

void FormFocus::AfterEnabled(const FormControl& control) {
  if (parkedFrom_ != &control) return;
  parkedFrom_ = nullptr;
  if (FocusWidget() == parkedAt_ && Takes(control)) Move(*control.widget);
}

void FormFocus::BeforeVisibility(const FormControl& control) {
  const QWidget* const focus = FocusWidget();
  lost_ = control.widget->isVisibleTo(&view_) && focus != nullptr &&
          (focus == control.widget || control.widget->isAncestorOf(focus));
  // Hidden with the focus on it, the widget would pass it on to just any other.
  if (lost_) Move(view_);
}

void FormFocus::AfterVisibility(const FormControl& control, const forms::ISurface& surface) {
  for (const FormControl* each : order_) {
    each->widget->setFocusPolicy(surface.Reachable(each->id) ? each->focusPolicy : Qt::NoFocus);
  }
  const FormControl* const focused = Focused();
  const bool lost = std::exchange(lost_, false) || (focused != nullptr && !Takes(*focused));
  const bool seeking = sought_ != nullptr && FocusWidget() == sought_;
  if (!lost && !seeking) return;
  const bool panelCame = lost && control.widget->isVisibleTo(&view_);
  MoveToFirst(panelCame ? &control : nullptr);
  sought_ = FocusWidget();
}

void FormFocus::AfterClick() {
  sought_ = nullptr;
  if (parkedFrom_ == nullptr || parkedAt_ != &view_) return;
  const FormControl* const from = std::exchange(parkedFrom_, nullptr);
  if (FocusWidget() != &view_) return;
  const auto after = std::find(order_.begin(), order_.end(), from);
  std::vector<const FormControl*> next(after, order_.end());
  next.insert(next.end(), order_.begin(), after);
  const auto found = std::find_if(next.begin(), next.end(), [&](const auto* control) { return Takes(*control); });
  if (found != next.end()) Move(*(*found)->widget);
}

void FormFocus::AfterViewFocused() {
  if (!moving_ && parkedFrom_ == nullptr) MoveToFirst(nullptr);
}

QWidget* FormFocus::FocusWidget() const {
  QWidget* const focus = view_.window()->focusWidget();
  return focus != nullptr && (focus == &view_ || view_.isAncestorOf(focus)) ? focus : nullptr;
}

bool FormFocus::Takes(const FormControl& control) const {
  const QWidget& widget = *control.widget;
  return widget.focusPolicy() != Qt::NoFocus && widget.isEnabledTo(&view_) && widget.isVisibleTo(&view_);
}

bool FormFocus::StandsIn(const FormControl& control, const FormControl& panel) const {
  return &control == &panel || panel.widget->isAncestorOf(control.widget);
}

void FormFocus::Move(QWidget& widget) {
  moving_ = true;
  widget.setFocus();
  moving_ = false;
}

void FormFocus::MoveToFirst(const FormControl* panel) {
  const auto found = std::find_if(order_.begin(), order_.end(), [&](const auto* control) {
    return Takes(*control) && (panel == nullptr || StandsIn(*control, *panel));
  });
  Move(found == order_.end() ? view_ : *(*found)->widget);
}

}  // namespace Helmsway
