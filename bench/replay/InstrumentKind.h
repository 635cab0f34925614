#pragma once

namespace Helmsway {

enum class InstrumentKind {
  Simulated,  ///< the simulated Marivane, which refuses what it can't do
  Accepting,  ///< accepts every line at once, with an empty reply
};

}  // namespace Helmsway
