#pragma once

#include <QIcon>
#include <QPalette>

#include "forms/Design.h"

namespace Helmsway {

/// An arrow in the palette's colour for text on buttons, for enabled and disabled buttons; empty for `Arrow::None`.
/// `edge` is the icon's width and height in logical pixels.
QIcon ArrowIcon(forms::Arrow arrow, const QPalette& palette, int edge, double devicePixelRatio);

}  // namespace Helmsway
