#include <gtest/gtest.h>

#include <QTest>
#include <QWidget>
#include <string>

#include "bench/desktop/form/HeldKeys.h"

namespace Helmsway {
namespace {

class Listener final : public QWidget {
 public:
  std::string heard;  ///< "p" for a press, "r" for a repeated one

 protected:
  void keyPressEvent(QKeyEvent* event) override { heard += event->isAutoRepeat() ? 'r' : 'p'; }
};

TEST(HeldKeys, ReleaseAndPressInTheSameInstantAreARepeat) {
  const HeldKeys heldKeys;
  Listener listener;
  listener.show();
  listener.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&listener));
  const auto send = [&](QEvent::Type type, Qt::Key key, quint64 time, bool marked = false) {
    QKeyEvent event(type, key, Qt::NoModifier, {}, marked);
    event.setTimestamp(time);
    QCoreApplication::sendEvent(listener.windowHandle(), &event);
  };
  struct Row {
    const char* name;
    Qt::Key released;
    quint64 releaseTime;
    Qt::Key pressed;
    quint64 pressTime;
    bool marked;
    const char* heard;
  };
  const Row rows[] = {
      {"held down", Qt::Key_Down, 700, Qt::Key_Down, 700, false, "r"},
      {"pressed again at once", Qt::Key_Down, 700, Qt::Key_Down, 701, false, "p"},
      {"another key", Qt::Key_Up, 700, Qt::Key_Down, 700, false, "p"},
      {"no times", Qt::Key_Down, 0, Qt::Key_Down, 0, false, "p"},
      {"marked already", Qt::Key_Down, 700, Qt::Key_Down, 740, true, "r"},
      {"Return", Qt::Key_Return, 700, Qt::Key_Return, 730, false, "p"},
      {"Return held down", Qt::Key_Return, 700, Qt::Key_Return, 700, false, ""},
      {"Return marked already", Qt::Key_Return, 700, Qt::Key_Return, 730, true, ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    send(QEvent::KeyRelease, row.released, row.releaseTime);
    listener.heard.clear();
    send(QEvent::KeyPress, row.pressed, row.pressTime, row.marked);
    EXPECT_EQ(listener.heard, row.heard);
  }
}

}  // namespace
}  // namespace Helmsway
