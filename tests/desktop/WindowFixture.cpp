#include "tests/desktop/WindowFixture.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>
#include <QWindow>
#include <cmath>
#include <mutex>
#include <set>
#include <utility>

#include "bench/desktop/Appearance.h"

namespace Helmsway {
namespace {

namespace fs = std::filesystem;

QString Name(const char* name) { return QString::fromUtf8(name); }

}  // namespace

WindowFixture::WindowFixture() {
  static std::once_flag begun;
  std::call_once(begun, Appearance::Begin);
  fs::copy(HELMSWAY_EXAMPLES "/installation", installation_.PathOf(""), fs::copy_options::recursive);
  QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { AnswerBox(); });
  watch_.start(1);
  OpenAgain();
}

SessionOptions WindowFixture::Options() const {
  SessionOptions options;
  options.addIn = fs::read_symlink("/proc/self/exe").parent_path() / "libOrvelCalibrateS.so";
  options.installation = installation_.PathOf("");
  options.factor = BenchSession::FastestFactor;
  return options;
}

void WindowFixture::OpenAgain() {
  window_.reset();
  window_ = std::make_unique<MainWindow>(Options());
  EXPECT_TRUE(window_->BeginSession());
  FollowLines();
  window_->show();
  window_->activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
}

void WindowFixture::Save(const std::function<void()>& look) {
  Expect(Verify, Press(QMessageBox::Yes));
  Expect(SaveBox, [look](QDialog& box) {
    look();
    Press(QMessageBox::Ok)(box);
  });
  Click("cmdButton_6");
}

WindowFixture::~WindowFixture() {
  window_.reset();
  for (const Expected& box : expected_) ADD_FAILURE() << "no box came: " << box.title.toStdString();
  EXPECT_EQ(awaited_, "");
}

void WindowFixture::FollowLines() {
  QObject::connect(&Session().Report(), &BenchReport::LineBegan, &Session(), [this](const QString& line) {
    lines.push_back(line.toStdString());
    if (awaited_.empty() || !lines.back().starts_with(awaited_)) return;
    awaited_.clear();
    QTimer::singleShot(0, window_.get(), std::exchange(act_, nullptr));
  });
}

void WindowFixture::Expect(const char* title, Answer answer) { expected_.push_back({Name(title), std::move(answer)}); }

WindowFixture::Answer WindowFixture::Press(QMessageBox::StandardButton button) {
  return [button](QDialog& dialog) {
    auto* const box = qobject_cast<QMessageBox*>(&dialog);
    ASSERT_TRUE(box != nullptr && box->button(button) != nullptr);
    QTest::mouseClick(box->button(button), Qt::LeftButton);
  };
}

WindowFixture::Answer WindowFixture::Key(Qt::Key key) {
  return [key](QDialog& dialog) { QTest::keyClick(dialog.windowHandle(), key); };
}

void WindowFixture::AnswerBox() {
  const QPointer<QDialog> box(qobject_cast<QDialog*>(QApplication::activeModalWidget()));
  if (box == nullptr || answering_) return;
  answering_ = true;
  const std::string title = box->windowTitle().toStdString();
  if (expected_.empty() || expected_.front().title != box->windowTitle()) {
    ADD_FAILURE() << "not expected: " << title;
  } else {
    const Expected expected = std::move(expected_.front());
    expected_.pop_front();
    expected.answer(*box);
  }
  if (box != nullptr && box->isVisible()) {
    ADD_FAILURE() << "still open: " << title;
    box->reject();
  }
  // As a window manager would.
  if (window_ != nullptr && window_->isVisible()) window_->activateWindow();
  answering_ = false;
}

void WindowFixture::During(const char* line, std::function<void()> act) {
  awaited_ = line;
  act_ = std::move(act);
}

QWidget& WindowFixture::Widget(const char* name) {
  auto* const widget = window_->findChild<QWidget*>(Name(name));
  if (widget == nullptr) throw std::runtime_error(std::string("no widget ") + name);
  return *widget;
}

