#include <gtest/gtest.h>

#include <QApplication>

// Fonts and themes that the toolkit loads once stay until the end of the process.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the leak sanitizer asks for it by this name
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\nleak:libQt6\n"; }

// Widgets need the application; a font of one size makes what fits where the same on every machine.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
