#pragma once

#include <QStringList>
#include <QWidget>

namespace Helmsway {

class NoticeLabel;

/// What the operator has to know for as long as it is so, above the form: what the installation lacks, and what the
/// add-in has passed over in silence. Takes no room while there is nothing to say.
class StandingBar : public QWidget {
  Q_OBJECT

 public:
  explicit StandingBar(QWidget* parent = nullptr);

  /// The files are a copy of that installation's; empty: they are the installation's own.
  void ShowCopy(const QString& installation);
  void ShowInstallation(const QStringList& problems);
  void ShowTroubles(const QStringList& troubles);

 private:
  NoticeLabel* copy_;
  NoticeLabel* installation_;
  NoticeLabel* troubles_;
};

}  // namespace Helmsway
