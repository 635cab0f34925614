#pragma once

#include <span>

#include "addin/shell/InProcessServer.h"

namespace OrvelCalibrateS {

/// The classes that this library serves.
std::span<const InProcessServer::ServedClass> ServedClasses();

}  // namespace OrvelCalibrateS
