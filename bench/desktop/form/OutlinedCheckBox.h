#pragma once

#include <QCheckBox>

namespace Helmsway {

/// A check box whose box has a line around it that stands out on any background; some styles' own is as dark as a dark
/// window.
class OutlinedCheckBox final : public QCheckBox {
  Q_OBJECT

 public:
  using QCheckBox::QCheckBox;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace Helmsway
