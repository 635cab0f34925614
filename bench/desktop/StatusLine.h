#pragma once

#include <QDateTime>
#include <QWidget>
#include <optional>

class QLabel;

namespace Helmsway {

/// The host's status panel: the add-in's text as it is, and beside it a mark when that text is left over.
class StatusLine : public QWidget {
  Q_OBJECT

 public:
  explicit StatusLine(QWidget* parent = nullptr);

  void ShowText(const QString& text);
  /// Since when the text says what is no longer under way; null: it doesn't.
  void ShowLeftSince(const std::optional<QDateTime>& time);

 private:
  QLabel* text_;
  QLabel* left_;
};

}  // namespace Helmsway
