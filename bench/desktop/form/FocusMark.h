#pragma once

#include <QPointer>
#include <QWidget>

namespace Helmsway {

/// A frame around the widget that has the keyboard's focus, for styles whose own mark is faint. Lies above everything
/// else in its parent and lets the mouse through.
class FocusMark final : public QWidget {
  Q_OBJECT

 public:
  explicit FocusMark(QWidget* parent);

  /// Shows the frame around a widget inside the parent, or the parent itself; null hides it.
  void Follow(const QWidget* widget);
  /// Goes where the widget has gone.
  void Catch() { Follow(followed_); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int Thickness() const;

  QPointer<const QWidget> followed_;
};

}  // namespace Helmsway
