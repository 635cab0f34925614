#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>
#include <filesystem>

#include "bench/desktop/Appearance.h"
#include "docs/screenshots/Tour.h"

namespace {

using namespace Helmsway;

constexpr int TextPoints = 9;
constexpr int LargeText = 200;
constexpr QSize LargeWindow(1912, 1040);
constexpr QSize DarkWindow(1460, 860);

/// A usual screen, into memory: windows and boxes take their size from it.
void ChooseScreen(const QTemporaryDir& folder) {
  QFile file(folder.filePath(QStringLiteral("screen.json")));
  const QByteArray screen =
      R"({"screens": [{"name": "screen", "x": 0, "y": 0, "width": 1920, "height": 1080, "logicalDpi": 96, "dpr": 1}]})";
  if (!file.open(QIODevice::WriteOnly) || file.write(screen) != screen.size()) {
    throw std::runtime_error("can't be written: " + file.fileName().toStdString());
  }
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName().toUtf8());
}

/// The same picture whatever the desktop is set to.
void ChooseLook() {
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), TextPoints));
  QApplication::setCursorFlashTime(0);
  Appearance::Begin();
}

}  // namespace

int main(int argc, char** argv) {
  QTextStream complaint(stderr);
  if (argc != 2) {
    complaint << "helmsway-screenshots FOLDER: takes the pictures of the documentation into the folder\n";
    return EXIT_FAILURE;
  }
  try {
    const QTemporaryDir settings;
    ChooseScreen(settings);
    QApplication::setApplicationDisplayName(QStringLiteral("Helmsway Bench"));
    const QApplication application(argc, argv);
    ChooseLook();
    const Camera camera(QString::fromLocal8Bit(argv[1]));
    const std::filesystem::path programs = std::filesystem::read_symlink("/proc/self/exe").parent_path();

    Tour::TakeAll(camera, programs);
    Appearance::SetTextSize(LargeText);
    Tour::TakeCalibrationLocation(camera, programs, LargeWindow, "14-large-text");
    Appearance::SetTextSize(100);
    Appearance::SetColors(Appearance::Colors::Dark);
    Tour::TakeCalibrationLocation(camera, programs, DarkWindow, "15-dark");
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    complaint << "helmsway-screenshots: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
