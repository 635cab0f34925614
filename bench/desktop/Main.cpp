#include <QApplication>
#include <QTimer>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "bench/desktop/Appearance.h"
#include "bench/desktop/CommandLine.h"
#include "bench/desktop/Installation.h"
#include "bench/desktop/MainWindow.h"
#include "bench/desktop/StartProblems.h"
#include "bench/host/AddInPlace.h"
#include "bench/host/Locale.h"
#include "bench/host/Registration.h"
#include "bench/instrument/InstallationCheck.h"

namespace {

using namespace Helmsway;
namespace fs = std::filesystem;

/// What a start has come to, besides the session.
struct Start {
  SessionOptions session;
  std::vector<std::string> warnings;
  bool registeredNow = false;
};

void FindAddIn(const fs::path& beside, Start& start) {
  try {
    const Registration::FoundAddIn found = Registration::FindAddIn(beside);
    start.session.addIn = found.library;
    start.registeredNow = found.registeredNow;
  } catch (const std::exception& error) {
    // What isn't to be trusted, or can't be written, need not keep the bench from its own add-in.
    if (!fs::is_regular_file(beside)) throw;
    start.session.addIn = beside;
    start.warnings.push_back(std::string("there is no registered add-in to be used (") + error.what() +
                             "); the one beside the program is used");
  }
}

fs::path OwnInstallation(const fs::path& example) {
  std::string why;
  try {
    return Installation::Own(example);
  } catch (const fs::filesystem_error& error) {
    why = error.path1().string() + " can't be made: " + error.code().message();
  } catch (const std::exception& error) {
    why = error.what();
  }
  throw std::runtime_error("The bench has no place for an installation of its own: " + why +
                           ".\n\nAnother folder can be given with --installation.");
}

Start Prepare(const BenchOptions& options) {
  const fs::path program = fs::read_symlink("/proc/self/exe").parent_path();
  Start start;
  SessionOptions& session = start.session;
  session.installation = options.installation.empty()
                             ? OwnInstallation(program / "../share/helmsway/examples/installation")
                             : options.installation;
  std::error_code ignored;
  if (!fs::exists(session.installation, ignored)) {
    throw std::runtime_error("There is no folder " + session.installation.string() + ".");
  }
  if (!fs::is_directory(session.installation)) {
    throw std::runtime_error(session.installation.string() + " is not a folder.");
  }
  session.addIn = options.addIn;
  if (session.addIn.empty()) FindAddIn(AddInOfPrograms(program), start);
  session.seed = options.seed;
  session.factor = options.factor;
  return start;
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
  QCoreApplication::setApplicationName(QStringLiteral("helmsway-bench"));
  QCoreApplication::setApplicationVersion(QStringLiteral(HELMSWAY_VERSION));
  if (AsksForText(argc, argv)) {
    const QCoreApplication application(argc, argv);
    ParseBenchCommandLine(QCoreApplication::arguments());
  }
  std::optional<StartProblems::DisplayDemanded> display(std::in_place);
  const QApplication application(argc, argv);
  display.reset();
  Appearance::Begin();
  const BenchOptions options = ParseBenchCommandLine(QApplication::arguments());
  Appearance::SetTextSize(options.textSize);
  if (options.dark) Appearance::SetColors(Appearance::Colors::Dark);
  try {
    Start start = Prepare(options);
    MainWindow window(start.session);
    if (!window.BeginSession()) return EXIT_FAILURE;
    if (start.registeredNow) {
      window.Session()->Report().Note(
          QStringLiteral("no add-in was registered, so the one beside the program has been"));
    }
    for (std::string& problem : InstallationProblems(window.Session()->MarivaneIni())) {
      start.warnings.push_back(std::move(problem));
    }
    QuitWhenDrawn quitWhenDrawn;
    if (options.quitWhenShown) window.installEventFilter(&quitWhenDrawn);
    window.show();
    window.activateWindow();
    StartProblems::Warn(&window, start.warnings);
    return QApplication::exec();
  } catch (const std::exception& error) {
    StartProblems::Tell(nullptr, QString::fromUtf8(error.what()));
    return EXIT_FAILURE;
  }
}
