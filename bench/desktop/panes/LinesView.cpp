#include "bench/desktop/panes/LinesView.h"

#include <QFontDatabase>
#include <QRegularExpression>
#include <QStringList>
#include <QTextCharFormat>
#include <QTextCursor>

namespace Helmsway {
namespace {

QTextCharFormat FormatOf(Tone tone) {
  QTextCharFormat format;
  if (tone == Tone::Plain) return format;
  format.setForeground(ToneData(tone, Qt::ForegroundRole).value<QBrush>());
  format.setBackground(ToneData(tone, Qt::BackgroundRole).value<QBrush>());
  return format;
}

QTextCharFormat Emphasised(QTextCharFormat format) {
  format.setFontWeight(QFont::Bold);
  format.setFontUnderline(true);
  return format;
}

void Append(QPlainTextEdit& view, const QString& text, const QTextCharFormat& format) {
  QTextCursor cursor(view.document());
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(text, format);
}

void StartLine(QPlainTextEdit& view) {
  if (!view.document()->isEmpty()) Append(view, QStringLiteral("\n"), {});
}

/// The key and the places of a line, and the "=" and "," between them.
QStringList Pieces(const QString& line) {
  static const QRegularExpression border(QStringLiteral("(?<=[=,])|(?=[=,])"));
  return line.split(border);
}

/// Appends a line with its pieces that differ from those of `other` emphasised. Both have a sign in front.
void AppendCompared(QPlainTextEdit& view, const QString& line, const QString& other, Tone tone) {
  const QTextCharFormat plain = FormatOf(tone);
  const QStringList pieces = Pieces(line.mid(1));
  const QStringList otherPieces = Pieces(other.mid(1));
  StartLine(view);
  Append(view, line.left(1), plain);
  for (qsizetype i = 0; i < pieces.size(); ++i) {
    const bool same = i < otherPieces.size() && pieces[i] == otherPieces[i];
    Append(view, pieces[i], same ? plain : Emphasised(plain));
  }
}

}  // namespace

LinesView::LinesView(QWidget* parent) : QPlainTextEdit(parent) {
  setReadOnly(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setWordWrapMode(QTextOption::WrapAnywhere);
  setTabChangesFocus(true);
  UseSizeOf(QFont());
}

void LinesView::UseSizeOf(const QFont& font) {
  QFont even = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  if (font.pointSizeF() > 0) {
    even.setPointSizeF(font.pointSizeF());
  } else {
    even.setPixelSize(font.pixelSize());
  }
  setFont(even);
}

void LinesView::Begin(const QString& none, bool hasLines) {
  clear();
  if (!hasLines) Append(*this, none, {});
}

void LinesView::ShowLines(const std::vector<std::string>& lines, const QString& none, Tone tone) {
  Begin(none, !lines.empty());
  for (const std::string& line : lines) {
    StartLine(*this);
    Append(*this, QString::fromStdString(line), FormatOf(tone));
  }
  moveCursor(QTextCursor::Start);
}

void LinesView::ShowDifference(const std::vector<std::string>& lines, const QString& none) {
  Begin(none, !lines.empty());
  std::vector<std::string> removed;
  std::vector<std::string> added;
  const auto end = [&] {
    ShowBlock(removed, added);
    removed.clear();
    added.clear();
  };
  for (const std::string& line : lines) {
    if (line.starts_with('-')) {
      removed.push_back(line);
    } else if (line.starts_with('+')) {
      added.push_back(line);
    } else {
      end();
      StartLine(*this);
      Append(*this, QString::fromStdString(line), {});
    }
  }
  end();
  moveCursor(QTextCursor::Start);
}

void LinesView::ShowBlock(const std::vector<std::string>& removed, const std::vector<std::string>& added) {
  const auto show = [this](const std::string& line, const std::string& other, Tone tone) {
    AppendCompared(*this, QString::fromStdString(line), QString::fromStdString(other), tone);
  };
  if (removed.size() == added.size()) {
    // Old above new, line by line, so that they are seen together.
    for (std::size_t i = 0; i < removed.size(); ++i) {
      show(removed[i], added[i], Tone::Bad);
      show(added[i], removed[i], Tone::Good);
    }
    return;
  }
  for (const std::string& line : removed) show(line, line, Tone::Bad);
  for (const std::string& line : added) show(line, line, Tone::Good);
}

}  // namespace Helmsway
