#pragma once

#include <QRect>
#include <vector>

#include "bench/desktop/form/FormControl.h"

namespace Helmsway {

/// How large a form is drawn: one scale for all of it.
class FormScale {
 public:
  /// The screen's own scale or, when a text wouldn't fit its rectangle at the fonts of the widgets, as much more as is
  /// needed. Of a list's entries, those it had at first are counted.
  static FormScale Fitting(const std::vector<FormControl>& controls, double screenPixelsPerInch);

  QRect Pixels(const forms::Rectangle& bounds) const;
  /// Whether all of the control's text has room in its rectangle.
  bool Fits(const FormControl& control) const;

 private:
  explicit FormScale(double pixelsPerTwip) : pixelsPerTwip_(pixelsPerTwip) {}

  double pixelsPerTwip_;
};

}  // namespace Helmsway
