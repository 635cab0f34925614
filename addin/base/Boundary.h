#pragma once

#include <utility>

#include "addin/contract/Component.h"

namespace OrvelCalibrateS {

/// Runs what stands behind an operation of the contract. No exception crosses the boundary: whatever leaves the body,
/// a failed step of a pass-up procedure or a lack of memory, is the failure that the caller is told of.
template <class Body>
HelmswayCmds::Result AtBoundary(Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
    return HelmswayCmds::Result::Ok;
  } catch (...) {
    return HelmswayCmds::Result::Failed;
  }
}

}  // namespace OrvelCalibrateS
