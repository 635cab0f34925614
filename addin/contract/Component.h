#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// The component model of the host library: queries for interfaces, reference counts and the creation of objects. On a
/// platform with its own component model, that platform's declarations replace these.
namespace HelmswayCmds {

/// Outcome of every operation that crosses the boundary. No exception ever does. An operation that doesn't return `Ok`
/// has had no effect and has left its out values untouched.
enum class Result : std::int32_t {
  Ok = 0,
  Failed = -2147467259,             ///< 0x80004005: the operation failed
  NoInterface = -2147467262,        ///< 0x80004002: the object doesn't offer that interface
  InvalidPointer = -2147467261,     ///< 0x80004003: an out argument is missing
  ClassNotAvailable = -2147221231,  ///< 0x80040111: the library doesn't serve that class
};

/// A Boolean at the boundary: 16 bits, True is -1. Every value but 0 counts as True.
using Boolean = std::int16_t;
inline constexpr Boolean True = -1;
inline constexpr Boolean False = 0;

/// An in text: UTF-8, not terminated, valid only during the call.
struct Text {
  const char* data = nullptr;
  std::size_t size = 0;
};

/// The target of an out text: the callee stores the text in it. The caller owns the target, the callee the text.
class ITextTarget {
 public:
  virtual Result Assign(Text text) noexcept = 0;

 protected:
  ~ITextTarget() = default;
};

/// The target of an out row of texts: the callee stores the texts in it and so replaces the target's content.
class ITextListTarget {
 public:
  virtual Result Assign(const Text* texts, std::size_t count) noexcept = 0;

 protected:
  ~ITextListTarget() = default;
};

/// The permanent identity of an interface or a class: a changed interface or class gets a new identity.
struct Id {
  std::uint32_t data1 = 0;
  std::uint16_t data2 = 0;
  std::uint16_t data3 = 0;
  std::array<std::uint8_t, 8> data4{};

  friend constexpr bool operator==(const Id&, const Id&) = default;
};

/// Root of all interfaces. An object lives until each reference to it has been released.
class IObject {
 public:
  static constexpr Id InterfaceId{0x00000000, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

  /// Hands out the interface as a counted reference; `*object` has that interface's type.
  virtual Result QueryInterface(const Id& interfaceId, void** object) noexcept = 0;
  /// Both return the number of references that are now held.
  virtual std::uint32_t AddRef() noexcept = 0;
  virtual std::uint32_t Release() noexcept = 0;

 protected:
  ~IObject() = default;
};

/// Creates objects of one class.
class IClassFactory : public IObject {
 public:
  static constexpr Id InterfaceId{0x00000001, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

  virtual Result CreateInstance(const Id& interfaceId, void** object) noexcept = 0;

 protected:
  ~IClassFactory() = default;
};

/// Signature of the function through which a library or a host process hands out its class factories.
using GetClassObjectFunction = Result (*)(const Id* classId, const Id* interfaceId, void** object);

}  // namespace HelmswayCmds
