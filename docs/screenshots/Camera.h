#pragma once

#include <QDialog>
#include <QImage>
#include <QString>
#include <QWidget>

namespace Helmsway {

/// Takes pictures of the window into a folder. A title bar is drawn above it, as a desktop would.
class Camera {
 public:
  explicit Camera(QString folder) : folder_(std::move(folder)) {}

  /// Writes NAME.png; `dialog`, which may be null, stands in front of the window's middle. Throws `std::runtime_error`
  /// when the file can't be written.
  void Take(const QString& name, QWidget& window, QDialog* dialog = nullptr) const;

 private:
  const QString folder_;
};

}  // namespace Helmsway