QPoint WindowFixture::Place(const char* name) {
  QWidget& widget = Widget(name);
  const bool box = qobject_cast<QCheckBox*>(&widget) != nullptr;
  const QPoint point = box ? QPoint(widget.height() / 2, widget.height() / 2) : widget.rect().center();
  auto& area = static_cast<QScrollArea&>(Widget("frame"));
  if (area.widget()->isAncestorOf(&widget)) {
    const QPoint inForm = widget.mapTo(area.widget(), point);
    area.ensureVisible(inForm.x(), inForm.y());
  }
  return widget.mapTo(window_.get(), point);
}

void WindowFixture::Click(const char* name) { ClickAt(Place(name)); }

void WindowFixture::ClickAt(const QPoint& place) {
  QTest::mouseClick(window_->windowHandle(), Qt::LeftButton, {}, place);
}

void WindowFixture::Type(Qt::Key key, int times) {
  while (times-- > 0) QTest::keyClick(window_->windowHandle(), key);
}

void WindowFixture::TabTo(const char* name) {
  const auto isThere = [&] { return QApplication::focusWidget() == &Widget(name); };
  for (int i = 0; i < 50 && !isThere(); ++i) Type(Qt::Key_Tab);
  if (!isThere()) throw std::runtime_error(std::string("Tab doesn't reach ") + name);
}

void WindowFixture::Pick(const char* list, int entry) {
  Widget(list).setFocus();
  Type(Qt::Key_Home);
  Type(Qt::Key_Down, entry);
  EXPECT_EQ(static_cast<QComboBox&>(Widget(list)).currentIndex(), entry) << list;
}

void WindowFixture::Trigger(const char* action) {
  auto* const found = window_->findChild<QAction*>(Name(action));
  ASSERT_TRUE(found != nullptr && found->isEnabled()) << action;
  found->trigger();
}

void WindowFixture::GoToMainPage() {
  Click("cmdButton_10");
  Click("chkToolInstalled");
  Click("cmdButton_9");
}

void WindowFixture::GoOverAllPanels(const std::function<void()>& look) {
  look();
  Click("cmdButton_10");
  look();
  Click("chkToolUninstalled");
  Click("cmdButton_9");
  look();
  Click("chkStageEmpty");
  During("HOME ALL", look);
  Click("cmdButton_4");
  look();
  Click("cmdButton_11");
  Click("chkToolInstalled");
  Click("cmdButton_9");
}

void WindowFixture::Start() {
  Expect(Hint, Press(QMessageBox::Ok));
  Click("cmdButton_0");
}

void WindowFixture::JogToRing(const std::function<void(int)>& step, const std::function<void(bool)>& jog) {
  for (const auto& [entry, near] : {std::pair{1, 0.5}, {0, 0.05}}) {
    step(entry);
    for (int i = 0; i < 20; ++i) {
      const double edge = Session().Picture().edge.value();
      if (std::abs(edge) <= near) break;
      jog(edge < 0);
    }
  }
  EXPECT_LE(std::abs(Session().Picture().edge.value()), 0.05);
}

std::string WindowFixture::Text(const char* name) { return Widget(name).property("text").toString().toStdString(); }

std::string WindowFixture::EnabledButtons() {
  std::set<int> enabled;
  for (const QPushButton* const button : Widget("formView").findChildren<QPushButton*>()) {
    if (button->isVisible() && button->isEnabled()) enabled.insert(button->objectName().section(u'_', 1).toInt());
  }
  std::string names;
  for (const int button : enabled) names += (names.empty() ? "" : " ") + std::to_string(button);
  return names;
}

std::string WindowFixture::Panels() {
  std::set<std::string> panels;
  for (const QWidget* const widget : Widget("formView").findChildren<QWidget*>()) {
    if (widget->isVisible() && widget->objectName().startsWith(u"fra"))
      panels.insert(widget->objectName().toStdString());
  }
  std::string names;
  for (const std::string& panel : panels) names += (names.empty() ? "" : " ") + panel;
  return names;
}

int WindowFixture::Count(ConsoleEntry::Kind kind, const char* text) {
  int count = 0;
  for (int row = 0; row < window_->Console().rowCount(); ++row) {
    const ConsoleEntry& entry = window_->Console().Entry(row);
    count += entry.kind == kind && entry.text == Name(text) ? 1 : 0;
  }
  return count;
}

}  // namespace Helmsway
