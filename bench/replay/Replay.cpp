#include "bench/replay/Replay.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "bench/host/AddInLibrary.h"
#include "bench/host/AtomicFile.h"
#include "bench/replay/Account.h"
#include "bench/replay/Interruption.h"
#include "bench/replay/Player.h"
#include "bench/replay/Script.h"
#include "bench/replay/Trace.h"

namespace Helmsway {
namespace {

namespace fs = std::filesystem;

constexpr const char* StandardInput = "-";

std::string ReadScript(const std::string& script, std::istream& in) {
  std::ifstream file;
  if (script != StandardInput) file.open(script, std::ios::binary);
  std::istream& source = script == StandardInput ? in : file;
  std::ostringstream text;
  const bool readable = source.good() && (script == StandardInput || !fs::is_directory(script));
  // An empty script leaves the target in a failed state, since nothing was put into it; only a bad one is an error.
  if (readable) text << source.rdbuf();
  if (!readable || text.bad() || source.bad()) throw std::runtime_error("the script can't be read: " + script);
  return text.str();
}

/// What the file holds; nothing when it is missing.
std::string BytesOf(const fs::path& file) {
  FileContents contents;
  if (ReadWholeFile(file.string(), contents) == FilePresence::Failed) {
    throw std::runtime_error("the configuration file can't be read: " + file.filename().string());
  }
  return contents.bytes;
}

std::optional<EarlyEnd> Play(const Script& script, const ReplayOptions& options, IReport& report) {
  const RunFolder folder(options.addIn, options.configuration, options.workOn);
  const AddInLibrary library(folder.Library(), options.addIn);
  const std::string before = BytesOf(folder.MarivaneIni());
  Player player(library, folder.MarivaneIni().string(), options.instrument, report, nullptr,
                DurabilityOf(options.workOn));
  for (const Action& action : script.actions) {
    if (Interruption::Requested() || !player.Perform(action)) break;
  }
  const std::optional<Score> score = player.CurrentScore();
  const std::vector<MemoryDifference> differences = CompareMemory(player.CalibrationMemory(), folder.MarivaneIni());
  report.Ended({player.CalibrationMemory(), score, differences, before, BytesOf(folder.MarivaneIni())});
  return player.Ended();
}

/// A complaint about a line of the script; about the run as a whole when there is no such line.
void Tell(std::ostream& err, const std::string& script, std::size_t line, const std::string& what) {
  if (line == 0) {
    err << "helmsway-replay: " << what << '\n';
  } else {
    err << script << ':' << line << ": " << what << '\n';
  }
}

ExitStatus ReplayTo(std::ostream& target, const std::string& text, const ReplayOptions& options, std::ostream& err) {
  Script script = ParseScript(text);
  if (options.instrument == InstrumentKind::Accepting) ForbidSimulatedOnly(script);
  for (const ScriptError& error : script.errors) Tell(err, options.script, error.line, error.what);
  if (!script.errors.empty()) return ExitStatus::ScriptError;

  std::optional<EarlyEnd> end;
  if (options.format == OutputFormat::Text) {
    Account account(target);
    end = Play(script, options, account);
  } else {
    Trace trace(target);
    end = Play(script, options, trace);
  }
  target.flush();
  if (!target) throw std::runtime_error("the trace can't be written");
  if (!end) return Interruption::Requested() ? ExitStatus::Failed : ExitStatus::Performed;
  Tell(err, options.script, end->line, end->what);
  return end->status;
}

}  // namespace

ExitStatus Replay(const ReplayOptions& options, std::istream& in, std::ostream& out, std::ostream& err) {
  try {
    const std::string text = ReadScript(options.script, in);
    if (!fs::is_directory(options.configuration)) {
      throw std::runtime_error("not a folder: " + options.configuration.string());
    }
    if (!options.trace) return ReplayTo(out, text, options, err);
    std::ofstream file(*options.trace, std::ios::binary);
    if (!file) throw std::runtime_error("the trace can't be written to " + options.trace->string());
    return ReplayTo(file, text, options, err);
  } catch (const std::exception& error) {
    err << "helmsway-replay: " << error.what() << '\n';
    return ExitStatus::Failed;
  }
}

}  // namespace Helmsway
