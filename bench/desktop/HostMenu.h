#pragma once

#include <QList>
#include <QMenu>

class QAction;

namespace Helmsway {

/// What the host does with the add-in.
class HostMenu : public QMenu {
  Q_OBJECT

 public:
  /// What a session lets the host do.
  struct Possible {
    bool atRest = false;        ///< there is a session, and nothing is going on
    bool formLoaded = false;    ///< the add-in lives
    bool lineUnderWay = false;  ///< there is something to stop
  };

  explicit HostMenu(QWidget* parent = nullptr);

  /// Those that stand in the host's bar of buttons too: Save, Defaults, Stop.
  QList<QAction*> Buttons() const { return {saveChanges_, loadDefaults_, stop_}; }

  /// What isn't possible can't be chosen: the host's own calls would run in the middle of a line.
  void Offer(const Possible& possible);

 Q_SIGNALS:
  /// An action of a script.
  void ActionAsked(const QString& action);
  void StartAsked();
  void EndAsked();
  void QuitAsked();

 private:
  template <class Triggered>
  QAction* Add(const char* name, const QString& text, const QKeySequence& keys, Triggered triggered);

  QAction* saveChanges_ = nullptr;
  QAction* loadDefaults_ = nullptr;
  QAction* stop_ = nullptr;
  QAction* startAddIn_ = nullptr;
  QAction* endAddIn_ = nullptr;
};

}  // namespace Helmsway
