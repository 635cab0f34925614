#pragma once

namespace Helmsway {

/// What becomes of a write when the machine loses its power.
enum class Durability {
  Flushed,   ///< once made, it lasts
  Volatile,  ///< it may be lost: for files that are gone with the run anyway. Readers see no difference
};

}  // namespace Helmsway
