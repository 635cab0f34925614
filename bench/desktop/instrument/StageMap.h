#pragma once

#include <QFontMetrics>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <vector>

#include "bench/desktop/instrument/StretchedScale.h"
#include "bench/instrument/MachineDescription.h"
#include "bench/instrument/Surroundings.h"

namespace Helmsway {

/// The plan of a stage: what is drawn where. The axis along which the places follow one another runs down, so that each
/// has a line of its own for its words; lengths are stretched where words need it, so only the order is to scale.
class StageMap {
 public:
  enum class Kind { Position, Slot, NestName };
  struct Spot {
    Kind kind = Kind::Position;
    QString caption;    ///< "Stage 6", "2", "Nest 1 rear"
    std::string place;  ///< as the picture names it; empty for a nest's name
    bool lower = false;
    QRectF area;
  };

  StageMap(const MachineDescription& machine, const QFontMetrics& metrics);

  bool XRunsDown() const { return xRunsDown_; }
  QSizeF Least() const { return {across_.Least(), down_.Least()}; }
  /// Where the picture is.
  void FitInto(const QRectF& area);
  /// Everything that has a place; none lies on another when the picture has the least size.
  std::vector<Spot> Spots() const;
  /// Where that point over the stage, in mm, is in the picture.
  QPointF At(const Point& point) const;

 private:
  struct Ground {
    Spot spot;
    Point from;
    Point to;
  };

  void AddPositions(const MachineDescription& machine);
  void AddSlots(const MachineDescription& machine);
  void AddNestNames(const MachineDescription& machine);
  void MakeScales(const MachineDescription& machine, const QFontMetrics& metrics);

  std::vector<Ground> grounds_;
  bool xRunsDown_ = true;
  StretchedScale across_;
  StretchedScale down_;
  QPointF corner_;
};

}  // namespace Helmsway
