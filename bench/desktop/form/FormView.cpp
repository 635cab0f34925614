#include "bench/desktop/form/FormView.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <algorithm>

#include "bench/desktop/form/ArrowIcon.h"
#include "bench/desktop/form/FocusMark.h"
#include "bench/desktop/form/FormScale.h"

namespace Helmsway {

using forms::Arrow;
using forms::Aspect;
using forms::ControlId;
using forms::ControlKind;

FormView::FormView(forms::ISurface& surface, IFormHands& hands, QWidget* parent)
    : QWidget(parent), surface_(&surface), hands_(hands), controls_(MakeFormControls(surface, *this)) {
  setObjectName(QStringLiteral("formView"));
  setAccessibleName(ToQString(surface.FormCaption()));
  FindJogPanels();
  for (const FormControl& control : controls_) Connect(control);
  focus_ = std::make_unique<FormFocus>(*this, controls_);
  mark_ = new FocusMark(this);
  connect(qApp, &QApplication::focusChanged, this, [this](const QWidget*, const QWidget* now) {
    mark_->Follow(now != nullptr && (now == this || isAncestorOf(now)) ? now : nullptr);
  });
  if (!controls_.empty()) focus_->AfterVisibility(At(0), surface);
  LayOut();
}

FormView::~FormView() {
  // The focus still wanders while the widgets go.
  disconnect(qApp, nullptr, this, nullptr);
}

void FormView::Changed(ControlId control, Aspect aspect) {
  if (surface_ == nullptr || control < 0 || control >= static_cast<ControlId>(controls_.size())) return;
  FormControl& changed = At(control);
  switch (aspect) {
    case Aspect::Visible:
      return SetVisible(changed);
    case Aspect::Enabled:
      return SetEnabled(changed);
    default:
      ShowAspect(changed, *surface_, aspect);
  }
  if (aspect == Aspect::BackColor) Paint(changed);
  if (aspect != Aspect::Caption) return;
  NameForScreenReaders(controls_);
  LayOut();
}

void FormView::ShowDoubt(const QString& name, const QString& why) {
  for (FormControl& control : controls_) {
    if (control.widget->objectName() != name || control.doubt == why) continue;
    control.doubt = why;
    control.widget->setToolTip(why);
    control.widget->setAccessibleDescription(why);
    Paint(control);
  }
}

void FormView::Detach() {
  surface_ = nullptr;
  setEnabled(false);
}

void FormView::SetVisible(FormControl& control) {
  focus_->BeforeVisibility(control);
  ShowAspect(control, *surface_, Aspect::Visible);
  focus_->AfterVisibility(control, *surface_);
  if (clicksUnderWay_ == 0) focus_->AfterClick();
}

void FormView::SetEnabled(FormControl& control) {
  const bool enabled = surface_->State(control.id).enabled;
  if (!enabled) focus_->BeforeDisabled(control);
  auto* const list = qobject_cast<QComboBox*>(control.widget);
  if (list != nullptr && !enabled) list->hidePopup();
  ShowAspect(control, *surface_, Aspect::Enabled);
  if (enabled) focus_->AfterEnabled(control);
}

bool FormView::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
      if (const auto* const control = Watched(watched)) return TakesMouse(*control, static_cast<QMouseEvent&>(*event));
      break;
    case QEvent::KeyPress:
      if (const auto* const control = Watched(watched)) return TakesKey(*control, static_cast<QKeyEvent&>(*event));
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

bool FormView::event(QEvent* event) {
  // Widgets that have got another font ask for a layout, perhaps after the view has heard of the font itself.
  if (event->type() == QEvent::LayoutRequest) LayOut();
  return QWidget::event(event);
}

void FormView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  switch (event->type()) {
    case QEvent::PaletteChange:
      return PaintAll();
    case QEvent::ApplicationFontChange:
    case QEvent::FontChange:
    case QEvent::StyleChange:
      return LayOut();
    default:
      return;
  }
}

void FormView::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  // Who gave the focus to the view before its window was shown gets it with the window.
  const bool given = event->reason() == Qt::OtherFocusReason || event->reason() == Qt::ActiveWindowFocusReason;
  if (given) focus_->AfterViewFocused();
}

void FormView::Connect(const FormControl& control) {
  const ControlId id = control.id;
  control.widget->installEventFilter(this);
  if (auto* const box = qobject_cast<QCheckBox*>(control.widget)) {
    connect(box, &QAbstractButton::clicked, this, [this, id](bool wanted) { SetChecked(id, wanted); });
  } else if (auto* const button = qobject_cast<QPushButton*>(control.widget)) {
    connect(button, &QAbstractButton::clicked, this, [this, id] { Click(id); });
  } else if (auto* const list = qobject_cast<QComboBox*>(control.widget)) {
    connect(list, &QComboBox::activated, this, [this, id](int entry) { Pick(id, entry); });
  }
}

