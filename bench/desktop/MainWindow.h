#pragma once

#include <QFileSystemWatcher>
#include <QMainWindow>
#include <memory>

#include "bench/desktop/BenchSession.h"
#include "bench/desktop/form/HeldKeys.h"
#include "bench/desktop/panes/ConsoleModel.h"

class QDockWidget;
class QLabel;
class QTabWidget;
class QToolBar;

namespace Helmsway {

class BusyMark;
class ConsolePane;
class FormArea;
class HostMenu;
class InstrumentPane;
class SimulationMenu;
class ValuesPane;

/// The stand-in host's window: the add-in's form in its frame, the simulated instrument beside it, and what happens
/// between the two.
class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit MainWindow(SessionOptions options, QWidget* parent = nullptr);
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;
  ~MainWindow() override;

  /// Begins a session and starts the add-in; one that is there ends first. A failure is shown, and told by False.
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
  void ShowValues();
  void ShowSaveRehearsal(const SaveRehearsal& rehearsal);
  void ShowSaveEnd();
  /// What the rehearsal of a save has taken for the pane below.
  void GiveRoomBack();
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
  ConsoleModel console_;
  HeldKeys heldKeys_;
  MessageBoxes messageBoxes_{this};
  QFileSystemWatcher watcher_;

  FormArea* formArea_ = nullptr;
  FormView* form_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  ConsolePane* consolePane_ = nullptr;
  ValuesPane* values_ = nullptr;
  QDockWidget* lowerDock_ = nullptr;
  QDockWidget* instrumentDock_ = nullptr;
  InstrumentPane* instrument_ = nullptr;
  HostMenu* host_ = nullptr;
  SimulationMenu* simulation_ = nullptr;
  QToolBar* hostButtons_ = nullptr;
  QLabel* status_ = nullptr;
  BusyMark* busy_ = nullptr;

  bool closing_ = false;
  bool saveAnswered_ = false;
  bool memorySaved_ = false;
  int heightBelow_ = 0;  // of the pane below before it got more; 0 while it has its own
  std::unique_ptr<BenchSession> session_;
};

}  // namespace Helmsway
