#pragma once

#include <QComboBox>

namespace Helmsway {

/// A drop-down list that shortens what doesn't fit its field, shows it whole when it is dropped down, and leaves the
/// wheel to whatever scrolls the form, so that nothing is picked in passing.
class DropDownList final : public QComboBox {
  Q_OBJECT

 public:
  using QComboBox::QComboBox;

  void showPopup() override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace Helmsway
