#include "bench/desktop/HostMenu.h"

namespace Helmsway {

HostMenu::HostMenu(QWidget* parent) : QMenu(tr("&Host"), parent) {
  setObjectName(QStringLiteral("hostMenu"));
  saveChanges_ = Add("saveChanges", tr("&Save"), QKeySequence::Save,
                     [this] { Q_EMIT ActionAsked(QStringLiteral("host SaveChanges")); });
  loadDefaults_ = Add("loadDefaults", tr("&Defaults"), QKeySequence(Qt::CTRL | Qt::Key_D),
                      [this] { Q_EMIT ActionAsked(QStringLiteral("host LoadDefaults")); });
  stop_ = Add("stop", tr("S&top"), QKeySequence(Qt::Key_Escape),
              [this] { Q_EMIT ActionAsked(QStringLiteral("host stop")); });
  addSeparator();
  startAddIn_ = Add("startAddIn", tr("St&art the Add-In"), {}, [this] { Q_EMIT StartAsked(); });
  endAddIn_ = Add("endAddIn", tr("&End the Add-In"), {}, [this] { Q_EMIT EndAsked(); });
  addSeparator();
  Add("quit", tr("&Quit"), QKeySequence::Quit, [this] { Q_EMIT QuitAsked(); });
}

template <class Triggered>
QAction* HostMenu::Add(const char* name, const QString& text, const QKeySequence& keys, Triggered triggered) {
  QAction* const action = addAction(text);
  action->setObjectName(QString::fromLatin1(name));
  action->setShortcut(keys);
  connect(action, &QAction::triggered, this, triggered);
  return action;
}

void HostMenu::Offer(const Possible& possible) {
  saveChanges_->setEnabled(possible.atRest && possible.formLoaded);
  loadDefaults_->setEnabled(possible.atRest && possible.formLoaded);
  endAddIn_->setEnabled(possible.atRest && possible.formLoaded);
  startAddIn_->setEnabled(possible.atRest && !possible.formLoaded);
  stop_->setEnabled(possible.lineUnderWay);
}

}  // namespace Helmsway
