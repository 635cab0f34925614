#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "bench/desktop/form/MessageBoxes.h"

namespace Helmsway {
namespace {

using forms::MessageAnswer;
using forms::MessageButtons;
using forms::MessageIcon;

/// Does something to the box once it is open.
void WhenOpen(std::function<void(QMessageBox&)> act) {
  QTimer::singleShot(0, qApp, [act = std::move(act)] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    act(*box);
  });
}

void Press(QMessageBox& box, const char* button) {
  auto* const found = box.findChild<QPushButton*>(QString::fromLatin1(button));
  ASSERT_NE(found, nullptr) << button;
  QTest::mouseClick(found, Qt::LeftButton);
}

TEST(MessageBoxes, TheAnswerIsTheButtonsAndEscapeOrClosingIsCareful) {
  const auto press = [](const char* button) { return [button](QMessageBox& box) { Press(box, button); }; };
  const auto key = [](Qt::Key pressed) { return [pressed](QMessageBox& box) { QTest::keyClick(&box, pressed); }; };
  const auto close = [](QMessageBox& box) { box.close(); };
  struct Row {
    const char* name;
    MessageButtons buttons;
    std::function<void(QMessageBox&)> act;
    MessageAnswer answer;
  };
  const Row rows[] = {
      {"OK", MessageButtons::Ok, press("messageBox_ok"), MessageAnswer::Ok},
      {"OK by Escape", MessageButtons::Ok, key(Qt::Key_Escape), MessageAnswer::Ok},
      {"OK of two", MessageButtons::OkCancel, press("messageBox_ok"), MessageAnswer::Ok},
      {"Cancel", MessageButtons::OkCancel, press("messageBox_cancel"), MessageAnswer::Cancel},
      {"Return is OK", MessageButtons::OkCancel, key(Qt::Key_Return), MessageAnswer::Ok},
      {"closing is Cancel", MessageButtons::OkCancel, close, MessageAnswer::Cancel},
      {"Yes", MessageButtons::YesNo, press("messageBox_yes"), MessageAnswer::Yes},
      {"No", MessageButtons::YesNo, press("messageBox_no"), MessageAnswer::No},
      {"Return is Yes", MessageButtons::YesNo, key(Qt::Key_Return), MessageAnswer::Yes},
      {"Escape is No", MessageButtons::YesNo, key(Qt::Key_Escape), MessageAnswer::No},
      {"closing is No", MessageButtons::YesNo, close, MessageAnswer::No},
  };
  QWidget parent;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    MessageBoxes boxes(&parent);
    WhenOpen(row.act);
    EXPECT_EQ(boxes.Show("Title", "Text", row.buttons, MessageIcon::None), row.answer);
    EXPECT_TRUE(parent.findChildren<QMessageBox*>().isEmpty());
  }
}

TEST(MessageBoxes, TextAndTitleAreShownAsGiven) {
  MessageBoxes boxes(nullptr);
  WhenOpen([](QMessageBox& box) {
    EXPECT_EQ(box.windowTitle(), QStringLiteral("Helmsway Bench"));
    EXPECT_EQ(box.text(), QStringLiteral("upper <b>part</b> \n\n1. 8 & 12"));
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.windowModality(), Qt::ApplicationModal);
    EXPECT_EQ(box.icon(), QMessageBox::NoIcon);
    box.reject();
  });
  boxes.Show("", "upper <b>part</b> \r\n\r\n1. 8 & 12", MessageButtons::Ok, MessageIcon::None);
  WhenOpen([](QMessageBox& box) {
    EXPECT_EQ(box.windowTitle(), QStringLiteral("Calibrate"));
    EXPECT_EQ(box.icon(), QMessageBox::Warning);
    box.reject();
  });
  boxes.Show("Calibrate", "Text", MessageButtons::Ok, MessageIcon::Exclamation);
}

TEST(MessageBoxes, AnsweringCarefullyClosesTheOpenBoxAndShowsNoOther) {
  MessageBoxes boxes(nullptr);
  WhenOpen([&](QMessageBox&) { boxes.AnswerCarefully(); });
  EXPECT_EQ(boxes.Show("Title", "Text", MessageButtons::YesNo, MessageIcon::None), MessageAnswer::No);
  EXPECT_EQ(boxes.Show("Title", "Text", MessageButtons::OkCancel, MessageIcon::None), MessageAnswer::Cancel);
}

TEST(MessageBoxes, ABoxWhoseWindowGoesIsAnsweredCarefully) {
  auto* const parent = new QWidget;
  MessageBoxes boxes(parent);
  WhenOpen([&](QMessageBox&) { delete parent; });
  EXPECT_EQ(boxes.Show("Title", "Text", MessageButtons::OkCancel, MessageIcon::None), MessageAnswer::Cancel);
}

}  // namespace
}  // namespace Helmsway
