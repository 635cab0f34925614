#pragma once

#include <cstdio>
#include <cstdlib>

namespace Helmsway::Fuzzing {

/// Ends the process, which the fuzzer takes for a finding, unless `holds`.
inline void Demand(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "doesn't hold: %s\n", what);
  std::abort();
}

}  // namespace Helmsway::Fuzzing