void FormView::FindJogPanels() {
  for (FormControl& panel : controls_) {
    JogPanel jog{.panel = panel.id};
    for (const FormControl& control : controls_) {
      if (control.container != panel.id) continue;
      if (control.arrow == Arrow::Up) jog.up = control.id;
      if (control.arrow == Arrow::Down) jog.down = control.id;
    }
    if (jog.up == forms::NoControl || jog.down == forms::NoControl) continue;
    panel.focusPolicy = Qt::StrongFocus;
    jogPanels_.push_back(jog);
  }
}

void FormView::LayOut() {
  const FormScale scale = FormScale::Fitting(controls_, logicalDpiX());
  formSize_ = QSize();
  for (const FormControl& control : controls_) {
    const QRect place = scale.Pixels(control.bounds);
    control.widget->setGeometry(place);
    // The outermost container has the same margin on all sides.
    if (control.container == forms::NoControl) {
      formSize_ = formSize_.expandedTo(QSize(place.right() + place.left(), place.bottom() + place.top()));
    }
    Paint(control);
  }
  setMinimumSize(formSize_);
  updateGeometry();
  mark_->Catch();
}

void FormView::Paint(const FormControl& control) {
  ShowColors(control, palette());
  auto* const button = qobject_cast<QPushButton*>(control.widget);
  if (button == nullptr || control.arrow == Arrow::None) return;
  const int edge = std::min(button->width(), button->height()) / 2;
  button->setIcon(ArrowIcon(control.arrow, button->palette(), edge, devicePixelRatioF()));
  button->setIconSize({edge, edge});
}

void FormView::PaintAll() {
  for (const FormControl& control : controls_) Paint(control);
}

void FormView::Click(ControlId control) {
  if (surface_ == nullptr) return;
  const QPointer<FormView> self(this);
  ++clicksUnderWay_;
  hands_.Click(control);
  if (self == nullptr) return;
  if (--clicksUnderWay_ == 0) focus_->AfterClick();
}

void FormView::SetChecked(ControlId checkBox, bool checked) {
  if (surface_ == nullptr) return;
  const QPointer<FormView> self(this);
  hands_.SetChecked(checkBox, checked);
  if (self != nullptr) Changed(checkBox, Aspect::Checked);
}

void FormView::Pick(ControlId list, std::int32_t entry) {
  if (surface_ == nullptr) return;
  const QPointer<FormView> self(this);
  hands_.Pick(list, entry);
  if (self != nullptr) Changed(list, Aspect::Selection);
}

const FormControl* FormView::Watched(const QObject* widget) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [&](const FormControl& control) { return control.widget == widget; });
  return found == controls_.end() ? nullptr : &*found;
}

bool FormView::TakesMouse(const FormControl& control, QMouseEvent& event) {
  const bool area = control.kind == ControlKind::Label || control.kind == ControlKind::Frame;
  // What a widget leaves would go on to the one below it, and be a click on the background in the end.
  if (area || !control.widget->isEnabled()) return true;
  if (control.kind != ControlKind::PictureBox) return false;
  if (event.button() != Qt::LeftButton) return true;
  const bool pressed = event.type() != QEvent::MouseButtonRelease;
  const bool clicked = !pressed && backgroundPressed_ && control.widget->rect().contains(event.position().toPoint());
  backgroundPressed_ = pressed;
  if (clicked) Click(control.id);
  return true;
}

bool FormView::TakesKey(const FormControl& control, QKeyEvent& event) {
  const int key = event.key();
  if (key == Qt::Key_Up || key == Qt::Key_Down) return TakesArrow(control, event);
  auto* const button = qobject_cast<QPushButton*>(control.widget);
  if (button == nullptr || (key != Qt::Key_Return && key != Qt::Key_Enter)) return false;
  // A key that is held down would go on pressing, on whatever panel comes next.
  if (!event.isAutoRepeat()) button->click();
  return true;
}

bool FormView::TakesArrow(const FormControl& control, QKeyEvent& event) {
  const ControlId panel = control.kind == ControlKind::CommandButton ? control.container : control.id;
  const auto jog = std::find_if(jogPanels_.begin(), jogPanels_.end(),
                                [&](const JogPanel& candidate) { return candidate.panel == panel; });
  if (jog == jogPanels_.end() || (event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
  // A key that the panel's list or text box has left comes on to the panel.
  const FormControl* const focused = focus_->Focused();
  const bool fromOther =
      focused != nullptr && focused->container == panel && focused->kind != ControlKind::CommandButton;
  if (fromOther) return false;
  const ControlId arrow = event.key() == Qt::Key_Up ? jog->up : jog->down;
  const bool dropped = event.isAutoRepeat() || clicksUnderWay_ > 0 || surface_ == nullptr;
  if (!dropped && surface_->State(arrow).enabled && surface_->Reachable(arrow)) Click(arrow);
  return true;
}

}  // namespace Helmsway
