#pragma once

#include <QObject>
#include <QTime>
#include <optional>

#include "bench/desktop/BenchSession.h"
#include "bench/desktop/FileWatch.h"
#include "bench/instrument/HeadPositions.h"

namespace Helmsway {

class LowerDock;

/// Keeps the pane of values true: it shows what file and instrument hold, foretells a save, judges it, and takes the
/// verdict back when another program changes the file.
class CalibrationView : public QObject {
  Q_OBJECT

 public:
  explicit CalibrationView(LowerDock& dock, QObject* parent = nullptr);

  /// From now on that session; null for none.
  void Follow(BenchSession* session);
  /// Shows the values afresh, unless something is going on.
  void Show();

 Q_SIGNALS:
  /// Another program has changed the file while nothing was going on.
  void FileChanged();

 private:
  void Rested();
  void FileTouched();
  void Withdraw();
  void Preview(const SaveRehearsal& rehearsal);
  void Answered(forms::MessageAnswer answer);
  void Judge(SaveResult result);

  LowerDock& dock_;
  FileWatch watch_;
  BenchSession* session_ = nullptr;
  HeadPositions foretold_;            ///< of the save that was asked about last
  std::size_t writes_ = 0;            ///< of the session, at the last look at the file
  std::optional<QTime> verdictTime_;  ///< of the verdict that is shown and holds
};

}  // namespace Helmsway
