#include <exception>
#include <filesystem>
#include <iostream>

#include "bench/replay/CommandLine.h"
#include "bench/replay/Interruption.h"
#include "bench/replay/Replay.h"

int main(int argc, char** argv) {
  using namespace Helmsway;
  ExitStatus status = ExitStatus::Failed;
  try {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    const auto options = ParseCommandLine(argc, argv, program.parent_path(), std::cout, std::cerr, status);
    if (!options) return static_cast<int>(status);
    Interruption::Catch();
    status = Replay(*options, std::cin, std::cout, std::cerr);
  } catch (const std::exception& error) {
    std::cerr << "helmsway-replay: " << error.what() << '\n';
  }
  Interruption::PassOn();
  return static_cast<int>(status);
}
