#include "addin/shell/Classes.h"

#include <array>

#include "addin/shell/Connect.h"
#include "addin/shell/Identities.h"

namespace OrvelCalibrateS {

std::span<const InProcessServer::ServedClass> ServedClasses() {
  static constexpr std::array<InProcessServer::ServedClass, 1> classes{{
      {ConnectClassId, ConnectProgramId, &Connect::Create},
  }};
  return classes;
}

}  // namespace OrvelCalibrateS
