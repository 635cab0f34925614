#include "bench/desktop/CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QRandomGenerator>
#include <QTextStream>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <span>
#include <string_view>

#include "bench/desktop/Appearance.h"
#include "bench/host/Locale.h"

namespace Helmsway {
namespace {

[[noreturn]] void Complain(const QString& what) {
  QTextStream(stderr) << "helmsway-bench: " << what << '\n';
  std::exit(EXIT_FAILURE);
}

void UseLocale(const QString& name) {
  try {
    Locale::Use(name.toStdString());
  } catch (const std::exception& error) {
    Complain(QString::fromUtf8(error.what()));
  }
}

/// Ends the program, with a failure when the text can't be written.
[[noreturn]] void Print(const QString& text) {
  const QByteArray bytes = text.toLocal8Bit();
  const bool written = std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout) ==
                       static_cast<std::size_t>(bytes.size());
  if (std::fflush(stdout) != 0 || !written) Complain(QStringLiteral("the standard output can't be written"));
  std::exit(EXIT_SUCCESS);
}

int NumberOf(const QCommandLineParser& parser, const QCommandLineOption& option, int least, int most) {
  bool isNumber = false;
  const int number = parser.value(option).toInt(&isNumber);
  if (isNumber && number >= least && number <= most) return number;
  Complain(QStringLiteral("--%1 is a whole number from %2 to %3, not %4")
               .arg(option.names().constLast())
               .arg(least)
               .arg(most)
               .arg(parser.value(option)));
}

}  // namespace

bool AsksForText(int argc, char** argv) {
  constexpr std::array<std::string_view, 5> Words{"--help", "-h", "--help-all", "--version", "-v"};
  const std::span<char*> arguments(argv, static_cast<std::size_t>(argc));
  return std::any_of(arguments.begin(), arguments.end(), [&](const char* argument) {
    return std::find(Words.begin(), Words.end(), std::string_view(argument)) != Words.end();
  });
}

BenchOptions ParseBenchCommandLine(const QStringList& arguments) {
  const QCommandLineOption addIn(QStringLiteral("addin"),
                                 QStringLiteral("The add-in library; the registered one if not given"),
                                 QStringLiteral("PATH"));
  const QCommandLineOption installation(
      QStringLiteral("installation"),
      QStringLiteral("Folder with Marivane.ini and Helmsway.ini, which are worked on; one of the bench's own, made at "
                     "the first start, if not given"),
      QStringLiteral("DIR"));
  const QCommandLineOption clock(QStringLiteral("clock"), QStringLiteral("How many times faster than real, 1 to 100"),
                                 QStringLiteral("FACTOR"), QStringLiteral("1"));
  // Another truth at each start, unless one is asked for: nobody is to learn a position by heart.
  const QCommandLineOption seed(
      QStringLiteral("seed"), QStringLiteral("What the hidden truth of the syringe axis depends on"),
      QStringLiteral("NUMBER"), QString::number(QRandomGenerator::global()->bounded(1, 10000)));
  const QCommandLineOption lostSteps(QStringLiteral("lost-steps"),
                                     QStringLiteral("The syringe axis loses steps now and then"));
  const QCommandLineOption textSize(QStringLiteral("text-size"), QStringLiteral("Size of all text in percent"),
                                    QStringLiteral("PERCENT"), QStringLiteral("100"));
  const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Dark colours"));
  const QCommandLineOption locale(
      QStringLiteral("locale"),
      QStringLiteral("Run under this locale, as locale -a lists it; without it, numbers of a configuration have the "
                     "decimal point in every locale"),
      QStringLiteral("NAME"));

  const QCommandLineOption quitWhenShown(QStringLiteral("quit-when-shown"),
                                         QStringLiteral("End once the window has been drawn: to measure the start"));

  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("The stand-in host with a simulated Marivane: runs the add-in in a window."));
  const QCommandLineOption help = parser.addHelpOption();
  const QCommandLineOption version = parser.addVersionOption();
  parser.addOptions({addIn, installation, clock, seed, lostSteps, textSize, dark, locale, quitWhenShown});
  if (!parser.parse(arguments)) Complain(parser.errorText() + QStringLiteral("; see --help"));
  if (parser.isSet(help) || parser.isSet(QStringLiteral("help-all"))) Print(parser.helpText());
  if (parser.isSet(version)) {
    Print(QStringLiteral("%1 %2\n").arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion()));
  }
  if (!parser.positionalArguments().isEmpty()) {
    Complain(QStringLiteral("unexpected argument %1; see --help").arg(parser.positionalArguments().constFirst()));
  }
  if (parser.isSet(locale)) UseLocale(parser.value(locale));

  BenchOptions options;
  options.addIn = parser.value(addIn).toStdString();
  options.installation = parser.value(installation).toStdString();
  options.factor = NumberOf(parser, clock, 1, 100);
  options.seed.number = static_cast<std::uint32_t>(NumberOf(parser, seed, 0, 2147483646));
  options.seed.lostSteps = parser.isSet(lostSteps) ? LostSteps::Some : LostSteps::None;
  options.textSize = NumberOf(parser, textSize, Appearance::SmallestText, Appearance::LargestText);
  options.dark = parser.isSet(dark);
  options.quitWhenShown = parser.isSet(quitWhenShown);
  return options;
}

}  // namespace Helmsway
