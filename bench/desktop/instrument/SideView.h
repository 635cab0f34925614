#pragma once

#include <QWidget>

#include "bench/desktop/instrument/InstrumentPicture.h"
#include "bench/instrument/MachineDescription.h"

class QPainter;

namespace Helmsway {

/// The instrument from the side: how high what hangs on the pipette module is over both stage levels, and beside it
/// where the axes are.
class SideView : public QWidget {
  Q_OBJECT

 public:
  /// `machine` must outlive this.
  explicit SideView(const MachineDescription& machine, QWidget* parent = nullptr);

  void Show(const InstrumentPicture& picture);

  QSize minimumSizeHint() const override;
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int TableWidth() const;
  void PaintTable(QPainter& painter, const QRectF& area) const;
  void PaintLevels(QPainter& painter, const QRectF& area) const;
  void PaintModule(QPainter& painter, const QRectF& area) const;
  void PaintHead(QPainter& painter, const QRectF& area, double module) const;
  /// The row of a height over the base, in mm.
  double RowOf(double height, const QRectF& area) const;
  double Ceiling() const;
  double SleeveShare() const;
  void Describe();

  const MachineDescription& machine_;
  InstrumentPicture picture_;
};

}  // namespace Helmsway
