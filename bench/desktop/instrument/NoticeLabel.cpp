#include "bench/desktop/instrument/NoticeLabel.h"

namespace Helmsway {
namespace {

constexpr int Padding = 4;

QString SignOf(NoticeLabel::Weight weight) {
  return weight == NoticeLabel::Weight::Warning ? QStringLiteral("\u26A0 ") : QStringLiteral("\u2716 ");
}

}  // namespace

NoticeLabel::NoticeLabel(const QString& objectName, Weight weight, QWidget* parent) : QLabel(parent), weight_(weight) {
  setObjectName(objectName);
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setMargin(Padding);
  setAutoFillBackground(true);
  QPalette colors = palette();
  const bool warning = weight == Weight::Warning;
  colors.setColor(QPalette::Window, warning ? QColor(0xff, 0xe0, 0x82) : QColor(0xa8, 0x1c, 0x1c));
  colors.setColor(QPalette::WindowText, warning ? Qt::black : Qt::white);
  setPalette(colors);
  hide();
}

void NoticeLabel::Say(const QString& words) {
  const QString whole = words.isEmpty() ? QString() : SignOf(weight_) + words;
  if (whole == text()) return;
  setText(whole);
  setAccessibleName(words);
  setVisible(!whole.isEmpty());
}

}  // namespace Helmsway
