#include "bench/desktop/form/FormControl.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>

#include "bench/desktop/form/DropDownList.h"
#include "bench/desktop/form/FormColors.h"
#include "bench/desktop/form/FormPanel.h"
#include "bench/desktop/form/OutlinedCheckBox.h"

namespace Helmsway {
namespace {

using forms::Aspect;
using forms::ControlKind;
using forms::ControlState;

QWidget* NewLabel(const ControlState& state, QWidget* parent) {
  auto* const label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setAlignment((state.alignment == forms::Alignment::Center ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignTop);
  return label;
}

QWidget* NewTextBox(const ControlState& state, QWidget* parent) {
  auto* const box = new QLineEdit(parent);
  box->setReadOnly(state.locked);
  return box;
}

QWidget* NewWidget(const ControlState& state, QWidget* parent) {
  switch (state.kind) {
    case ControlKind::PictureBox:
    case ControlKind::Frame:
      return new FormPanel(parent);
    case ControlKind::CommandButton:
      return new QPushButton(parent);
    case ControlKind::ComboBox:
      return new DropDownList(parent);
    case ControlKind::CheckBox:
      return new OutlinedCheckBox(parent);
    case ControlKind::TextBox:
      return NewTextBox(state, parent);
    case ControlKind::Label:
      break;
  }
  return NewLabel(state, parent);
}

bool HoldsOthers(ControlKind kind) { return kind == ControlKind::PictureBox || kind == ControlKind::Frame; }

FormControl NewControl(const forms::ISurface& surface, forms::ControlId id, QWidget* parent) {
  const ControlState state = surface.State(id);
  FormControl control{.id = id, .kind = state.kind, .container = state.container, .bounds = state.bounds};
  control.arrow = state.arrow;
  for (std::int32_t entry = 0; entry < state.listCount; ++entry) {
    control.firstEntries.append(ToQString(surface.Entry(id, entry)));
  }
  control.widget = NewWidget(state, parent);
  QString name = ToQString(state.name);
  if (state.index != forms::NoIndex) name += QLatin1Char('_') + QString::number(state.index);
  control.widget->setObjectName(name);
  if (state.bold) {
    // Nothing but the weight is set; all else goes on following the application's font.
    QFont font;
    font.setBold(true);
    control.widget->setFont(font);
  }
  control.widget->setAutoFillBackground(HoldsOthers(state.kind));
  if (!HoldsOthers(state.kind) && state.kind != ControlKind::Label) control.focusPolicy = Qt::StrongFocus;
  return control;
}

/// The toolkit takes a single ampersand for the mark of a shortcut.
QString Literal(QString caption) { return caption.replace(QLatin1Char('&'), QStringLiteral("&&")); }

void ShowCaption(FormControl& control, const QString& caption) {
  control.caption = caption;
  if (auto* const panel = qobject_cast<FormPanel*>(control.widget)) panel->SetCaption(caption);
  if (auto* const button = qobject_cast<QAbstractButton*>(control.widget)) button->setText(Literal(caption));
  if (auto* const label = qobject_cast<QLabel*>(control.widget)) {
    label->setText(label->buddy() == nullptr ? caption : Literal(caption));
  }
}

void ShowList(QComboBox& list, forms::ControlId id, const forms::ISurface& surface, const ControlState& state) {
  // A list is emptied or grows at its end.
  if (state.listCount < list.count()) list.clear();
  for (std::int32_t entry = list.count(); entry < state.listCount; ++entry) {
    list.addItem(ToQString(surface.Entry(id, entry)));
  }
  list.setCurrentIndex(state.listIndex);
  list.setToolTip(list.currentText());
}

int Right(const forms::Rectangle& bounds) { return bounds.left + bounds.width; }
int Bottom(const forms::Rectangle& bounds) { return bounds.top + bounds.height; }

/// The nearest label to the left, at the same height and in the same container; null when there is none.
const FormControl* LabelOf(const FormControl& field, const std::vector<FormControl>& controls) {
  const FormControl* nearest = nullptr;
  for (const FormControl& other : controls) {
    const bool beside = other.kind == ControlKind::Label && other.container == field.container &&
                        Right(other.bounds) <= field.bounds.left && other.bounds.top < Bottom(field.bounds) &&
                        field.bounds.top < Bottom(other.bounds);
    if (beside && (nearest == nullptr || Right(nearest->bounds) < Right(other.bounds))) nearest = &other;
  }
  return nearest;
}

QString SpokenName(const FormControl& control, const std::vector<FormControl>& controls) {
  if (control.arrow != forms::Arrow::None) {
    return control.arrow == forms::Arrow::Up ? QStringLiteral("Up") : QStringLiteral("Down");
  }
  if (control.kind != ControlKind::ComboBox && control.kind != ControlKind::TextBox) return control.caption;
  const FormControl* const label = LabelOf(control, controls);
  if (label == nullptr) return {};
  auto* const labelWidget = qobject_cast<QLabel*>(label->widget);
  labelWidget->setBuddy(control.widget);
  labelWidget->setText(Literal(label->caption));
  return label->caption;
}

}  // namespace

QString ToQString(std::string_view utf8) { return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())); }

