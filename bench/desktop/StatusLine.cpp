#include "bench/desktop/StatusLine.h"

#include <QHBoxLayout>
#include <QLabel>

#include "bench/desktop/panes/Tone.h"

namespace Helmsway {

StatusLine::StatusLine(QWidget* parent) : QWidget(parent), text_(new QLabel(this)), left_(new QLabel(this)) {
  text_->setObjectName(QStringLiteral("STATUS"));
  text_->setAccessibleName(tr("Status"));
  text_->setTextFormat(Qt::PlainText);
  left_->setObjectName(QStringLiteral("statusLeft"));
  left_->setMargin(2);
  left_->hide();
  ApplyTone(*left_, Tone::Waiting);
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(text_);
  layout->addWidget(left_);
  layout->addStretch(1);
}

void StatusLine::ShowText(const QString& text) {
  text_->setText(text);
  ShowLeftSince(std::nullopt);
}

void StatusLine::ShowLeftSince(const std::optional<QDateTime>& time) {
  left_->setVisible(time.has_value());
  if (!time) return;
  left_->setText(tr("⚠ left over since %1: nothing is under way").arg(time->toString(QStringLiteral("HH:mm:ss"))));
}

}  // namespace Helmsway
