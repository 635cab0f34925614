#include <unistd.h>

#include <exception>
#include <filesystem>
#include <iostream>

#include "bench/host/Locale.h"
#include "bench/host/PrintableText.h"
#include "bench/replay/CommandLine.h"
#include "bench/replay/DescriptorStream.h"
#include "bench/replay/Interruption.h"
#include "bench/replay/Replay.h"

namespace {

using namespace Helmsway;

ExitStatus Run(int argc, char** argv, std::ostream& out, std::ostream& err) {
  try {
    Interruption::Watch();
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    ExitStatus status = ExitStatus::Failed;
    const auto options = ParseCommandLine(argc, argv, program.parent_path(), out, err, status);
    if (!options) return status;
    if (options->locale) Locale::Use(*options->locale);
    return Replay(*options, std::cin, out, err);
  } catch (const std::exception& error) {
    err << "helmsway-replay: " << error.what() << '\n';
    return ExitStatus::Failed;
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (!KeepStandardDescriptors()) return static_cast<int>(ExitStatus::Failed);
  Locale::FixNumbers();
  // By the C library's own buffer a read error of the script would look like its end.
  std::ios::sync_with_stdio(false);
  DescriptorStream out(STDOUT_FILENO);
  DescriptorStream rawErr(STDERR_FILENO);
  rawErr << std::unitbuf;  // a complaint is there even if the program crashes after it
  PrintableStream err(rawErr);
  ExitStatus status = Run(argc, argv, out, err);
  if (!out.flush()) {
    if (status == ExitStatus::Performed) err << "helmsway-replay: the standard output can't be written\n";
    status = ExitStatus::Failed;
  }
  if (!err.flush()) status = ExitStatus::Failed;
  Interruption::PassOn();
  return static_cast<int>(status);
}
