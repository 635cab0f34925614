#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

#include "addin/contract/Component.h"

/// The part of an in-process server that doesn't depend on its classes: hands out their factories, counts the living
/// objects, and registers the library with the user's hosts.
namespace OrvelCalibrateS::InProcessServer {

/// One row of the table of classes.
struct ServedClass {
  HelmswayCmds::Id classId;
  const char* programId;  ///< the class's name for people and for registration, such as "Library.Class"
  /// Creates an object and hands out the requested interface.
  HelmswayCmds::Result (*create)(const HelmswayCmds::Id& interfaceId, void** object);
};

/// Keeps the library in memory. Every object that the host can hold has one as its first member. Every operation that
/// calls the host has one as its first local variable, because the host may ask from that call whether the library can
/// be unloaded.
class InUse {
 public:
  InUse() noexcept;
  InUse(const InUse&) = delete;
  InUse& operator=(const InUse&) = delete;
  ~InUse();
};

HelmswayCmds::Result GetClassObject(std::span<const ServedClass> classes, const HelmswayCmds::Id* classId,
                                    const HelmswayCmds::Id* interfaceId, void** object) noexcept;

/// `Ok` when no object lives and no operation is on the stack, else `Failed`.
HelmswayCmds::Result CanUnloadNow() noexcept;

/// Writes, or removes, one file for each class: "<program id>.addin" with the class and the library's path. A failed
/// `Register` leaves a file as it was. `Register` also fails when the library's file doesn't exist (any more).
HelmswayCmds::Result Register(std::span<const ServedClass> classes, const std::filesystem::path& library) noexcept;
HelmswayCmds::Result Unregister(std::span<const ServedClass> classes) noexcept;

}  // namespace OrvelCalibrateS::InProcessServer
