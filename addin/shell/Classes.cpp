#include "addin/shell/Classes.h"

#include "addin/shell/Connect.h"
#include "addin/shell/Identities.h"

namespace OrvelCalibrateS {

std::span<const InProcessServer::ServedClass> ServedClasses() {
  static constexpr InProcessServer::ServedClass classes[]{
      {ConnectClassId, ConnectProgramId, &Connect::Create},
  };
  return classes;
}

}  // namespace OrvelCalibrateS
