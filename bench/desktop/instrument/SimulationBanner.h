#pragma once

#include <QLabel>

namespace Helmsway {

/// Tells with amber stripes and black words that nothing here is a real instrument.
class SimulationBanner : public QLabel {
  Q_OBJECT

 public:
  explicit SimulationBanner(QWidget* parent = nullptr);

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace Helmsway
