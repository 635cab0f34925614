#pragma once

#include <QMenu>
#include <string>

#include "bench/instrument/SyringeTruth.h"

class QAction;
class QActionGroup;

namespace Helmsway {

/// What can be done to the simulated instrument.
class SimulationMenu : public QMenu {
  Q_OBJECT

 public:
  explicit SimulationMenu(QWidget* parent = nullptr);

  /// Marks how fast the clock goes.
  void ShowFactor(int factor);
  /// Marks the switch on the instrument.
  void ShowRemote(bool remote);
  /// What makes no sense while a line is under way can't be chosen then.
  void SetAtRest(bool atRest);

 Q_SIGNALS:
  /// An action of a script.
  void ActionAsked(const QString& action);
  void FactorChosen(int factor);
  void NewSessionAsked(const Helmsway::TrainingSeed& seed);

 private:
  void AddClock();
  void AskForFault();
  void AskForSeed();

  QActionGroup* factors_ = nullptr;
  QAction* remote_ = nullptr;
  QAction* score_ = nullptr;
  QAction* newSession_ = nullptr;
};

}  // namespace Helmsway
