#include "bench/desktop/LowerDock.h"

#include <QLayout>
#include <QTabWidget>
#include <algorithm>
#include <utility>

#include "bench/desktop/panes/ConsolePane.h"
#include "bench/desktop/panes/ValuesPane.h"

namespace Helmsway {

LowerDock::LowerDock(ConsoleModel& entries, QWidget* parent)
    : QDockWidget(tr("Values and Console"), parent),
      tabs_(new QTabWidget(this)),
      values_(new ValuesPane(this)),
      console_(new ConsolePane(entries, this)) {
  setObjectName(QStringLiteral("lowerDock"));
  tabs_->setObjectName(QStringLiteral("tabs"));
  tabs_->addTab(values_, tr("&Values"));
  tabs_->addTab(console_, tr("&Console"));
  setWidget(tabs_);
}

void LowerDock::TakeRoom() {
  show();
  if (heightBefore_ == 0) heightBefore_ = height();
  tabs_->setCurrentWidget(values_);
  Q_EMIT HeightWanted(std::max(heightBefore_, window()->height() * 3 / 5));
}

void LowerDock::GiveRoomBack() {
  const int height = std::exchange(heightBefore_, 0);
  if (height == 0) return;
  // The window's layout would learn of the smaller size hint too late.
  tabs_->updateGeometry();
  layout()->activate();
  Q_EMIT HeightWanted(height);
}

}  // namespace Helmsway
