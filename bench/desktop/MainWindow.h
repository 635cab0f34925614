#pragma once

#include <QMainWindow>
#include <QTimer>
#include <memory>

#include "bench/desktop/BenchSession.h"
#include "bench/desktop/form/HeldKeys.h"
#include "bench/desktop/panes/ConsoleModel.h"

class QDockWidget;
class QToolBar;

namespace Helmsway {

class BusyMark;
class CalibrationView;
class FormArea;
class HostMenu;
class InstallationUse;
class InstrumentPane;
class LowerDock;
class SimulationMenu;
class StandingBar;
class StatusLine;

/// The stand-in host's window: the add-in's form in its frame, the simulated instrument beside it, and what happens
/// between the two.
class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit MainWindow(SessionOptions options, QWidget* parent = nullptr);
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;
  ~MainWindow() override;

  /// Begins a session and starts the add-in; one that is there ends first. Asks what to do when another window works on
  /// the installation. False when there is no session: a failure has been shown, or the operator would rather not.
  bool BeginSession();

  /// Null when none has begun.
  BenchSession* Session() { return session_.get(); }
  ConsoleModel& Console() { return console_; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildPanes();
  void BuildHostMenu();
  void BuildSimulationMenu();
  void BuildStatusBar();
  void TakeRoom();
  void Connect(BenchSession& session);
  void EndSession();
  void EndAddIn();

  void ShowForm();
  void HideForm();
  void ShowCaption(const QString& caption);
  void ShowProgress(double share);
  void ShowLineOver(const QString& line, const QString& reason);
  void ShowInstrument();
  void ShowTroubles();
  void ShowInstallation();
  void ShowWhatIsPossible();
  void Rested();

  void Perform(const QString& action);
  void NewSession(const TrainingSeed& seed);
  void SetFactor(int factor);
  /// Asks for a file and has it written; a failure is shown.
  void SaveAs(const QString& title, const QString& filter, const QString& suffix,
              void (BenchSession::*save)(const std::filesystem::path&) const);
  /// False when the operator wants to stay.
  bool MayLeaveUnsaved();

  SessionOptions options_;
  std::unique_ptr<InstallationUse> use_;
  ConsoleModel console_;
  HeldKeys heldKeys_;
  QTimer lookAgain_;
  MessageBoxes messageBoxes_{this};

  FormArea* formArea_ = nullptr;
  FormView* form_ = nullptr;
  StandingBar* standing_ = nullptr;
  LowerDock* lowerDock_ = nullptr;
  CalibrationView* calibration_ = nullptr;
  QDockWidget* instrumentDock_ = nullptr;
  InstrumentPane* instrument_ = nullptr;
  HostMenu* host_ = nullptr;
  SimulationMenu* simulation_ = nullptr;
  QToolBar* hostButtons_ = nullptr;
  StatusLine* status_ = nullptr;
  BusyMark* busy_ = nullptr;

  bool closing_ = false;
  std::unique_ptr<BenchSession> session_;
};

}  // namespace Helmsway
