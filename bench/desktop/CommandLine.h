#pragma once

#include <QStringList>
#include <filesystem>

#include "bench/desktop/BenchSession.h"

namespace Helmsway {

/// What the bench's command line asks for.
struct BenchOptions {
  std::filesystem::path addIn;         ///< empty: the one that is registered
  std::filesystem::path installation;  ///< empty: the bench's own
  TrainingSeed seed;
  int factor = 1;
  int textSize = 100;  ///< percent
  bool dark = false;
  bool quitWhenShown = false;  ///< for those who measure how long the start takes
};

/// Whether the command line asks for help or the version, which need no display.
bool AsksForText(int argc, char** argv);

/// Puts the process under the locale that is asked for. Ends the program, help or a complaint having been told, when
/// the command line asks for that or is bad.
BenchOptions ParseBenchCommandLine(const QStringList& arguments);

}  // namespace Helmsway
