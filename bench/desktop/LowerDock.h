#pragma once

#include <QDockWidget>

class QTabWidget;

namespace Helmsway {

class ConsoleModel;
class ConsolePane;
class ValuesPane;

/// The pane below the form: values and console, a tab each.
class LowerDock : public QDockWidget {
  Q_OBJECT

 public:
  /// The model must outlive the dock.
  LowerDock(ConsoleModel& entries, QWidget* parent);

  ValuesPane& Values() { return *values_; }
  ConsolePane& Console() { return *console_; }

  /// Brings the values to the front, and asks for three fifths of the window: a question is to be answered by what is
  /// shown there.
  void TakeRoom();
  /// Asks for the height that the dock had before `TakeRoom`.
  void GiveRoomBack();

 Q_SIGNALS:
  /// The dock wants to be that high.
  void HeightWanted(int height);

 private:
  QTabWidget* tabs_;
  ValuesPane* values_;
  ConsolePane* console_;
  int heightBefore_ = 0;  ///< 0 while the dock has its own
};

}  // namespace Helmsway
