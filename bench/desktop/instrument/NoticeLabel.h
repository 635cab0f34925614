#pragma once

#include <QLabel>

namespace Helmsway {

/// A line about the instrument: sign, words, and a colour with its own ink. Hidden while there is nothing to say.
class NoticeLabel : public QLabel {
  Q_OBJECT

 public:
  enum class Weight { Warning, Trouble };

  explicit NoticeLabel(const QString& objectName, Weight weight, QWidget* parent = nullptr);

  /// Empty hides it.
  void Say(const QString& words);

 private:
  Weight weight_;
};

}  // namespace Helmsway
