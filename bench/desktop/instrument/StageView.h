#pragma once

#include <QWidget>
#include <vector>

#include "bench/desktop/instrument/InstrumentPicture.h"
#include "bench/desktop/instrument/StageMap.h"

class QPainter;

namespace Helmsway {

/// The stage from above: what stands where, the slider, and where the pipette module is with what hangs on it.
class StageView : public QWidget {
  Q_OBJECT

 public:
  /// `machine` must outlive this.
  explicit StageView(const MachineDescription& machine, QWidget* parent = nullptr);

  void Show(const InstrumentPicture& picture);

  /// What the tooltip says there; empty beside all places.
  QString WordsAt(const QPoint& position) const;

  QSize minimumSizeHint() const override;
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;

 private:
  QRectF PlanArea() const;
  QString HeadLine() const;
  bool IsCovered(const StageMap::Spot& spot) const;
  QString ContentsOf(const StageMap::Spot& spot) const;
  QString WordsFor(const StageMap::Spot& spot) const;
  void LayOut();
  void Describe();
  void PaintSpot(QPainter& painter, const StageMap::Spot& spot) const;
  void PaintWords(QPainter& painter, const StageMap::Spot& spot, const QRectF& inside) const;
  void PaintModule(QPainter& painter) const;
  void PaintMarker(QPainter& painter, const QPointF& centre) const;
  bool PositionKnown() const;

  const MachineDescription& machine_;
  StageMap map_;
  std::vector<StageMap::Spot> spots_;  // of the present size
  InstrumentPicture picture_;
};

}  // namespace Helmsway
