#include "bench/desktop/MainWindow.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QScrollBar>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <utility>

#include "bench/desktop/BusyMark.h"
#include "bench/desktop/CalibrationView.h"
#include "bench/desktop/HostMenu.h"
#include "bench/desktop/InstallationUse.h"
#include "bench/desktop/LowerDock.h"
#include "bench/desktop/SimulationMenu.h"
#include "bench/desktop/StandingBar.h"
#include "bench/desktop/StartProblems.h"
#include "bench/desktop/StatusLine.h"
#include "bench/desktop/ViewMenu.h"
#include "bench/desktop/form/FormArea.h"
#include "bench/desktop/instrument/InstrumentPane.h"
#include "bench/desktop/panes/ConsolePane.h"
#include "bench/instrument/DescribeMachine.h"
#include "bench/instrument/InstallationCheck.h"

namespace Helmsway {
namespace {

/// Between two looks at what is in the way of a save.
constexpr std::chrono::seconds BetweenLooks{2};

QString TextOf(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

MainWindow::MainWindow(SessionOptions options, QWidget* parent) : QMainWindow(parent), options_(std::move(options)) {
  setObjectName(QStringLiteral("mainWindow"));
  lookAgain_.setSingleShot(true);
  connect(&lookAgain_, &QTimer::timeout, this, &MainWindow::ShowInstallation);
  ShowCaption({});
  BuildPanes();
  BuildHostMenu();
  BuildSimulationMenu();
  menuBar()->addMenu(new ViewMenu({instrumentDock_, lowerDock_}, this));
  BuildStatusBar();
  ShowWhatIsPossible();
}

MainWindow::~MainWindow() { EndSession(); }

void MainWindow::BuildPanes() {
  formArea_ = new FormArea(this);
  formArea_->setObjectName(QStringLiteral("frame"));
  formArea_->setAccessibleName(tr("Add-in"));
  standing_ = new StandingBar(this);
  auto* const center = new QWidget(this);
  auto* const layout = new QVBoxLayout(center);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  // Below, so that the form stays where it is when the bar comes: a click in a row must hit the same button.
  layout->addWidget(formArea_, 1);
  layout->addWidget(standing_);
  setCentralWidget(center);
  messageBoxes_.OpenOver(formArea_);

  instrumentDock_ = new QDockWidget(tr("Instrument (simulated)"), this);
  instrumentDock_->setObjectName(QStringLiteral("instrumentDock"));
  addDockWidget(Qt::RightDockWidgetArea, instrumentDock_);

  lowerDock_ = new LowerDock(console_, this);
  calibration_ = new CalibrationView(*lowerDock_, this);
  connect(calibration_, &CalibrationView::FileChanged, this, &MainWindow::ShowTroubles);
  connect(lowerDock_, &LowerDock::HeightWanted, this,
          [this](int height) { resizeDocks({lowerDock_}, {height}, Qt::Vertical); });
  addDockWidget(Qt::BottomDockWidgetArea, lowerDock_);
  setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);

  connect(&lowerDock_->Console(), &ConsolePane::SaveTraceAsked, this, [this] {
    SaveAs(tr("Save as Trace"), tr("Traces (*.jsonl)"), QStringLiteral("jsonl"), &BenchSession::SaveTrace);
  });
  connect(&lowerDock_->Console(), &ConsolePane::SaveScriptAsked, this, [this] {
    SaveAs(tr("Save Session as Replay Script"), tr("Scripts (*.replay)"), QStringLiteral("replay"),
           &BenchSession::SaveScript);
  });
}

void MainWindow::BuildHostMenu() {
  host_ = new HostMenu(this);
  menuBar()->addMenu(host_);
  connect(host_, &HostMenu::ActionAsked, this, &MainWindow::Perform);
  connect(host_, &HostMenu::StartAsked, this, [this] { session_->StartAddIn(); });
  connect(host_, &HostMenu::EndAsked, this, &MainWindow::EndAddIn);
  connect(host_, &HostMenu::QuitAsked, this, &QWidget::close);

  hostButtons_ = addToolBar(tr("Host Buttons"));
  hostButtons_->setObjectName(QStringLiteral("hostButtons"));
  hostButtons_->setToolButtonStyle(Qt::ToolButtonTextOnly);
  hostButtons_->addActions(host_->Buttons());
  for (QAction* const action : hostButtons_->actions()) {
    hostButtons_->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
  }
}

void MainWindow::BuildSimulationMenu() {
  simulation_ = new SimulationMenu(this);
  menuBar()->addMenu(simulation_);
  simulation_->ShowFactor(static_cast<int>(options_.factor));
  connect(simulation_, &SimulationMenu::ActionAsked, this, &MainWindow::Perform);
  connect(simulation_, &SimulationMenu::FactorChosen, this, &MainWindow::SetFactor);
  connect(simulation_, &SimulationMenu::NewSessionAsked, this, &MainWindow::NewSession);
}

void MainWindow::BuildStatusBar() {
  status_ = new StatusLine(this);
  busy_ = new BusyMark(this);
  auto* const simulated = new QLabel(tr("SIMULATION"), this);
  simulated->setObjectName(QStringLiteral("simulated"));
  // Nothing is set but the weight, so that the size goes on following the application's font.
  QFont bold;
  bold.setBold(true);
  simulated->setFont(bold);
  QPalette amber(simulated->palette());
  amber.setColor(QPalette::Window, QColor(0xff, 0xc0, 0x00));
  amber.setColor(QPalette::WindowText, Qt::black);
  simulated->setPalette(amber);
  simulated->setAutoFillBackground(true);
  simulated->setContentsMargins(4, 0, 4, 0);
  statusBar()->addWidget(status_, 1);
  statusBar()->addPermanentWidget(busy_);
  statusBar()->addPermanentWidget(simulated);
}

bool MainWindow::BeginSession() {
  EndSession();
  try {
    if (use_ == nullptr) use_ = std::make_unique<InstallationUse>(options_, this);
    if (!use_->IsWanted()) return false;
    session_ = std::make_unique<BenchSession>(options_, console_, messageBoxes_);
    instrument_ = new InstrumentPane(DescribeMachine(session_->MarivaneIni()), instrumentDock_);
    delete instrumentDock_->widget();
    instrumentDock_->setWidget(instrument_);
    Connect(*session_);
    calibration_->Follow(session_.get());
    session_->StartAddIn();
  } catch (const std::exception& error) {
    calibration_->Follow(nullptr);
    session_.reset();
    ShowWhatIsPossible();
    StartProblems::Tell(this, QString::fromUtf8(error.what()));
    return false;
  }
  standing_->ShowCopy(options_.copyOf ? TextOf(options_.copyOf->string()) : QString());
  TakeRoom();
  ShowInstrument();
  calibration_->Show();
  ShowTroubles();
  return true;
}

void MainWindow::TakeRoom() {
  if (isVisible()) return;
  // The whole form, as far as the screen goes; what is below and beside it takes the rest.
  const QSize form = form_->sizeHint();
  const int lower = fontMetrics().lineSpacing() * 13;
  const QSize wanted(form.width() + instrument_->sizeHint().width(),
                     form.height() + lower + fontMetrics().height() * 8);
  resize(wanted.boundedTo(screen()->availableSize() - QSize(8, 40)));
  resizeDocks({lowerDock_}, {lower}, Qt::Vertical);
  resizeDocks({instrumentDock_}, {instrument_->sizeHint().width()}, Qt::Horizontal);
}

void MainWindow::Connect(BenchSession& session) {
  connect(&session, qOverload<>(&BenchSession::FormLoaded), this, &MainWindow::ShowForm);
  connect(&session, &BenchSession::FormClosed, this, &MainWindow::HideForm);
  connect(&session, &BenchSession::ControlChanged, this, [this](forms::ControlId control, forms::Aspect aspect) {
    if (form_ != nullptr) form_->Changed(control, aspect);
  });
  connect(&session, &BenchSession::Progress, this, &MainWindow::ShowProgress);
  connect(&session, &BenchSession::Began, this, [this] {
    instrument_->ClearRefusal();
    ShowWhatIsPossible();
  });
  connect(&session, &BenchSession::Rested, this, &MainWindow::Rested);

  BenchReport& report = session.Report();
  connect(&report, &BenchReport::StatusText, status_, &StatusLine::ShowText);
  connect(&report, &BenchReport::Changed, this, &MainWindow::setWindowModified);
  connect(&report, &BenchReport::FocusAsked, this, [this] {
    activateWindow();
    setFocus();
  });
  connect(&report, &BenchReport::CaptionRead, this, &MainWindow::ShowCaption);
  connect(&report, &BenchReport::ButtonsShown, hostButtons_, &QWidget::setVisible);
  connect(&report, &BenchReport::StatusBarShown, statusBar(), &QWidget::setVisible);
  connect(&report, &BenchReport::LineBegan, busy_, &BusyMark::LineBegan);
  connect(&report, &BenchReport::LineBegan, this, &MainWindow::ShowWhatIsPossible);
  connect(&report, &BenchReport::LineOver, this, &MainWindow::ShowLineOver);
  connect(&report, &BenchReport::Jogged, this, [this] { setWindowModified(true); });
  connect(&report, &BenchReport::ScoreTold, this, [this](const QStringList& lines) {
    QMessageBox::information(this, tr("Score (Simulation)"), lines.join(QLatin1Char('\n')));
  });
}

void MainWindow::EndSession() {
  if (!session_) return;
  session_->EndAddIn();
  HideForm();
  calibration_->Follow(nullptr);
  session_.reset();
  console_.Clear();
  setWindowModified(false);
}

void MainWindow::EndAddIn() {
  if (!MayLeaveUnsaved()) return;
  session_->EndAddIn();
  setWindowModified(false);
  Perform(QStringLiteral("instrument score"));
}

void MainWindow::ShowForm() {
  form_ = new FormView(*session_->Surface(), *session_, this);
  session_->Surface()->SetWindowHandle(static_cast<std::int32_t>(winId()));
  formArea_->setWidget(form_);  // takes the form before away
  const int wanted =
      form_->sizeHint().width() + formArea_->verticalScrollBar()->sizeHint().width() + 2 * formArea_->frameWidth();
  // No wider than what leaves room for the instrument beside it; the form is scrolled then.
  formArea_->setMinimumWidth(std::min(wanted, screen()->availableSize().width() * 2 / 3));
  form_->setFocus();
}

void MainWindow::HideForm() {
  if (form_ == nullptr) return;
  // It may be in the middle of passing on a click, so it stays, as a picture, until the next form takes its place.
  std::exchange(form_, nullptr)->Detach();
  ShowCaption({});
}

void MainWindow::ShowCaption(const QString& caption) {
  const QString host = tr("Helmsway Bench (simulation)");
  // Of a path, "[*]" is no mark of the window's.
  const QString place = PlaceOf(options_).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
  const QString window =
      caption.isEmpty() ? host + QStringLiteral("[*]") : QStringLiteral("%1[*] - %2").arg(caption, host);
  setWindowTitle(window + QStringLiteral(" - ") + place);
}

void MainWindow::ShowProgress(double share) {
  busy_->Show(share);
  instrument_->ShowLineUnderWay(session_->Report().LineText().toStdString(), share);
  ShowInstrument();
}

void MainWindow::ShowLineOver(const QString& line, const QString& reason) {
  busy_->LineOver();
  instrument_->ShowLineEnded();
  ShowWhatIsPossible();
  // Not only when all is at rest: a message box that comes next may ask to look at the instrument.
  ShowInstrument();
  if (!reason.isEmpty()) instrument_->ShowRefusal(line.toStdString(), reason.toStdString());
}

void MainWindow::ShowInstrument() {
  if (!session_) return;
  const InstrumentPicture picture = session_->Picture();
  instrument_->Show(picture);
  simulation_->ShowRemote(picture.remote);
}

void MainWindow::ShowTroubles() {
  if (!session_) return;
  const Troubles& troubles = session_->Report().SilentTroubles();
  standing_->ShowTroubles(troubles.InWords());
  status_->ShowLeftSince(troubles.StatusLeftSince());
  if (form_ != nullptr) {
    form_->ShowDoubt(QStringLiteral("txtCurrentCollect"), QString::fromStdString(troubles.DoubtOfNumber()));
  }
  ShowInstallation();
}

void MainWindow::ShowInstallation() {
  // While a line is under way nothing may hold up the window.
  if (session_ && session_->IsAtRest()) {
    QStringList problems;
    for (const std::string& problem : InstallationProblems(session_->MarivaneIni())) problems += TextOf(problem);
    standing_->ShowInstallation(problems);
    if (problems.isEmpty()) return lookAgain_.stop();
  }
  // What is in the way of a save can go without a change of the file: a program that holds it, or its permissions.
  lookAgain_.start(BetweenLooks);
}

void MainWindow::ShowWhatIsPossible() {
  const bool session = session_ != nullptr;
  const bool atRest = session && session_->IsAtRest();
  const bool loaded = session && session_->Surface() != nullptr;
  host_->Offer({atRest, loaded, session && session_->LineIsUnderWay()});
  // Without a session, too: another one may succeed where the last one couldn't begin.
  simulation_->SetAtRest(!session || atRest);
  // What is under way would be missing in a script.
  lowerDock_->Console().SetSaving(atRest ? ConsolePane::Saving::Possible : ConsolePane::Saving::NotNow);
}

void MainWindow::Rested() {
  ShowWhatIsPossible();
  ShowInstrument();
  ShowTroubles();
  if (!session_->WhyOver().isEmpty()) {
    session_->Report().Note(tr("the session can't go on: %1; begin a new one").arg(session_->WhyOver()));
  }
  if (closing_) QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
}

void MainWindow::Perform(const QString& action) {
  if (!session_) return;
  session_->Perform(action.toStdString());
}

void MainWindow::NewSession(const TrainingSeed& seed) {
  if (!MayLeaveUnsaved()) return;
  options_.seed = seed;
  BeginSession();
}

void MainWindow::SetFactor(int factor) {
  options_.factor = factor;
  if (session_) session_->SetFactor(factor);
}

void MainWindow::SaveAs(const QString& title, const QString& filter, const QString& suffix,
                        void (BenchSession::*save)(const std::filesystem::path&) const) {
  if (!session_) return;
  QFileDialog dialog(this, title, {}, filter);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(suffix);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
  try {
    (session_.get()->*save)(dialog.selectedFiles().constFirst().toStdString());
  } catch (const std::exception& error) {
    QMessageBox::critical(this, title, QString::fromUtf8(error.what()));
  }
}

bool MainWindow::MayLeaveUnsaved() {
  if (!isWindowModified()) return true;
  return QMessageBox::question(this, tr("Helmsway Bench"),
                               tr("The S position that you reached with Up and Down isn't saved. Leave it?"),
                               QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

void MainWindow::closeEvent(QCloseEvent* event) {
  const bool atRest = !session_ || session_->IsAtRest();
  if (atRest) {
    if (!closing_ && !MayLeaveUnsaved()) return event->ignore();
    EndSession();
    return event->accept();
  }
  // A move can't be broken off, so the window goes when it is over; nothing further is begun.
  event->ignore();
  if (std::exchange(closing_, true)) return;
  status_->ShowText(tr("Closing when the move is over..."));
  session_->BreakOff();
  messageBoxes_.AnswerCarefully();
}

}  // namespace Helmsway
