#include "bench/desktop/instrument/PictureColors.h"

namespace Helmsway {
namespace {

constexpr int DarkBelow = 128;

QColor Mixed(const QColor& one, const QColor& other, double shareOfOther) {
  const auto mix = [&](int a, int b) { return static_cast<int>(a + (b - a) * shareOfOther); };
  return {mix(one.red(), other.red()), mix(one.green(), other.green()), mix(one.blue(), other.blue())};
}

}  // namespace

PictureColors::PictureColors(const QPalette& palette)
    : ground(palette.color(QPalette::Base)), ink(palette.color(QPalette::Text)) {
  const bool dark = ground.lightness() < DarkBelow;
  const QColor accent = dark ? QColor(0x7f, 0xb8, 0xff) : QColor(0x0b, 0x57, 0xa4);
  faint = Mixed(ground, ink, 0.45);
  upper = Mixed(ground, ink, 0.08);
  lower = Mixed(ground, ink, 0.18);
  occupied = Mixed(ground, accent, 0.25);
  cover = Mixed(ground, ink, 0.6);
  cover.setAlpha(90);
  marker = accent;
}

}  // namespace Helmsway
