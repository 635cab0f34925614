#pragma once

#include <utility>

#include "addin/base/Ref.h"
#include "addin/base/Steps.h"

/// Steps of a procedure that get objects from the host.
namespace OrvelCalibrateS {

/// Returns the object that a host call hands out. Fails when the call fails, and when it reports success without an
/// object. An out value that a failed call has written is neither used nor released: only success hands over a
/// reference.
template <class Interface, class Call>
Ref<Interface> Given(Call&& call) {
  Interface* object = nullptr;
  Require(std::forward<Call>(call)(&object));
  Require(object != nullptr);
  Ref<Interface> given;
  *given.Out() = object;
  return given;
}

/// The same, for a call that names the interface by its id.
template <class Interface, class Call>
Ref<Interface> GivenById(Call&& call) {
  return Given<Interface>([&](Interface** object) {
    void* found = nullptr;
    const HelmswayCmds::Result result = std::forward<Call>(call)(Interface::InterfaceId, &found);
    *object = static_cast<Interface*>(found);
    return result;
  });
}

/// Returns an additional reference to an object that is about to be called, because the host may clear the stored
/// reference during the call. Fails when there is no object.
template <class Interface>
Ref<Interface> Held(const Ref<Interface>& kept) {
  Require(static_cast<bool>(kept));
  return kept;
}

}  // namespace OrvelCalibrateS
