#include <gtest/gtest.h>

#include <QApplication>

// Widgets need the application; a font of one size makes what fits where the same on every machine.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
