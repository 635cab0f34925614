#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QTest>
#include <QWindow>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/desktop/form/FormView.h"
#include "forms/Form.h"

namespace Helmsway {
namespace {

using forms::ControlDesign;
using forms::ControlKind;
using forms::NoIndex;
using Log = std::vector<std::string>;

ControlDesign Row(ControlKind kind, std::string_view name, std::int16_t index, std::string_view container,
                  forms::Rectangle bounds, std::string_view caption = "") {
  return {.kind = kind, .name = name, .index = index, .container = container, .bounds = bounds, .caption = caption};
}

ControlDesign With(ControlDesign row, const std::function<void(ControlDesign&)>& change) {
  change(row);
  return row;
}

/// A panel with arrows and, beside it, two free buttons that a second panel can cover.
const std::array design{
    Row(ControlKind::PictureBox, "back", NoIndex, "", {120, 120, 6000, 6375}),
    Row(ControlKind::Frame, "jog", NoIndex, "back", {120, 600, 3480, 2655}, "Move"),
    With(Row(ControlKind::Frame, "cover", NoIndex, "back", {120, 600, 5760, 5415}),
         [](ControlDesign& row) { row.visible = false; }),
    With(Row(ControlKind::CommandButton, "cmd", 16, "back", {3840, 1560, 1695, 375}, "Stop"),
         [](ControlDesign& row) {
           row.backColor = forms::Rgb{255, 128, 128}, row.bold = true;
         }),
    Row(ControlKind::CommandButton, "cmd", 5, "back", {3840, 1080, 1695, 375}, "Home All"),
    Row(ControlKind::CommandButton, "cmd", 2, "back", {120, 3600, 1695, 375}, "Eject Tip"),
    Row(ControlKind::Label, "title", NoIndex, "back", {120, 120, 5760, 375}, "Calibrate"),
    Row(ControlKind::Label, "field", 1, "jog", {120, 420, 900, 255}, "Step size"),
    With(Row(ControlKind::ComboBox, "list", NoIndex, "jog", {1080, 375, 1335, 315}),
         [](ControlDesign& row) { row.entries = "0.1 mm\n1 mm"; }),
    With(Row(ControlKind::TextBox, "text", NoIndex, "jog", {1080, 1140, 1335, 315}),
         [](ControlDesign& row) { row.locked = true; }),
    Row(ControlKind::CommandButton, "cmd", 0, "jog", {120, 2085, 1215, 375}, "Start"),
    With(Row(ControlKind::CommandButton, "cmd", 6, "jog", {1440, 2085, 1215, 375}, "Save"),
         [](ControlDesign& row) { row.enabled = false; }),
    With(Row(ControlKind::CommandButton, "cmd", 7, "jog", {2640, 300, 735, 735}),
         [](ControlDesign& row) { row.arrow = forms::Arrow::Up; }),
    With(Row(ControlKind::CommandButton, "cmd", 8, "jog", {2640, 1140, 735, 735}),
         [](ControlDesign& row) { row.arrow = forms::Arrow::Down; }),
    Row(ControlKind::CommandButton, "cmd", 9, "cover", {3900, 3200, 1695, 375}, "Continue"),
    Row(ControlKind::CheckBox, "check", NoIndex, "cover", {480, 1680, 4800, 375}, "Stage Position 2 is empty"),
    Row(ControlKind::Label, "prompt", NoIndex, "cover", {480, 480, 4800, 855},
        "Please confirm whether or not a teaching tool is currently installed in the pipette module and that Stage "
        "Position 2 is empty."),
};

class FormViewTest : public testing::Test, public IFormHands, public forms::IObserver {
 protected:
  FormViewTest() : form(std::make_unique<forms::Form>("Calibrate", design)) {
    for (const auto& control : form->Controls()) {
      control->OnClick = [this, name = NameOf(*control)] { log.push_back(name); };
    }
    view = std::make_unique<FormView>(*form, *this);
    form->SetObserver(this);
    view->show();
    view->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(view.get()));
  }

  void Click(forms::ControlId control) override {
    ++asked;
    if (instead) return instead();
    form->Click(control);
  }
  void SetChecked(forms::ControlId box, bool checked) override {
    if (!refuses) form->SetChecked(box, checked);
  }
  void Pick(forms::ControlId list, std::int32_t entry) override {
    if (!refuses) form->Pick(list, entry);
  }
  void Changed(forms::ControlId control, forms::Aspect aspect) noexcept override { view->Changed(control, aspect); }
  void Closed() noexcept override { view->Detach(); }

