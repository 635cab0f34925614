#pragma once

#include <utility>

#include "addin/contract/Component.h"

namespace OrvelCalibrateS {

/// Runs the body of a contract operation. No exception crosses the boundary: for any exception that leaves the body,
/// such as a failed step of a pass-up procedure or a lack of memory, the caller gets `Failed`.
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
