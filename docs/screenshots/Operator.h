#pragma once

#include <QTemporaryDir>
#include <QTimer>
#include <deque>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "bench/desktop/MainWindow.h"
#include "docs/screenshots/Camera.h"

namespace Helmsway {

/// Works the bench's window, on a copy of the example installation of its own, and has pictures taken on the way. What
/// doesn't go as planned throws `std::runtime_error`, or ends the program where nothing can be thrown.
class Operator {
 public:
  /// `size` is the window's; empty for the one that it takes by itself.
  Operator(const Camera& camera, const std::filesystem::path& programs, const QSize& size);
  ~Operator();

  void Take(const char* picture);
  /// A picture when the next line that begins so is under way.
  void TakeDuring(const char* line, const char* picture);
  /// The next message box gets that answer, behind a picture if there is a name for one.
  void Answer(QMessageBox::StandardButton button, const char* picture = "");

  void Press(int button);
  void Check(const char* box);
  void Pick(const char* list, int entry);
  void Perform(const std::string& action);
  void SetTab(const char* pane);

  /// Steps until the edge is as near the ring as that; `entry` is the one of "Step size".
  void JogToRing(int entry, double near);

 private:
  struct Planned {
    QMessageBox::StandardButton button;
    QString picture;
  };

  void GiveSpareRoomToPanes();
  void LookForBox();
  void LineIsUnderWay();
  template <typename T>
  T& Find(const QString& name);

  const Camera& camera_;
  QTemporaryDir installation_;
  std::unique_ptr<MainWindow> window_;
  std::deque<Planned> boxes_;
  QTimer watch_;
  std::string line_;
  QString linePicture_;
};

}  // namespace Helmsway