  static std::string NameOf(const forms::Control& control) {
    const std::string name(control.Name());
    return control.Index() ? name + "_" + std::to_string(*control.Index()) : name;
  }
  template <class Widget = QWidget>
  Widget* Find(const char* name) const {
    return view->findChild<Widget*>(QString::fromLatin1(name));
  }
  std::string Focus() const {
    const QWidget* const focus = view->focusWidget();
    return focus == nullptr ? "" : focus->objectName().toStdString();
  }
  /// Through the window, so that whatever is on top gets the click.
  void ClickAt(const char* name) const {
    const QWidget* const widget = Find(name);
    QTest::mouseClick(view->windowHandle(), Qt::LeftButton, {}, widget->mapTo(view.get(), widget->rect().center()));
  }
  static void Press(QWidget* widget, Qt::Key key, bool again = false) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, QString(), again);
    QApplication::sendEvent(widget, &event);
  }
  Log TabRound() const {
    Log round;
    for (std::size_t count = 0; count < design.size(); ++count) {
      QTest::keyClick(view->focusWidget(), Qt::Key_Tab);
      if (!round.empty() && Focus() == round.front()) break;
      round.push_back(Focus());
    }
    return round;
  }

  std::unique_ptr<forms::Form> form;
  std::unique_ptr<FormView> view;
  std::function<void()> instead;  ///< what a click does in place of reaching the form
  bool refuses = false;           ///< lists and boxes don't reach the form
  int asked = 0;                  ///< clicks that the hands were told to make
  Log log;
};

/// Room that the style leaves for the widget's text; what it needs.
struct Room {
  QSize has;
  QSize needs;
};

Room RoomOf(const QWidget& widget) {
  const QFontMetrics metrics = widget.fontMetrics();
  const auto line = [&](const QString& text) { return QSize(metrics.horizontalAdvance(text), metrics.height()); };
  QStyleOptionButton option;
  option.initFrom(&widget);
  if (const auto* const label = qobject_cast<const QLabel*>(&widget)) {
    return {label->size(), {label->minimumSizeHint().width(), label->heightForWidth(label->width())}};
  }
  if (const auto* const box = qobject_cast<const QCheckBox*>(&widget)) {
    return {box->style()->subElementRect(QStyle::SE_CheckBoxContents, &option, box).size(), line(box->text())};
  }
  if (const auto* const button = qobject_cast<const QPushButton*>(&widget)) {
    const QSize contents = button->style()->subElementRect(QStyle::SE_PushButtonContents, &option, button).size();
    return {contents, button->text().isEmpty() ? button->iconSize() : line(button->text())};
  }
  if (const auto* const edit = qobject_cast<const QLineEdit*>(&widget)) return {edit->size(), edit->minimumSizeHint()};
  if (const auto* const list = qobject_cast<const QComboBox*>(&widget)) {
    QStyleOptionComboBox combo;
    combo.initFrom(list);
    const QRect field = list->style()->subControlRect(QStyle::CC_ComboBox, &combo, QStyle::SC_ComboBoxEditField, list);
    return {field.size(), {metrics.horizontalAdvance(QStringLiteral("0.1 mm")) + 2, metrics.height()}};
  }
  return {};
}

TEST_F(FormViewTest, EveryTextFitsAtTheFontAndAtTwiceTheFont) {
  const QFont font = QApplication::font();
  const QSize before = view->minimumSizeHint();
  form->Get("cover").SetVisible(true);
  for (const int factor : {1, 2}) {
    SCOPED_TRACE(factor);
    QFont larger = font;
    larger.setPointSizeF(font.pointSizeF() * factor);
    QApplication::setFont(larger);
    QApplication::processEvents();
    for (const auto& control : form->Controls()) {
      const QWidget* const widget = Find(NameOf(*control).c_str());
      const auto [has, needs] = RoomOf(*widget);
      EXPECT_TRUE(has.width() >= needs.width() && has.height() >= needs.height())
          << NameOf(*control) << " has " << has.width() << " by " << has.height() << ", needs " << needs.width()
          << " by " << needs.height();
      // One scale for all: back is 6000 twips wide, and edges go to whole pixels.
      const double scale = Find("back")->width() / 6000.0;
      EXPECT_NEAR(widget->width(), control->Design().bounds.width * scale, 1.5);
      EXPECT_NEAR(widget->y(), control->Design().bounds.top * scale, 1.5);
    }
  }
  EXPECT_GT(view->minimumSizeHint().width(), before.width() * 3 / 2);
  EXPECT_GE(view->height(), view->minimumSizeHint().height());
  QApplication::setFont(font);
  QApplication::processEvents();
  EXPECT_EQ(view->minimumSizeHint(), before);
}

