#pragma once

#include <QScrollArea>

namespace Helmsway {

/// Scrolls a form that is larger than its room, and brings what gets the keyboard's focus into view, whoever gives it:
/// by itself, a scroll area does so for the Tab key only.
class FormArea final : public QScrollArea {
  Q_OBJECT

 public:
  explicit FormArea(QWidget* parent);

 private:
  void Follow(const QWidget* focus);
};

}  // namespace Helmsway
