#include "bench/replay/Replay.h"

#include <array>
#include <cerrno>
#include <fstream>
#include <functional>
#include <optional>
#include <stdexcept>

#include "bench/host/AddInLibrary.h"
#include "bench/host/AtomicFile.h"
#include "bench/host/ConfigurationWords.h"
#include "bench/host/PrintableText.h"
#include "bench/replay/Account.h"
#include "bench/replay/Player.h"
#include "bench/replay/Script.h"
#include "bench/replay/Trace.h"
#include "bench/replay/TraceFile.h"

namespace Helmsway {
namespace {

namespace fs = std::filesystem;

constexpr const char* StandardInput = "-";

/// The longest complaint, in bytes: its texts come from files that may hold anything.
constexpr std::size_t LongestComplaint = 400;

std::string ReadScript(const std::string& script, std::istream& in) {
  std::error_code failure;
  if (script != StandardInput && fs::is_directory(script, failure)) {
    throw std::runtime_error("the script can't be read: " + script + " is a folder");
  }
  std::ifstream file;
  errno = 0;
  if (script != StandardInput) file.open(script, std::ios::binary);
  std::istream& source = script == StandardInput ? in : file;
  std::string text;
  std::array<char, std::size_t{1} << 16> part{};
  const bool opened = source.good();
  while (source.good()) {
    source.read(part.data(), part.size());
    text.append(part.data(), static_cast<std::size_t>(source.gcount()));
  }
  if (opened && !source.bad()) return text;
  const std::string why = errno == 0 ? "" : ": " + std::generic_category().message(errno);
  throw std::runtime_error("the script can't be read: " + script + why);
}

void DemandFolder(const fs::path& folder) {
  std::error_code failure;
  if (fs::is_directory(folder, failure)) return;
  if (failure && failure != std::errc::no_such_file_or_directory) {
    throw std::runtime_error("the folder " + folder.string() + " can't be used: " + failure.message());
  }
  const bool exists = fs::exists(folder, failure);
  throw std::runtime_error(exists ? folder.string() + " isn't a folder" : "there is no folder " + folder.string());
}

/// What the file holds; empty when it is missing.
std::optional<std::string> BytesOf(const fs::path& file) {
  FileContents contents;
  switch (ReadWholeFile(file.string(), contents)) {
    case FilePresence::Present:
      return std::move(contents.bytes);
    case FilePresence::Missing:
      return std::nullopt;
    default:
      throw std::runtime_error("the configuration file can't be read: " + file.filename().string());
  }
}

/// Called with what is wrong with the configuration, if anything is.
using Remark = std::function<void(const std::string& text)>;

std::optional<EarlyEnd> Play(const Script& script, const ReplayOptions& options, IReport& report, std::ostream& target,
                             const Remark& remark) {
  const RunFolder folder(options.addIn, options.configuration, options.workOn);
  const AddInLibrary library(folder.Library(), options.addIn);
  const std::optional<std::string> before = BytesOf(folder.MarivaneIni());
  const std::string why = WhyNothingIsFound(folder.MarivaneIni().filename().string(), before);
  if (!why.empty()) remark(why);
  Player player(library, folder.MarivaneIni().string(), options.instrument, report, nullptr,
                DurabilityOf(options.workOn));
  for (const Action& action : script.actions) {
    const bool goesOn = player.Perform(action);
    // A reader that has gone away ends the run; without the flush that would show only when the room for output is
    // full.
    target.flush();
    if (!goesOn || !target) break;
  }
  const std::optional<Score> score = player.CurrentScore();
  const std::vector<MemoryDifference> differences = CompareMemory(player.CalibrationMemory(), folder.MarivaneIni());
  report.Ended({player.CalibrationMemory(), score, differences, before.value_or(""),
                BytesOf(folder.MarivaneIni()).value_or("")});
  return player.Ended();
}

std::string Bounded(const std::string& text) { return Shortened(Printable(text), LongestComplaint); }

/// A complaint about a line of the script; about the run as a whole when there is no such line.
void Tell(std::ostream& err, const std::string& script, std::size_t line, const std::string& what) {
  if (line == 0) {
    err << "helmsway-replay: " << Bounded(what) << '\n';
  } else {
    err << Bounded(script) << ':' << line << ": " << Bounded(what) << '\n';
  }
}

/// The number with a comma between thousands.
std::string Grouped(std::size_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t place = digits.size(); place > 3; place -= 3) digits.insert(place - 3, ",");
  return digits;
}

void TellErrors(std::ostream& err, const Script& script, const std::string& name) {
  for (const ScriptError& error : script.errors) Tell(err, name, error.line, error.what);
  const std::size_t more = script.errorCount - script.errors.size();
  if (more > 0)
    err << Bounded(name) << ": ... and " << Grouped(more) << (more == 1 ? " error" : " errors") << " more\n";
}

std::optional<EarlyEnd> PlayTo(std::ostream& target, const Script& script, const ReplayOptions& options) {
  if (options.format == OutputFormat::JsonLines) {
    Trace trace(target);
    return Play(script, options, trace, target, [](const std::string&) {});
  }
  PrintableStream printable(target);
  Account account(printable);
  return Play(script, options, account, printable, [&](const std::string& text) { printable << text << "\n\n"; });
}

ExitStatus ReplayTo(std::ostream& target, const std::string& text, const ReplayOptions& options, std::ostream& err) {
  Script script = ParseScript(text);
  if (options.instrument == InstrumentKind::Accepting) ForbidSimulatedOnly(script);
  TellErrors(err, script, options.script);
  if (script.errorCount > 0) return ExitStatus::ScriptError;

  const std::optional<EarlyEnd> end = PlayTo(target, script, options);
  target.flush();
  if (!target) throw std::runtime_error("the trace can't be written");
  if (!end) return ExitStatus::Performed;
  Tell(err, options.script, end->line, end->what);
  return end->status;
}

/// All that a run reads, by the names that the options give.
std::vector<fs::path> InputsOf(const ReplayOptions& options) {
  return {options.script == StandardInput ? "/dev/stdin" : options.script, options.configuration / "Marivane.ini",
          options.configuration / "Helmsway.ini", options.addIn};
}

}  // namespace

ExitStatus Replay(const ReplayOptions& options, std::istream& in, std::ostream& out, std::ostream& err) {
  try {
    DemandFolder(options.configuration);
    const std::string text = ReadScript(options.script, in);
    if (!options.trace) return ReplayTo(out, text, options, err);
    TraceFile file(*options.trace, InputsOf(options));
    const ExitStatus status = ReplayTo(file.Out(), text, options, err);
    file.PutInPlace();
    return status;
  } catch (const std::exception& error) {
    Tell(err, "", 0, error.what());
    return ExitStatus::Failed;
  }
}

}  // namespace Helmsway