TEST_F(FormViewTest, TextStandsOutFromItsBackgroundOnLightAndDark) {
  const QPalette before = QApplication::palette();
  for (const QColor& window : {QColor(239, 239, 239), QColor(45, 45, 48)}) {
    QApplication::setPalette(QPalette(window));
    QApplication::processEvents();
    form->Get("cmd", 5).SetBackColor(forms::SystemColor::WindowBackground);
    for (const char* name : {"cmd_16", "cmd_5", "cmd_0", "list", "check", "cmd_6"}) {
      const QPalette& palette = Find(name)->palette();
      const bool box = qobject_cast<QCheckBox*>(Find(name)) != nullptr;
      const QColor text = palette.color(box ? QPalette::WindowText : QPalette::ButtonText);
      const QColor back = palette.color(box ? QPalette::Window : QPalette::Button);
      EXPECT_GT(std::abs(qGray(text.rgb()) - qGray(back.rgb())), 100) << name << " on " << window.name().toStdString();
    }
    EXPECT_EQ(Find("cmd_16")->palette().color(QPalette::Button), QColor(255, 128, 128));
    EXPECT_EQ(Find("cmd_5")->palette().color(QPalette::Button), QApplication::palette().color(QPalette::Base));
  }
  QApplication::setPalette(before);
  QApplication::processEvents();
}

TEST_F(FormViewTest, WhatAPanelCoversGetsNeitherMouseNorTab) {
  Find("jog")->setFocus();
  EXPECT_EQ(TabRound(), (Log{"list", "cmd_7", "text", "cmd_8", "cmd_0", "cmd_5", "cmd_16", "cmd_2", "jog"}));
  ClickAt("cmd_16");
  EXPECT_EQ(log, Log{"cmd_16"});
  form->Get("jog").SetVisible(false);
  form->Get("cover").SetVisible(true);
  EXPECT_TRUE(Find("cmd_16")->isVisible());
  ClickAt("cmd_16");
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(TabRound(), (Log{"cmd_9", "check"}));
}

TEST_F(FormViewTest, OnlyTheBackgroundItselfTakesItsClick) {
  form->Get("cmd", 5).SetEnabled(false);
  for (const char* name : {"title", "jog", "cmd_5", "cmd_6", "field_1"}) ClickAt(name);
  EXPECT_EQ(log, Log());
  // The lower right corner is free.
  const QWidget* const back = Find("back");
  QTest::mouseClick(view->windowHandle(), Qt::LeftButton, {},
                    back->mapTo(view.get(), back->rect().bottomRight() - QPoint(4, 4)));
  EXPECT_EQ(log, Log{"back"});
}

TEST_F(FormViewTest, ListAndBoxShowWhatTheFormHas) {
  auto& list = form->Get<forms::ComboBox>("list");
  auto* const shown = Find<QComboBox>("list");
  EXPECT_EQ(shown->currentIndex(), -1);
  QTest::keyClick(shown, Qt::Key_Down);
  EXPECT_EQ(list.ListIndex(), 0);
  refuses = true;
  QTest::keyClick(shown, Qt::Key_Down);
  EXPECT_EQ(shown->currentIndex(), 0);
  list.Clear();
  list.AddItem("8 channel");
  EXPECT_EQ(shown->count(), 1);
  EXPECT_EQ(shown->itemText(0), QStringLiteral("8 channel"));
  EXPECT_EQ(shown->currentIndex(), -1);

  form->Get("cover").SetVisible(true);
  form->Get("jog").SetVisible(false);
  const auto& box = form->Get<forms::CheckBox>("check");
  ClickAt("check");
  EXPECT_EQ(box.Value(), 0);
  EXPECT_FALSE(Find<QCheckBox>("check")->isChecked());
  refuses = false;
  ClickAt("check");
  EXPECT_EQ(box.Value(), 1);
  EXPECT_TRUE(Find<QCheckBox>("check")->isChecked());

  form->Get<forms::TextBox>("text").SetText("-120");
  EXPECT_EQ(Find<QLineEdit>("text")->text(), QStringLiteral("-120"));
  EXPECT_TRUE(Find<QLineEdit>("text")->isReadOnly());
}

TEST_F(FormViewTest, ArrowKeysStepWhileThePanelOrItsButtonsHaveTheFocus) {
  struct Row {
    const char* focus;
    Qt::Key key;
    bool again;
    bool upEnabled;
    Log clicks;
  };
  const Row rows[] = {
      {"jog", Qt::Key_Up, false, true, {"cmd_7"}},   {"jog", Qt::Key_Down, false, true, {"cmd_8"}},
      {"cmd_0", Qt::Key_Up, false, true, {"cmd_7"}}, {"cmd_8", Qt::Key_Up, false, true, {"cmd_7"}},
      {"jog", Qt::Key_Up, true, true, {}},           {"jog", Qt::Key_Up, false, false, {}},
      {"list", Qt::Key_Down, false, true, {"list"}}, {"text", Qt::Key_Up, false, true, {}},
      {"cmd_5", Qt::Key_Up, false, true, {}},        {"cmd_0", Qt::Key_Return, false, true, {"cmd_0"}},
      {"cmd_0", Qt::Key_Return, true, true, {}},
  };
  for (const Row& row : rows) {
    form->Get("cmd", 7).SetEnabled(row.upEnabled);
    Find(row.focus)->setFocus();
    log.clear();
    asked = 0;
    Press(Find(row.focus), row.key, row.again);
    EXPECT_EQ(asked == 0, row.clicks.empty() || row.clicks.front() == "list");
    EXPECT_EQ(log, row.clicks) << row.focus << ", key " << row.key << (row.again ? " again" : "");
  }
}

