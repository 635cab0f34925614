#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

#include "addin/contract/Component.h"

/// What every in-process server does for the classes that it serves, whatever they are: hands out their factories,
/// counts the living objects, and registers the library with the user's hosts.
namespace OrvelCalibrateS::InProcessServer {

/// One row of the table of classes.
struct ServedClass {
  HelmswayCmds::Id classId;
  const char* programId;  ///< the class's name for people and for registration, such as "Library.Class"
  /// Makes an object and hands out the interface asked for.
  HelmswayCmds::Result (*create)(const HelmswayCmds::Id& interfaceId, void** object);
};

/// Held by what keeps the library in memory: as its first member by every object that the host can hold, and as its
/// first local by every operation that calls the host, which may ask from there.
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
/// `Register` leaves a file as it was. It fails, too, when the library isn't there (any more).
HelmswayCmds::Result Register(std::span<const ServedClass> classes, const std::filesystem::path& library) noexcept;
HelmswayCmds::Result Unregister(std::span<const ServedClass> classes) noexcept;

}  // namespace OrvelCalibrateS::InProcessServer
