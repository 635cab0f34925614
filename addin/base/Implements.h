#pragma once

#include <cstdint>

#include "addin/contract/Component.h"

namespace OrvelCalibrateS {

/// Base of a heap object that offers one interface. It counts its references and deletes itself when the last one is
/// released. A new object has one reference, which belongs to its creator. Single-threaded, like the whole library.
template <class Interface>
class Implements : public Interface {
 public:
  Implements(const Implements&) = delete;
  Implements& operator=(const Implements&) = delete;

  /// Whether `QueryInterface` of such an object hands out that interface.
  static bool Offers(const HelmswayCmds::Id& interfaceId) noexcept {
    return interfaceId == Interface::InterfaceId || interfaceId == HelmswayCmds::IObject::InterfaceId;
  }

  HelmswayCmds::Result QueryInterface(const HelmswayCmds::Id& interfaceId, void** object) noexcept override {
    if (object == nullptr) return HelmswayCmds::Result::InvalidPointer;
    if (!Offers(interfaceId)) return HelmswayCmds::Result::NoInterface;
    if (interfaceId == Interface::InterfaceId) {
      *object = static_cast<Interface*>(this);
    } else {
      *object = static_cast<HelmswayCmds::IObject*>(this);
    }
    AddRef();
    return HelmswayCmds::Result::Ok;
  }

  std::uint32_t AddRef() noexcept final { return ++references_; }

  std::uint32_t Release() noexcept final {
    const std::uint32_t left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  Implements() = default;
  virtual ~Implements() = default;

 private:
  std::uint32_t references_ = 1;
};

}  // namespace OrvelCalibrateS
