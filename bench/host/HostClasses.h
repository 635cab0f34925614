#pragma once

#include "addin/base/Ref.h"
#include "addin/contract/HelmswayCmds.h"

/// What this process serves to the add-ins in it through `HelmswayCmdsGetClassObject`, which it exports. A program that
/// links this must export its symbols.
namespace Helmsway::HostClasses {

/// From now on `service` is the one object of its class that is handed out; an empty reference ends that.
void ServeIniService(OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service);

}  // namespace Helmsway::HostClasses

extern "C" [[gnu::visibility("default")]] HelmswayCmds::Result HelmswayCmdsGetClassObject(
    const HelmswayCmds::Id* classId, const HelmswayCmds::Id* interfaceId, void** object);
