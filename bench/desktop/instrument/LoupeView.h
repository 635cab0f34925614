#pragma once

#include <QString>
#include <QWidget>
#include <optional>

class QPainter;

namespace Helmsway {

/// The magnified look at the teach tool that the operator calibrates by: how far the tool's upper part covers the
/// silver ring around its lower part. All to scale, and no number beside it: judging is the operator's work.
class LoupeView : public QWidget {
  Q_OBJECT

 public:
  explicit LoupeView(QWidget* parent = nullptr);

  /// How far the lower edge of the upper part stands above the place where it just covers the ring (below: negative),
  /// in mm; empty when there is nothing to see.
  void Show(std::optional<double> edge);

  /// Of the picture, at the widget's present size; 50 at the least.
  double PixelsPerMillimetre() const;
  /// Where an edge that stands so many mm above the covering place is painted, in pixels from the widget's top.
  double RowOf(double edge) const;

  QSize minimumSizeHint() const override;
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QRectF Field() const;
  void PaintTool(QPainter& painter, double edge) const;
  void PaintGraticule(QPainter& painter) const;
  void PaintRingMark(QPainter& painter) const;
  void PaintOutside(QPainter& painter, double edge) const;

  std::optional<double> edge_;
};

}  // namespace Helmsway
