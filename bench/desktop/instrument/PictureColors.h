#pragma once

#include <QColor>
#include <QPalette>

namespace Helmsway {

/// What the pictures of the instrument are painted with. Grounds and ink follow the palette, light or dark; the metals
/// are fixed and stand against each other.
struct PictureColors {
  explicit PictureColors(const QPalette& palette);

  QColor ground;
  QColor ink;       ///< text and outlines on every ground below
  QColor faint;     ///< auxiliary lines on `ground`
  QColor upper;     ///< the upper stage level and what lies on it
  QColor lower;     ///< the lower stage level
  QColor occupied;  ///< a place where something stands
  QColor cover;     ///< hatching, translucent
  QColor marker;    ///< of the pipette module; readable on `ground`

  QColor sleeve{0x3d, 0x4b, 0x5a};  ///< the part that S drives
  QColor shaft{0xa0, 0x8c, 0x6a};
  QColor ring{0xee, 0xf1, 0xf4};  ///< silver
  QColor metalEdge{0x18, 0x1e, 0x24};
};

}  // namespace Helmsway
