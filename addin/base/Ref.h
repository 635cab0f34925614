#pragma once

#include <utility>

#include "addin/contract/Component.h"

namespace OrvelCalibrateS {

/// Counted reference to an object through one of its interfaces; may be empty.
template <class Interface>
class Ref {
 public:
  Ref() = default;
  /// Shares the object: adds a reference.
  explicit Ref(Interface* object) noexcept : object_(object) {
    if (object_ != nullptr) object_->AddRef();
  }
  Ref(const Ref& other) noexcept : Ref(other.object_) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Ref& operator=(const Ref& other) noexcept {
    Ref copy(other);
    std::swap(object_, copy.object_);
    return *this;
  }
  Ref& operator=(Ref&& other) noexcept {
    std::swap(object_, other.object_);  // `other` releases the old reference
    return *this;
  }
  ~Ref() {
    if (object_ != nullptr) object_->Release();
  }

  Interface* Get() const noexcept { return object_; }
  Interface* operator->() const noexcept { return object_; }
  Interface& operator*() const noexcept { return *object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }

  /// For an out argument: releases the current reference and takes over the one that the callee hands out.
  Interface** Out() noexcept {
    *this = Ref();
    return &object_;
  }

  /// Gives up the reference; the receiver must release it.
  [[nodiscard]] Interface* Detach() noexcept { return std::exchange(object_, nullptr); }

 private:
  Interface* object_ = nullptr;
};

/// Another interface of the object; empty when the object is empty or doesn't offer it.
template <class Interface>
Ref<Interface> Query(HelmswayCmds::IObject* object) noexcept {
  Ref<Interface> result;
  if (object != nullptr) {
    void* found = nullptr;
    if (object->QueryInterface(Interface::InterfaceId, &found) == HelmswayCmds::Result::Ok) {
      *result.Out() = static_cast<Interface*>(found);
    }
  }
  return result;
}

}  // namespace OrvelCalibrateS
