#pragma once

#include <QColor>
#include <QPalette>

#include "forms/Surface.h"

namespace Helmsway {

/// Half-way between two colours.
QColor Mixed(const QColor& first, const QColor& second);

/// What a control's back colour changes in the palette that its widget inherits from the form, the colour of the text
/// on it included; the roles that it leaves alone aren't set.
QPalette ControlPalette(forms::ControlKind kind, const forms::Color& backColor, const QPalette& form);

}  // namespace Helmsway
