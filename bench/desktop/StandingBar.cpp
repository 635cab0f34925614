#include "bench/desktop/StandingBar.h"

#include <QVBoxLayout>

#include "bench/desktop/instrument/NoticeLabel.h"

namespace Helmsway {

StandingBar::StandingBar(QWidget* parent)
    : QWidget(parent),
      copy_(new NoticeLabel(QStringLiteral("copyNotice"), NoticeLabel::Weight::Warning, this)),
      installation_(new NoticeLabel(QStringLiteral("installationNotice"), NoticeLabel::Weight::Warning, this)),
      troubles_(new NoticeLabel(QStringLiteral("troublesNotice"), NoticeLabel::Weight::Warning, this)) {
  setObjectName(QStringLiteral("standingBar"));
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(1);
  for (NoticeLabel* const notice : {copy_, installation_, troubles_}) {
    notice->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(notice);
  }
}

void StandingBar::ShowCopy(const QString& installation) {
  copy_->Say(installation.isEmpty()
                 ? QString()
                 : tr("This window works on a copy, which goes with it: nothing is written to %1").arg(installation));
}

void StandingBar::ShowInstallation(const QStringList& problems) {
  installation_->Say(problems.isEmpty() ? QString() : tr("Installation: ") + problems.join(u'\n'));
}

void StandingBar::ShowTroubles(const QStringList& troubles) { troubles_->Say(troubles.join(u'\n')); }

}  // namespace Helmsway
