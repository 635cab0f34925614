#include "bench/desktop/StartProblems.h"

#include <QMessageBox>
#include <QStringList>
#include <QTextStream>
#include <cstdlib>
#include <utility>

namespace Helmsway::StartProblems {
namespace {

void TellOnError(const QString& what) { QTextStream(stderr) << "helmsway-bench: " << what << '\n'; }

QString AsSentence(QString words) {
  if (words.isEmpty()) return words;
  words[0] = words[0].toUpper();
  return words.endsWith(u'.') ? words : words + u'.';
}

QStringList& KeptWords() {
  static QStringList words;
  return words;
}

QString WhyNoDisplay() {
  const QString platform = qEnvironmentVariable("QT_QPA_PLATFORM");
  if (!platform.isEmpty()) {
    return QStringLiteral("no window can be opened on the platform \"%1\", which QT_QPA_PLATFORM asks for")
        .arg(platform);
  }
  QStringList displays;
  for (const char* const name : {"DISPLAY", "WAYLAND_DISPLAY"}) {
    const QString value = qEnvironmentVariable(name);
    if (!value.isEmpty()) displays += QStringLiteral("%1=%2").arg(QLatin1String(name), value);
  }
  if (displays.isEmpty()) {
    return QStringLiteral("there is no display to open a window on: neither DISPLAY nor WAYLAND_DISPLAY is set");
  }
  return QStringLiteral("the display can't be reached: ") + displays.join(QStringLiteral(", "));
}

void Hear(QtMsgType type, const QMessageLogContext& /*context*/, const QString& words) {
  if (type != QtFatalMsg) {
    KeptWords() += words;
    return;
  }
  TellOnError(WhyNoDisplay() + QStringLiteral(" (--help and --version work without one)"));
  // The toolkit is half made; nothing of it may be taken down.
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

void Tell(QWidget* parent, const QString& what) {
  TellOnError(what);
  QMessageBox::critical(parent, QStringLiteral("Helmsway Bench"), AsSentence(what));
}

void Warn(QWidget* parent, const std::vector<std::string>& words) {
  if (words.empty()) return;
  QStringList sentences;
  for (const std::string& each : words) {
    TellOnError(QString::fromStdString(each));
    sentences += AsSentence(QString::fromStdString(each));
  }
  auto* const box = new QMessageBox(QMessageBox::Warning, QStringLiteral("Helmsway Bench"),
                                    sentences.join(QStringLiteral("\n\n")), QMessageBox::Ok, parent);
  box->setTextFormat(Qt::PlainText);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

DisplayDemanded::DisplayDemanded() : usual_(qInstallMessageHandler(Hear)) {}

DisplayDemanded::~DisplayDemanded() {
  qInstallMessageHandler(usual_);
  for (const QString& words : std::exchange(KeptWords(), {})) qWarning("%s", qPrintable(words));
}

}  // namespace Helmsway::StartProblems
