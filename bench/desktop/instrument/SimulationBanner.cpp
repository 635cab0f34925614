#include "bench/desktop/instrument/SimulationBanner.h"

#include <QPainter>

namespace Helmsway {
namespace {

const QColor Amber(0xff, 0xc1, 0x07);
const QColor DarkerAmber(0xf5, 0xa6, 0x00);
constexpr int Padding = 5;

}  // namespace

SimulationBanner::SimulationBanner(QWidget* parent)
    : QLabel(QStringLiteral("SIMULATED INSTRUMENT: no real Marivane is connected"), parent) {
  setObjectName(QStringLiteral("simulationBanner"));
  setAccessibleName(text());
  setAlignment(Qt::AlignCenter);
  setWordWrap(true);
  setMargin(Padding);
  QFont bold = font();
  bold.setBold(true);
  setFont(bold);
  QPalette black = palette();
  black.setColor(QPalette::WindowText, Qt::black);
  setPalette(black);
}

QSize SimulationBanner::minimumSizeHint() const { return {0, fontMetrics().height() + 2 * Padding}; }

void SimulationBanner::paintEvent(QPaintEvent* event) {
  {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), Amber);
    const int stripe = fontMetrics().height();
    painter.setPen(QPen(DarkerAmber, stripe / 2.0));
    for (int left = -height(); left < width() + stripe; left += 2 * stripe) {
      painter.drawLine(left, height() + stripe, left + height() + 2 * stripe, -stripe);
    }
  }
  QLabel::paintEvent(event);
}

}  // namespace Helmsway
