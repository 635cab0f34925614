#pragma once

#include <QMessageBox>
#include <QPointer>
#include <string_view>
#include <vector>

#include "forms/Surface.h"

namespace Helmsway {

/// Shows a form's message boxes, which keep the operator from everything else until they are answered. Must outlive
/// each box that it shows; its parent need not.
class MessageBoxes {
 public:
  explicit MessageBoxes(QWidget* parent);

  /// Boxes open over this part of the parent, so that they cover nothing of the rest if that can be helped: they ask
  /// about what is to be seen there. Without it, over the middle of the parent.
  void OpenOver(const QWidget* area) { area_ = area; }

  /// Returns when the operator has answered. Escape and closing the box give the careful answer. A box without a title
  /// of its own has the program's name.
  forms::MessageAnswer Show(std::string_view title, std::string_view text, forms::MessageButtons buttons,
                            forms::MessageIcon icon);

  /// Gives the careful answer to the boxes that are open and, without showing them, to all later ones.
  void AnswerCarefully();

 private:
  void Place(QMessageBox& box) const;

  QPointer<QWidget> parent_;
  QPointer<const QWidget> area_;
  std::vector<QPointer<QMessageBox>> open_;
  bool answersCarefully_ = false;
};

}  // namespace Helmsway
