#include <QApplication>
#include <QMessageBox>
#include <QTextStream>
#include <QTimer>
#include <filesystem>

#include "bench/desktop/Appearance.h"
#include "bench/desktop/CommandLine.h"
#include "bench/desktop/Installation.h"
#include "bench/desktop/MainWindow.h"
#include "bench/host/Locale.h"
#include "bench/host/Registration.h"

namespace {

using namespace Helmsway;

SessionOptions Prepare(const BenchOptions& options, bool& registeredNow) {
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  SessionOptions session;
  session.addIn = options.addIn;
  if (session.addIn.empty()) {
    const Registration::FoundAddIn found = Registration::FindAddIn(program / "libOrvelCalibrateS.so");
    session.addIn = found.library;
    registeredNow = found.registeredNow;
  }
  session.installation = options.installation.empty()
                             ? Installation::Own(program / "../share/helmsway/examples/installation")
                             : options.installation;
  if (!std::filesystem::is_directory(session.installation)) {
    throw std::runtime_error("not a folder: " + session.installation.string());
  }
  session.seed = options.seed;
  session.factor = options.factor;
  return session;
}

/// Ends the program when the window that it watches has been drawn for the first time.
class QuitWhenDrawn final : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) QTimer::singleShot(0, qApp, &QApplication::quit);
    return QObject::eventFilter(watched, event);
  }
};

}  // namespace

int main(int argc, char** argv) {
  Locale::FixNumbers();
  QApplication::setApplicationName(QStringLiteral("helmsway-bench"));
  QApplication::setApplicationVersion(QStringLiteral(HELMSWAY_VERSION));
  const QApplication application(argc, argv);
  Appearance::Begin();
  const BenchOptions options = ParseBenchCommandLine(QApplication::arguments());
  Appearance::SetTextSize(options.textSize);
  if (options.dark) Appearance::SetColors(Appearance::Colors::Dark);
  try {
    bool registeredNow = false;
    MainWindow window(Prepare(options, registeredNow));
    if (!window.BeginSession()) return EXIT_FAILURE;
    if (registeredNow) {
      window.Session()->Report().Note(
          QStringLiteral("no add-in was registered, so the one beside the program has been"));
    }
    QuitWhenDrawn quitWhenDrawn;
    if (options.quitWhenShown) window.installEventFilter(&quitWhenDrawn);
    window.show();
    window.activateWindow();
    return QApplication::exec();
  } catch (const std::exception& error) {
    QTextStream(stderr) << "helmsway-bench: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
