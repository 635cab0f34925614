#include "bench/desktop/form/HeldKeys.h"

#include <QCoreApplication>

namespace Helmsway {

HeldKeys::HeldKeys() { QCoreApplication::instance()->installEventFilter(this); }

bool HeldKeys::eventFilter(QObject* watched, QEvent* event) {
  // The window system's events go to windows first; what a window hands on to its widgets is the same event.
  if (!watched->isWindowType()) return false;
  if (event->type() == QEvent::KeyRelease) {
    const auto& release = static_cast<const QKeyEvent&>(*event);
    released_ = release.key();
    releaseTime_ = release.timestamp();
    return false;
  }
  if (event->type() != QEvent::KeyPress) return false;
  auto& press = static_cast<QKeyEvent&>(*event);
  if (!IsRepeat(press)) return false;
  if (press.key() == Qt::Key_Return || press.key() == Qt::Key_Enter) return true;
  if (press.isAutoRepeat()) return false;
  QKeyEvent repeat(press.type(), press.key(), press.modifiers(), press.nativeScanCode(), press.nativeVirtualKey(),
                   press.nativeModifiers(), press.text(), true, static_cast<quint16>(press.count()));
  repeat.setTimestamp(press.timestamp());
  QCoreApplication::sendEvent(watched, &repeat);
  press.setAccepted(repeat.isAccepted());
  return true;
}

bool HeldKeys::IsRepeat(const QKeyEvent& press) const {
  const bool sameInstant = releaseTime_ != 0 && press.timestamp() == releaseTime_;
  return press.isAutoRepeat() || (sameInstant && press.key() == released_);
}

}  // namespace Helmsway
