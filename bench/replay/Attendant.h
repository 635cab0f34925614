#pragma once

#include <string_view>

#include "forms/Surface.h"

namespace Helmsway {

/// A person at the screen while a run goes on: sees the form, answers its message boxes, and lets a line take its time.
class IAttendant : public forms::IObserver, public forms::IMessageBoxes {
 public:
  /// The add-in has been created, and this is its form. `Closed` tells of its end.
  virtual void FormLoaded(forms::ISurface& surface) noexcept = 0;

  /// A line has begun. Returns when its time is over; what is done meanwhile is performed by the same player.
  virtual void LineUnderWay(std::string_view line) noexcept = 0;

 protected:
  ~IAttendant() = default;
};

}  // namespace Helmsway
