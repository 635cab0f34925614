#pragma once

#include <QKeyEvent>
#include <QObject>

namespace Helmsway {

/// Marks what a key that is held down repeats as repeated, for every window of the program, and keeps the repeats of
/// Return from them: a key that has pressed a button is not to answer the question that comes of it.
///
/// The toolkit marks repeats by itself, but under X11 it misses most: the key is let go and pressed again in the same
/// instant there, and is taken for a new press when the second event is a little late.
class HeldKeys final : public QObject {
  Q_OBJECT

 public:
  /// Works as long as it lives; the application must be there.
  HeldKeys();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool IsRepeat(const QKeyEvent& press) const;

  int released_ = 0;         // the key that was let go last
  quint64 releaseTime_ = 0;  // by the window system's clock; 0 when it isn't known
};

}  // namespace Helmsway
