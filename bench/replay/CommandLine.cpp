#include "bench/replay/CommandLine.h"

#include <CLI/CLI.hpp>
#include <map>
#include <string>

#include "bench/host/AddInPlace.h"

namespace Helmsway {
namespace {

const std::map<std::string, InstrumentKind> Instruments = {{"simulated", InstrumentKind::Simulated},
                                                           {"accepting", InstrumentKind::Accepting}};
const std::map<std::string, OutputFormat> Formats = {{"jsonl", OutputFormat::JsonLines}, {"text", OutputFormat::Text}};

}  // namespace

std::optional<ReplayOptions> ParseCommandLine(int argc, const char* const* argv,
                                              const std::filesystem::path& programFolder, std::ostream& out,
                                              std::ostream& err, ExitStatus& status) {
  ReplayOptions options;
  std::string configuration = (programFolder / "../share/helmsway/examples/installation").lexically_normal().string();
  std::string addIn = AddInOfPrograms(programFolder).string();
  std::string instrument = "simulated";
  std::string format = "jsonl";
  std::string trace;
  std::string locale;
  bool inPlace = false;

  CLI::App app(
      "Runs a script of host, operator and instrument actions against the add-in and writes everything that crosses "
      "its boundary.",
      "helmsway-replay");
  app.add_option("--config", configuration, "Folder with Marivane.ini and Helmsway.ini, either of which may be missing")
      ->type_name("DIR")
      ->capture_default_str();
  app.add_flag("--in-place", inPlace, "Work on the files of DIR themselves, not on copies that are gone with the run");
  app.add_option("--instrument", instrument,
                 "simulated: a Marivane that may refuse a line; accepting: one that doesn't")
      ->check(CLI::IsMember(Instruments))
      ->capture_default_str();
  const CLI::Option* const traceOption =
      app.add_option("--trace", trace, "Where the trace goes; the standard output if not given")->type_name("FILE");
  app.add_option("--format", format, "jsonl: the trace, for programs; text: an account, for people")
      ->check(CLI::IsMember(Formats))
      ->capture_default_str();
  app.add_option("--addin", addIn, "The add-in library")->type_name("PATH")->capture_default_str();
  const CLI::Option* const localeOption =
      app.add_option("--locale", locale,
                     "Run under this locale, as locale -a lists it; without it, numbers of a "
                     "configuration have the decimal point in every locale")
          ->type_name("NAME");
  app.set_version_flag("--version", "helmsway-replay " HELMSWAY_VERSION);
  app.add_option("SCRIPT", options.script, "The script; - for the standard input")->required();

  status = ExitStatus::Performed;
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (app.exit(error, out, err) != 0) status = ExitStatus::Failed;
    return std::nullopt;
  }
  options.configuration = configuration;
  options.addIn = addIn;
  options.workOn = inPlace ? WorkOn::Files : WorkOn::Copies;
  options.instrument = Instruments.at(instrument);
  options.format = Formats.at(format);
  if (localeOption->count() > 0) options.locale = locale;
  if (traceOption->count() > 0) options.trace = trace;
  return options;
}

}  // namespace Helmsway