TEST_F(FormViewTest, DuringAClickAnArrowKeyIsDroppedAndStopPassesThrough) {
  form->Get("cmd", 7).OnClick = [this] {
    log.push_back("up begins");
    Press(Find("jog"), Qt::Key_Down);
    ClickAt("cmd_16");
    log.push_back("up ends");
  };
  Find("jog")->setFocus();
  Press(Find("jog"), Qt::Key_Up);
  QApplication::processEvents();
  EXPECT_EQ(log, (Log{"up begins", "cmd_16", "up ends"}));
  Find("jog")->setFocus();
  Press(Find("jog"), Qt::Key_Down);
  EXPECT_EQ(log.back(), "cmd_8");
}

TEST_F(FormViewTest, AFocusWhoseButtonIsDisabledIsParkedAndComesBack) {
  Log focus;
  const auto run = [&](std::int16_t button, bool back) {
    auto& pressed = form->Get("cmd", button);
    pressed.OnClick = [&] {
      pressed.SetEnabled(false);
      focus.push_back(Focus());
      pressed.SetEnabled(back);
    };
    Find(NameOf(pressed).c_str())->setFocus();
    Press(view->focusWidget(), Qt::Key_Return);
    focus.push_back(Focus());
  };
  run(0, true);   // in the panel with the arrows
  run(8, false);  // there too, for good
  run(5, true);   // free
  run(5, false);  // free, for good: the next one
  EXPECT_EQ(focus, (Log{"jog", "cmd_0", "jog", "jog", "formView", "cmd_5", "formView", "cmd_16"}));
}

TEST_F(FormViewTest, TheFocusGoesToThePanelThatComes) {
  Log focus;
  const auto show = [&](const char* panel, bool visible) {
    form->Get(panel).SetVisible(visible);
    focus.push_back(Focus());
  };
  const auto run = [&](std::int16_t button, std::function<void()> handler) {
    form->Get("cmd", button).OnClick = std::move(handler);
    QPushButton& pressed = *Find<QPushButton>(("cmd_" + std::to_string(button)).c_str());
    pressed.setFocus();
    Press(&pressed, Qt::Key_Return);
  };
  run(0, [&] { show("jog", false), show("jog", true); });
  EXPECT_EQ(focus, (Log{"cmd_5", "jog"})) << "gone and come back";
  focus.clear();
  run(5, [&] { show("cover", true), show("jog", false); });
  EXPECT_EQ(focus, (Log{"cmd_9", "check"})) << "the box lies under the panel with the arrows until that goes";
  focus.clear();
  run(9, [&] { show("cover", false), show("jog", true); });
  EXPECT_EQ(focus, (Log{"cmd_5", "jog"}));
}

TEST_F(FormViewTest, AFormThatEndsDuringAClickIsNotAskedAgain) {
  instead = [this] {
    form->Close();
    form.reset();
  };
  ClickAt("cmd_5");
  view->Changed(0, forms::Aspect::Visible);
  QApplication::setPalette(QPalette(QColor(45, 45, 48)));
  QApplication::processEvents();
  QApplication::setPalette(QPalette());
  QApplication::processEvents();
  EXPECT_FALSE(Find("cmd_5")->isEnabled());
  EXPECT_EQ(Find<QPushButton>("cmd_5")->text(), QStringLiteral("Home All"));
  ClickAt("cmd_16");
  Press(Find("jog"), Qt::Key_Up);
}

TEST_F(FormViewTest, FieldsAndArrowsHaveSpokenNames) {
  const std::pair<const char*, const char*> names[] = {{"list", "Step size"}, {"cmd_7", "Up"}, {"cmd_8", "Down"},
                                                       {"cmd_16", "Stop"},    {"jog", "Move"}, {"cover", "cover"}};
  for (const auto& [widget, name] : names) EXPECT_EQ(Find(widget)->accessibleName().toStdString(), name);
  EXPECT_EQ(Find<QLabel>("field_1")->buddy(), Find("list"));
}

}  // namespace
}  // namespace Helmsway
