#pragma once

#include <QAbstractSlider>
#include <QWidget>
#include <string>
#include <vector>

#include "bench/desktop/panes/SaveVerdict.h"
#include "bench/desktop/panes/Tone.h"
#include "bench/desktop/panes/ValuesModel.h"

class QLabel;
class QSplitter;
class QTableView;

namespace Helmsway {

class LinesView;

/// The S positions on the screen, in the file and in the instrument, and what a save makes of them.
class ValuesPane : public QWidget {
  Q_OBJECT

 public:
  explicit ValuesPane(QWidget* parent = nullptr);

  /// Leaves a preview or a read-back as it is. `doubt` says why the number on the screen isn't confirmed; empty when it
  /// is.
  void Show(const HeadPositions& positions, const std::vector<MemoryDifference>& differences,
            const QString& doubt = {});

  /// Before the save dialog is answered: the lines of Marivane.ini that will change, as `LineDifference` gives them,
  /// and the command lines that will go to the instrument; empty: none will. The wheel and the keys that turn pages
  /// scroll them, also from the box that asks, which keeps everything else of the window out of reach. `problem` says
  /// why the save won't do what it is there for; empty when nothing is known to keep it from that.
  void ShowPreview(const std::vector<std::string>& fileLines, const std::vector<std::string>& commands,
                   const QString& problem = {});

  /// After a save: what became of it, and where the instrument's memory, read back, differs from the file. Replaces the
  /// preview.
  void ShowReadBack(const std::vector<MemoryDifference>& differences, const Verdict& verdict);

  /// The last verdict no longer holds, for the reason that `words` give.
  void Withdraw(const QString& words);

  /// Takes the preview or the read-back away.
  void ClearPreview();

 protected:
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class Upper { TitleAlone, WithLines };

  QWidget* BuildTable();
  QWidget* BuildPreview();
  void ShowSummary();
  void SetUpper(Upper upper);
  void TellRoom();
  void ScrollPreview(QAbstractSlider::SliderAction action);
  void FitColumns();
  /// Where a new text needs it; widths that the user gave stay otherwise.
  void WidenColumns();

  ValuesModel values_;
  QLabel* summary_ = nullptr;
  QTableView* table_ = nullptr;
  QSplitter* splitter_ = nullptr;
  QWidget* preview_ = nullptr;  ///< the lower half; hidden while there is nothing to show
  QLabel* upperTitle_ = nullptr;
  LinesView* upperLines_ = nullptr;
  QLabel* lowerTitle_ = nullptr;
  LinesView* lowerLines_ = nullptr;
};

}  // namespace Helmsway
