#pragma once

#include <QWidget>

#include "bench/desktop/panes/ConsoleFilter.h"
#include "bench/desktop/panes/ConsoleModel.h"

class QCheckBox;
class QLayout;
class QLineEdit;
class QPushButton;
class QTableView;

namespace Helmsway {

/// What happened, line by line, to be filtered, copied and saved.
class ConsolePane : public QWidget {
  Q_OBJECT

 public:
  /// The model must outlive the pane.
  explicit ConsolePane(ConsoleModel& entries, QWidget* parent = nullptr);

  enum class Saving { Possible, NotNow };
  void SetSaving(Saving saving);

  /// The selected rows, or all that the filter shows when none is selected, from top to bottom: a line each, its
  /// columns between tabs, with a line end behind each.
  QString TextToCopy() const;

 Q_SIGNALS:
  void SaveTraceAsked();
  void SaveScriptAsked();

 protected:
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildTable();
  QLayout* BuildFilterRow();
  QLayout* BuildButtonRow();
  void FollowTheEnd();
  /// Row height and column widths from the font.
  void ApplyFont();
  /// Replies take what is left of the width, but never less than a reason needs; the table scrolls then.
  void FitReplies();
  void Copy() const;

  ConsoleFilter filter_;
  QLineEdit* filterText_ = nullptr;
  QCheckBox* linesOnly_ = nullptr;
  QTableView* table_ = nullptr;
  QPushButton* saveTrace_ = nullptr;
  QPushButton* saveScript_ = nullptr;
  bool atEnd_ = true;  ///< the table shows its last row, and is to go on doing so
};

}  // namespace Helmsway
