#include "bench/desktop/form/FormScale.h"

#include <QComboBox>
#include <QLabel>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QtMath>
#include <algorithm>
#include <limits>

#include "bench/desktop/form/FormPanel.h"

namespace Helmsway {
namespace {

using forms::ControlKind;

constexpr double TwipsPerInch = 1440;

QSize NeededByLabel(const FormControl& control, int width) {
  constexpr int unlimited = std::numeric_limits<short>::max();
  const QFontMetrics metrics = control.widget->fontMetrics();
  return metrics.boundingRect(QRect(0, 0, width, unlimited), Qt::TextWordWrap | Qt::AlignLeft, control.caption).size();
}

QSize NeededByList(const FormControl& control) {
  const QFontMetrics metrics = control.widget->fontMetrics();
  int text = 0;
  for (const QString& entry : control.firstEntries) text = std::max(text, metrics.horizontalAdvance(entry));
  QStyleOptionComboBox option;
  option.initFrom(control.widget);
  // Two pixels for the style's margin around the field's text.
  const QSize content(text + 2, metrics.height() + 2);
  const int height = control.widget->sizeHint().height();
  return control.widget->style()
      ->sizeFromContents(QStyle::CT_ComboBox, &option, content, control.widget)
      .expandedTo(QSize(0, height));
}

/// Pixels that the control's text takes, with what the style puts around it, in a rectangle of the given width.
QSize Needed(const FormControl& control, int width) {
  switch (control.kind) {
    case ControlKind::Label:
      return NeededByLabel(control, width);
    case ControlKind::ComboBox:
      return NeededByList(control);
    case ControlKind::TextBox:
      return {0, control.widget->sizeHint().height()};
    case ControlKind::CheckBox:
      return control.widget->sizeHint();
    case ControlKind::CommandButton:
      // An arrow is drawn as large as its button.
      return control.arrow == forms::Arrow::None ? control.widget->sizeHint() : QSize();
    case ControlKind::Frame:
      if (const auto* const panel = qobject_cast<FormPanel*>(control.widget)) {
        const QRect caption = panel->CaptionRect();
        return {caption.right() + 1 + caption.left(), caption.height()};
      }
      break;
    case ControlKind::PictureBox:
      break;
  }
  return {};
}

/// A panel's caption has only the strip above the panel's contents.
forms::Rectangle RoomForText(const FormControl& control, const std::vector<FormControl>& controls) {
  forms::Rectangle room = control.bounds;
  for (const FormControl& other : controls) {
    if (other.container == control.id) room.height = std::min(room.height, other.bounds.top);
  }
  return room;
}

}  // namespace

FormScale FormScale::Fitting(const std::vector<FormControl>& controls, double screenPixelsPerInch) {
  constexpr double step = 1.01;
  FormScale scale(screenPixelsPerInch / TwipsPerInch);
  // So much more is more than any font needs: a rectangle without extent must not keep the form from being drawn.
  const double limit = 10 * scale.pixelsPerTwip_;
  for (const FormControl& control : controls) {
    FormControl text = control;
    text.bounds = RoomForText(control, controls);
    while (!scale.Fits(text) && scale.pixelsPerTwip_ < limit) scale.pixelsPerTwip_ *= step;
  }
  return scale;
}

QRect FormScale::Pixels(const forms::Rectangle& bounds) const {
  const auto pixels = [&](std::int32_t twips) { return twips * pixelsPerTwip_; };
  return {qRound(pixels(bounds.left)), qRound(pixels(bounds.top)), qCeil(pixels(bounds.width)),
          qCeil(pixels(bounds.height))};
}

bool FormScale::Fits(const FormControl& control) const {
  const QSize size = Pixels(control.bounds).size();
  const QSize needed = Needed(control, size.width());
  return needed.width() <= size.width() && needed.height() <= size.height();
}

}  // namespace Helmsway
