#include "bench/desktop/BusyMark.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

namespace Helmsway {

BusyMark::BusyMark(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("busyMark"));
  text_ = new QLabel(this);
  text_->setObjectName(QStringLiteral("busyText"));
  bar_ = new QProgressBar(this);
  bar_->setObjectName(QStringLiteral("busy"));
  bar_->setAccessibleName(tr("Progress of the line under way"));
  bar_->setRange(0, 1000);
  bar_->setTextVisible(false);
  bar_->setFixedWidth(fontMetrics().averageCharWidth() * 16);
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(text_);
  layout->addWidget(bar_);
  bar_->hide();
}

void BusyMark::LineBegan(const QString& line) {
  line_ = line;
  time_.start();
}

void BusyMark::Show(double share) {
  bar_->show();
  bar_->setValue(static_cast<int>(share * bar_->maximum()));
  text_->setText(tr("%1: %2 s").arg(line_).arg(static_cast<double>(time_.elapsed()) / 1000, 0, 'f', 1));
}

void BusyMark::LineOver() {
  bar_->hide();
  text_->clear();
}

}  // namespace Helmsway
