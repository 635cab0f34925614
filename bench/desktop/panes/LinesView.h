#pragma once

#include <QPlainTextEdit>
#include <string>
#include <vector>

#include "bench/desktop/panes/Tone.h"

namespace Helmsway {

/// Lines to be read, in a font of even width. Long ones are wrapped: while a message box is open, they can be
/// scrolled up and down only.
class LinesView : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit LinesView(QWidget* parent = nullptr);

  /// The system's font of even width doesn't grow with the others; this makes it as large as one of them.
  void UseSizeOf(const QFont& font);

  /// Shows the lines from the top, or `none` when there are no lines.
  void ShowLines(const std::vector<std::string>& lines, const QString& none, Tone tone = Tone::Plain);

  /// Shows a difference as `LineDifference` gives it. Lines keep their "-" and "+" and get a colour; where as many
  /// lines come as go, the places of a line that change are bold and underlined.
  void ShowDifference(const std::vector<std::string>& lines, const QString& none);

 private:
  void Begin(const QString& none, bool hasLines);
  void ShowBlock(const std::vector<std::string>& removed, const std::vector<std::string>& added);
};

}  // namespace Helmsway
