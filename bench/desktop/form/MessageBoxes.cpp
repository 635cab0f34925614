#include "bench/desktop/form/MessageBoxes.h"

#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <array>
#include <span>

namespace Helmsway {
namespace {

using forms::MessageAnswer;
using forms::MessageButtons;

/// Not the application's display name: the window system would put that behind all other titles, too.
constexpr const char* HostName = "Helmsway Bench";

struct Choice {
  MessageAnswer answer;
  QMessageBox::StandardButton button;
  const char* objectName;
};

constexpr Choice Ok{MessageAnswer::Ok, QMessageBox::Ok, "messageBox_ok"};
constexpr Choice Cancel{MessageAnswer::Cancel, QMessageBox::Cancel, "messageBox_cancel"};
constexpr Choice Yes{MessageAnswer::Yes, QMessageBox::Yes, "messageBox_yes"};
constexpr Choice No{MessageAnswer::No, QMessageBox::No, "messageBox_no"};

/// In the order in which they are shown; the first is pressed by Return.
std::span<const Choice> Choices(MessageButtons buttons) {
  static constexpr std::array ok{Ok};
  static constexpr std::array okCancel{Ok, Cancel};
  static constexpr std::array yesNo{Yes, No};
  if (buttons == MessageButtons::OkCancel) return okCancel;
  if (buttons == MessageButtons::YesNo) return yesNo;
  return ok;
}

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))
      .replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

void AddButtons(QMessageBox& box, MessageButtons buttons) {
  for (const Choice& choice : Choices(buttons)) {
    QAbstractButton* const button = box.addButton(choice.button);
    button->setObjectName(QString::fromLatin1(choice.objectName));
    button->setAccessibleName(button->text().remove(QLatin1Char('&')));
    if (choice.answer == forms::CarefulAnswer(buttons)) box.setEscapeButton(choice.button);
  }
  box.setDefaultButton(Choices(buttons).front().button);
}

/// Lines stay as they were given if three quarters of the screen's width are enough; by itself, the box would break the
/// longer ones.
void KeepLines(QMessageBox& box) {
  auto* const label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
  if (label == nullptr) return;
  const int most = box.screen()->availableSize().width() * 3 / 4;
  label->setMinimumWidth(std::min(label->sizeHint().width(), most));
}

MessageAnswer AnswerOf(const QMessageBox& box, MessageButtons buttons) {
  const auto pressed = box.standardButton(box.clickedButton());
  const auto choices = Choices(buttons);
  const auto found =
      std::find_if(choices.begin(), choices.end(), [&](const Choice& choice) { return choice.button == pressed; });
  return found == choices.end() ? forms::CarefulAnswer(buttons) : found->answer;
}

}  // namespace

MessageBoxes::MessageBoxes(QWidget* parent) : parent_(parent) {}

MessageAnswer MessageBoxes::Show(std::string_view title, std::string_view text, MessageButtons buttons,
                                 forms::MessageIcon icon) {
  if (answersCarefully_) return forms::CarefulAnswer(buttons);
  // On the heap and watched: the parent may go, and the box with it, while the box is open.
  const QPointer<QMessageBox> box(new QMessageBox(parent_));
  box->setObjectName(QStringLiteral("messageBox"));
  box->setWindowModality(Qt::ApplicationModal);
  box->setWindowTitle(title.empty() ? QString::fromLatin1(HostName) : Text(title));
  box->setAccessibleName(box->windowTitle());
  box->setTextFormat(Qt::PlainText);
  box->setText(Text(text));
  box->setIcon(icon == forms::MessageIcon::Exclamation ? QMessageBox::Warning : QMessageBox::NoIcon);
  AddButtons(*box, buttons);
  KeepLines(*box);
  Place(*box);

  open_.push_back(box);
  // Where no window manager gives the keyboard to a window that comes, and takes it back when that goes.
  QTimer::singleShot(0, box, [&] { box->activateWindow(); });
  box->exec();
  open_.erase(std::remove(open_.begin(), open_.end(), box), open_.end());
  if (box == nullptr) return forms::CarefulAnswer(buttons);
  const MessageAnswer answer = answersCarefully_ ? forms::CarefulAnswer(buttons) : AnswerOf(*box, buttons);
  delete box;
  if (parent_ != nullptr && !answersCarefully_) parent_->activateWindow();
  return answer;
}

void MessageBoxes::Place(QMessageBox& box) const {
  if (area_ == nullptr || !area_->isVisible()) return;
  const QRect area(area_->mapToGlobal(QPoint()), area_->size());
  QRect place(QPoint(), box.sizeHint());
  place.moveCenter(area.center());
  place.moveTop(std::max(place.top(), area.top()));
  const QRect screen = area_->screen()->availableGeometry();
  place.moveLeft(std::clamp(place.left(), screen.left(), std::max(screen.left(), screen.right() - place.width())));
  place.moveTop(std::clamp(place.top(), screen.top(), std::max(screen.top(), screen.bottom() - place.height())));
  box.move(place.topLeft());
}

void MessageBoxes::AnswerCarefully() {
  answersCarefully_ = true;
  const auto open = open_;
  for (const auto& box : open) {
    if (box != nullptr) box->reject();
  }
}

}  // namespace Helmsway
