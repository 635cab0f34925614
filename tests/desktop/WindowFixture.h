#pragma once

#include <gtest/gtest.h>

#include <QDialog>
#include <QMessageBox>
#include <QTimer>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/desktop/MainWindow.h"
#include "tests/host/TemporaryFolder.h"

namespace Helmsway {

/// The bench's window on a copy of the example installation, a hundred times faster than real. All that the tests do to
/// it are events of mouse and keyboard, as the window system would deliver them.
class WindowFixture : public testing::Test {
 protected:
  using Answer = std::function<void(QDialog&)>;
  using Lines = std::vector<std::string>;

  static constexpr const char* Hint = "Calibrate S Axis Reference Point";
  static constexpr const char* Verify = "Calibrate Syringe Axis";
  static constexpr const char* SaveBox = "Save S Axis Positions";
  static constexpr const char* EjectBox = "Eject Teach Tool";
  static constexpr const char* Bench = "Helmsway Bench";  // a box without a title of its own, too

  WindowFixture();
  ~WindowFixture() override;

  /// The next box will have that title, and is answered so. A box that isn't expected is a failure.
  void Expect(const char* title, Answer answer);
  static Answer Press(QMessageBox::StandardButton button);
  static Answer Key(Qt::Key key);

  /// Once, in the middle of the next line that begins so; it must take time.
  void During(const char* line, std::function<void()> act);

  MainWindow& Window() { return *window_; }
  BenchSession& Session() { return *window_->Session(); }
  QWidget& Widget(const char* name);
  /// Clicks in the window where the widget is, whatever lies on it. A check box is hit at its mark.
  void Click(const char* name);
  QPoint Place(const char* name);
  void ClickAt(const QPoint& place);
  /// Goes to whatever has the focus.
  void Type(Qt::Key key, int times = 1);
  void TabTo(const char* name);
  void Pick(const char* list, int entry);
  void Trigger(const char* action);

  void GoToMainPage();
  /// Goes to the main page on the road that leads over all panels, and has a look at each.
  void GoOverAllPanels(const std::function<void()>& look);
  void Start();
  /// By small and large steps, until the tool's edge is as near the ring as a small step gets it.
  void JogToRing(const std::function<void(int)>& step, const std::function<void(bool)>& jog);

  std::string Text(const char* name);
  /// The buttons that can be pressed, in the order of their numbers: "0 5 6 14 16".
  std::string EnabledButtons();
  /// The panels that are shown, in the order of their names.
  std::string Panels();
  const TemporaryFolder& Installation() const { return installation_; }
  std::string File() const { return installation_.Read("Marivane.ini"); }
  bool IsShown(const char* name) { return Widget(name).isVisible(); }
  /// Presses Save at the calibration location, and agrees to both questions; `look` is called while the second is open.
  void Save(const std::function<void()>& look = [] {});
  int Count(ConsoleEntry::Kind kind, const char* text);

  /// What a start of the bench on the installation asks for.
  SessionOptions Options() const;
  /// Ends the window and opens another on the same installation.
  void OpenAgain();
  /// Begins to listen to the session that there is now.
  void FollowLines();
  void EndWindow() { window_.reset(); }

  /// All lines that have begun, those of earlier sessions too.
  Lines lines;

 private:
  void AnswerBox();

  struct Expected {
    QString title;
    Answer answer;
  };

  TemporaryFolder installation_;
  std::unique_ptr<MainWindow> window_;
  std::deque<Expected> expected_;
  QTimer watch_;
  bool answering_ = false;
  std::string awaited_;
  std::function<void()> act_;
};

}  // namespace Helmsway
