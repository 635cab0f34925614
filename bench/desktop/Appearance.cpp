#include "bench/desktop/Appearance.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>
#include <algorithm>

namespace Helmsway::Appearance {
namespace {

struct Look {
  QFont font;
  QPalette palette;
  int textSize = 100;
};

Look& Current() {
  static Look look;
  return look;
}

QPalette DarkPalette() {
  const QColor window(0x2b, 0x2b, 0x2b);
  const QColor base(0x1e, 0x1e, 0x1e);
  const QColor text(0xf0, 0xf0, 0xf0);
  const QColor faint(0x9a, 0x9a, 0x9a);
  const QColor mark(0x3d, 0x8e, 0xc9);
  QPalette palette(text, QColor(0x3a, 0x3a, 0x3a), QColor(0x5a, 0x5a, 0x5a), QColor(0x14, 0x14, 0x14),
                   QColor(0x44, 0x44, 0x44), text, Qt::white, base, window);
  palette.setColor(QPalette::AlternateBase, QColor(0x26, 0x26, 0x26));
  palette.setColor(QPalette::Highlight, mark);
  palette.setColor(QPalette::HighlightedText, Qt::black);
  palette.setColor(QPalette::Link, mark);
  palette.setColor(QPalette::ToolTipBase, base);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::PlaceholderText, faint);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, faint);
  }
  return palette;
}

}  // namespace

void Begin() {
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  Current().font = QApplication::font();
  Current().palette = QApplication::palette();
}

void SetTextSize(int percent) {
  Look& look = Current();
  look.textSize = std::clamp(percent, SmallestText, LargestText);
  QFont font = look.font;
  const double factor = look.textSize / 100.0;
  if (font.pointSizeF() > 0) {
    font.setPointSizeF(font.pointSizeF() * factor);
  } else {
    font.setPixelSize(static_cast<int>(font.pixelSize() * factor));
  }
  QApplication::setFont(font);
}

int TextSize() { return Current().textSize; }

void SetColors(Colors colors) { QApplication::setPalette(colors == Colors::Dark ? DarkPalette() : Current().palette); }

}  // namespace Helmsway::Appearance