std::vector<FormControl> MakeFormControls(const forms::ISurface& surface, QWidget& parent) {
  std::vector<FormControl> controls;
  for (forms::ControlId id = 0; id < surface.ControlCount(); ++id) {
    const forms::ControlId container = surface.State(id).container;
    QWidget* const holder =
        container == forms::NoControl ? &parent : controls[static_cast<std::size_t>(container)].widget;
    FormControl& control = controls.emplace_back(NewControl(surface, id, holder));
    // Earlier rows cover later ones, and a new widget stands on top.
    control.widget->lower();
    for (const Aspect aspect : {Aspect::Caption, Aspect::Visible, Aspect::Enabled, Aspect::BackColor, Aspect::Entries,
                                Aspect::Checked, Aspect::Text}) {
      ShowAspect(control, surface, aspect);
    }
  }
  NameForScreenReaders(controls);
  return controls;
}

void ShowAspect(FormControl& control, const forms::ISurface& surface, Aspect aspect) {
  const ControlState state = surface.State(control.id);
  switch (aspect) {
    case Aspect::Caption:
      return ShowCaption(control, ToQString(state.caption));
    case Aspect::Visible:
      return control.widget->setVisible(state.visible);
    case Aspect::Enabled:
      return control.widget->setEnabled(state.enabled);
    case Aspect::BackColor:
      control.backColor = state.backColor;
      return;
    case Aspect::Entries:
    case Aspect::Selection:
      if (auto* const list = qobject_cast<QComboBox*>(control.widget)) ShowList(*list, control.id, surface, state);
      return;
    case Aspect::Checked:
      if (auto* const box = qobject_cast<QCheckBox*>(control.widget)) box->setChecked(state.checked);
      return;
    case Aspect::Text:
      if (auto* const box = qobject_cast<QLineEdit*>(control.widget)) box->setText(ToQString(state.text));
      return;
  }
}

void ShowColors(const FormControl& control, const QPalette& form) {
  constexpr forms::Rgb Amber{0xff, 0xed, 0xb5};
  const forms::Color back = control.doubt.isEmpty() ? control.backColor : forms::Color(Amber);
  control.widget->setPalette(ControlPalette(control.kind, back, form));
  const bool plain = control.backColor == forms::Color(forms::SystemColor::ButtonFace);
  const bool area = control.kind == ControlKind::Label || control.kind == ControlKind::CheckBox;
  if (area) control.widget->setAutoFillBackground(!plain);
}

void NameForScreenReaders(const std::vector<FormControl>& controls) {
  for (const FormControl& control : controls) {
    const QString spoken = SpokenName(control, controls);
    control.widget->setAccessibleName(spoken.isEmpty() ? control.widget->objectName() : spoken);
    if (control.arrow == forms::Arrow::Up) control.widget->setAccessibleDescription(QStringLiteral("Steps up"));
    if (control.arrow == forms::Arrow::Down) control.widget->setAccessibleDescription(QStringLiteral("Steps down"));
  }
}

}  // namespace Helmsway
