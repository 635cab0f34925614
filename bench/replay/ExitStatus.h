#pragma once

namespace Helmsway {

/// What the program tells its caller.
enum class ExitStatus : int {
  Performed = 0,    ///< the script was performed to its end
  Failed = 1,       ///< bad command line, or a file or the library couldn't be used
  ScriptError = 2,  ///< the script says something that can't be performed
};

}  // namespace Helmsway
