#include "bench/host/HostClasses.h"

#include <new>
#include <utility>

#include "addin/base/Implements.h"

namespace Helmsway::HostClasses {
namespace {

using HelmswayCmds::IIniService;
using HelmswayCmds::Result;
using OrvelCalibrateS::Ref;

Ref<IIniService>& ServedIniService() {
  static Ref<IIniService> service;
  return service;
}

/// "Makes" the service that is served: one object for all who ask.
class IniServiceFactory final : public OrvelCalibrateS::Implements<HelmswayCmds::IClassFactory> {
 public:
  Result CreateInstance(const HelmswayCmds::Id& interfaceId, void** object) noexcept override {
    const Ref<IIniService>& service = ServedIniService();
    return service ? service->QueryInterface(interfaceId, object) : Result::ClassNotAvailable;
  }
};

}  // namespace

void ServeIniService(Ref<IIniService> service) { ServedIniService() = std::move(service); }

}  // namespace Helmsway::HostClasses

HelmswayCmds::Result HelmswayCmdsGetClassObject(const HelmswayCmds::Id* classId, const HelmswayCmds::Id* interfaceId,
                                                void** object) {
  using namespace Helmsway::HostClasses;
  if (classId == nullptr || interfaceId == nullptr || object == nullptr) return Result::InvalidPointer;
  if (*classId != IIniService::ClassId || !ServedIniService()) return Result::ClassNotAvailable;
  Ref<HelmswayCmds::IClassFactory> factory;
  *factory.Out() = new (std::nothrow) IniServiceFactory;
  return factory ? factory->QueryInterface(*interfaceId, object) : Result::Failed;
}
