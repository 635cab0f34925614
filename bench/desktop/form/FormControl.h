#pragma once

#include <QPalette>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <string_view>
#include <vector>

#include "forms/Surface.h"

namespace Helmsway {

/// A control of a form and the widget that shows it. What the layout needs is kept here, since the form may be gone
/// before its picture is.
struct FormControl {
  forms::ControlId id = forms::NoControl;
  forms::ControlKind kind = forms::ControlKind::Label;
  forms::ControlId container = forms::NoControl;
  forms::Rectangle bounds;
  forms::Arrow arrow = forms::Arrow::None;
  forms::Color backColor;
  QString caption;
  QString doubt;                              ///< why what it shows may not be so; empty without a doubt
  QStringList firstEntries;                   ///< of a list: what it held when the widget was made
  QWidget* widget = nullptr;                  ///< belongs to its parent widget
  Qt::FocusPolicy focusPolicy = Qt::NoFocus;  ///< while the operator can get at it
};

QString ToQString(std::string_view utf8);

/// Makes the widgets of all controls, each showing its control's state; the outermost stands in `parent`.
std::vector<FormControl> MakeFormControls(const forms::ISurface& surface, QWidget& parent);

/// Brings one aspect of the widget in line with the control, `Visible` and `Enabled` included.
void ShowAspect(FormControl& control, const forms::ISurface& surface, forms::Aspect aspect);

/// Paints the widget with the control's back colour, on a form that has the palette.
void ShowColors(const FormControl& control, const QPalette& form);

/// Gives every widget its accessible name; a list or a text box has that of the label to its left.
void NameForScreenReaders(const std::vector<FormControl>& controls);

}  // namespace Helmsway
