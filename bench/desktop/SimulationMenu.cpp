#include "bench/desktop/SimulationMenu.h"

#include <QActionGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QRandomGenerator>
#include <QSpinBox>

#include "bench/desktop/FaultDialog.h"

namespace Helmsway {

SimulationMenu::SimulationMenu(QWidget* parent) : QMenu(tr("Si&mulation"), parent) {
  setObjectName(QStringLiteral("simulationMenu"));
  const auto add = [this](const char* name, const QString& text, auto triggered) {
    QAction* const action = addAction(text);
    action->setObjectName(QString::fromLatin1(name));
    connect(action, &QAction::triggered, this, triggered);
    return action;
  };
  AddClock();
  addSeparator();
  remote_ = add("remoteMode", tr("&Remote mode"), [this](bool on) {
    Q_EMIT ActionAsked(on ? QStringLiteral("instrument remote on") : QStringLiteral("instrument remote off"));
  });
  remote_->setCheckable(true);
  remote_->setChecked(true);
  add("powerCycle", tr("&Power off and on"), [this] { Q_EMIT ActionAsked(QStringLiteral("instrument power-cycle")); });
  add("planFault", tr("Plan a &fault…"), [this] { AskForFault(); });
  addSeparator();
  score_ = add("score", tr("&Score so far"), [this] { Q_EMIT ActionAsked(QStringLiteral("instrument score")); });
  newSession_ = add("newSession", tr("&New session…"), [this] { AskForSeed(); });
}

void SimulationMenu::AddClock() {
  QMenu* const clock = addMenu(tr("&Clock"));
  factors_ = new QActionGroup(this);
  for (const int factor : {1, 2, 5, 10, 100}) {
    QAction* const action = clock->addAction(factor == 1 ? tr("x1 (real time)") : tr("x%1").arg(factor));
    action->setObjectName(QStringLiteral("clock_%1").arg(factor));
    action->setCheckable(true);
    action->setData(factor);
    factors_->addAction(action);
  }
  connect(factors_, &QActionGroup::triggered, this,
          [this](const QAction* chosen) { Q_EMIT FactorChosen(chosen->data().toInt()); });
}

void SimulationMenu::ShowFactor(int factor) {
  for (QAction* const action : factors_->actions()) action->setChecked(action->data().toInt() == factor);
}

void SimulationMenu::ShowRemote(bool remote) { remote_->setChecked(remote); }

void SimulationMenu::SetAtRest(bool atRest) {
  score_->setEnabled(atRest);
  newSession_->setEnabled(atRest);
}

void SimulationMenu::AskForFault() {
  // Not in an event loop of its own: a line under way would have to wait for it.
  auto* const dialog = new FaultDialog(parentWidget());
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QDialog::accepted, this,
          [this, dialog] { Q_EMIT ActionAsked(QString::fromStdString(dialog->Action())); });
  dialog->open();
}

void SimulationMenu::AskForSeed() {
  QDialog dialog(parentWidget());
  dialog.setObjectName(QStringLiteral("seedDialog"));
  dialog.setWindowTitle(tr("New Session (Simulation)"));
  auto* const number = new QSpinBox(&dialog);
  number->setRange(0, 2147483646);
  number->setValue(QRandomGenerator::global()->bounded(1, 10000));
  number->setToolTip(tr("The same number gives the same hidden truth of the syringe axis"));
  auto* const loses = new QCheckBox(tr("The syringe axis loses steps now and then"), &dialog);
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  auto* const layout = new QFormLayout(&dialog);
  layout->addRow(tr("&Seed:"), number);
  layout->addRow(loses);
  layout->addRow(buttons);
  if (dialog.exec() != QDialog::Accepted) return;
  Q_EMIT NewSessionAsked(
      {static_cast<std::uint32_t>(number->value()), loses->isChecked() ? LostSteps::Some : LostSteps::None});
}

}  // namespace Helmsway
