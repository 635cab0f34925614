#include "bench/desktop/panes/Tone.h"

#include <QBrush>
#include <QColor>
#include <QPalette>

namespace Helmsway {
namespace {

struct ColourPair {
  QColor text;
  QColor ground;
};

ColourPair PairOf(Tone tone) {
  switch (tone) {
    case Tone::Good:
      return {QColor(0x0b, 0x3d, 0x1c), QColor(0xcf, 0xf0, 0xd8)};
    case Tone::Bad:
      return {QColor(0x5f, 0x08, 0x08), QColor(0xff, 0xd9, 0xd4)};
    case Tone::Waiting:
      return {QColor(0x4a, 0x36, 0x00), QColor(0xff, 0xed, 0xb5)};
    case Tone::Plain:
      break;
  }
  return {};
}

}  // namespace

QVariant ToneData(Tone tone, int role) {
  if (tone == Tone::Plain) return {};
  if (role == Qt::ForegroundRole) return QBrush(PairOf(tone).text);
  if (role == Qt::BackgroundRole) return QBrush(PairOf(tone).ground);
  return {};
}

void ApplyTone(QWidget& widget, Tone tone) {
  QPalette palette;
  if (tone != Tone::Plain) {
    const ColourPair pair = PairOf(tone);
    palette.setColor(QPalette::WindowText, pair.text);
    palette.setColor(QPalette::Window, pair.ground);
  }
  widget.setPalette(palette);
  widget.setAutoFillBackground(tone != Tone::Plain);
}

}  // namespace Helmsway
