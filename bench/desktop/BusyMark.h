#pragma once

#include <QElapsedTimer>
#include <QWidget>

class QLabel;
class QProgressBar;

namespace Helmsway {

/// Tells in the status bar which line is under way, for how long by the clock on the wall, and how far it is. Empty
/// while none is.
class BusyMark : public QWidget {
  Q_OBJECT

 public:
  explicit BusyMark(QWidget* parent = nullptr);

  void LineBegan(const QString& line);
  /// `share` of the line's time is over, 0 to 1.
  void Show(double share);
  void LineOver();

 private:
  QElapsedTimer time_;
  QString line_;
  QLabel* text_ = nullptr;
  QProgressBar* bar_ = nullptr;
};

}  // namespace Helmsway
