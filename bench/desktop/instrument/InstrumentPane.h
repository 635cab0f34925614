#pragma once

#include <QWidget>
#include <string_view>

#include "bench/desktop/instrument/InstrumentPicture.h"
#include "bench/instrument/MachineDescription.h"

class QLabel;
class QProgressBar;

namespace Helmsway {

class LoupeView;
class NoticeLabel;
class SideView;
class StageView;

/// All that the operator sees of the simulated instrument.
class InstrumentPane : public QWidget {
  Q_OBJECT

 public:
  explicit InstrumentPane(MachineDescription machine, QWidget* parent = nullptr);

  /// Cheap when little has changed since the last picture.
  void Show(const InstrumentPicture& picture);

  /// `share` of the line's time is over, 0 to 1.
  void ShowLineUnderWay(std::string_view line, double share);
  /// Nothing is under way.
  void ShowLineEnded();

  /// Stays until the next one, or until it is cleared.
  void ShowRefusal(std::string_view line, std::string_view reason);
  void ClearRefusal();

 private:
  void ShowDamage(const std::vector<std::string>& damage);
  void LayOut();

  const MachineDescription machine_;  // the views look at it
  LoupeView* loupe_;
  SideView* side_;
  StageView* stage_;
  QLabel* lineUnderWay_;
  QProgressBar* progress_;
  QLabel* mode_;
  NoticeLabel* localMode_;
  NoticeLabel* collisionDetection_;
  NoticeLabel* refusal_;
  NoticeLabel* damage_;
};

}  // namespace Helmsway
