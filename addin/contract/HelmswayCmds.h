#pragma once

#include <cstdint>

#include "addin/contract/Component.h"

/// The host's command library: the add-in's only access to the instrument, the configuration files and the host window,
/// and the interfaces through which the host operates the add-in. The order of the operations is the order of their
/// slots.
namespace HelmswayCmds {

/// Reads and writes configuration files. The host serves one object of this class to each add-in.
class IIniService : public IObject {
 public:
  static constexpr Id InterfaceId{0xc39a27cd, 0x9c1a, 0x4eb8, {0x99, 0x5e, 0x26, 0xa0, 0x45, 0xeb, 0x6a, 0x13}};
  static constexpr Id ClassId{0x12090a0e, 0x7d68, 0x4e8e, {0xb8, 0x6c, 0x8c, 0xf5, 0x30, 0xf4, 0x3b, 0x2e}};

  /// Returns the text of the key, or `defaultValue` when the file, the section or the key doesn't exist. Section and
  /// key names match in any letter case.
  virtual Result ReadIni(Text section, Text key, Text filePath, Text defaultValue, ITextTarget& value) noexcept = 0;

  /// Sets the key to `value`; creates file, section and key when absent.
  virtual Result WriteIni(Text section, Text key, Text filePath, Text value) noexcept = 0;

  /// Returns all pieces of `text` between the separators, including an empty one after a final separator; `count`
  /// doesn't include that empty last piece. An empty text has no pieces and the count 0.
  virtual Result SplitText(ITextListTarget& parts, Text separator, Text text, std::int32_t* count) noexcept = 0;

 protected:
  ~IIniService() = default;
};

/// The link to the instrument.
class IDeviceLink : public IObject {
 public:
  static constexpr Id InterfaceId{0x8edd470a, 0xa160, 0x4e4b, {0x82, 0xff, 0xab, 0x92, 0x99, 0x5d, 0x44, 0x7c}};

  /// Sends one command line, without a line end, and returns when the instrument has finished; window events run while
  /// it waits. `ok` is True for success, False for a refusal. `third` has no meaning and is 0.
  virtual Result SendCommand(Text command, ITextTarget& reply, std::int32_t third, Boolean* ok) noexcept = 0;

  /// Holds the value last written, also while a `SendCommand` is under way.
  virtual Result GetStopRequested(Boolean* value) noexcept = 0;
  virtual Result PutStopRequested(Boolean value) noexcept = 0;

  /// True before every command, False when the add-in leaves.
  virtual Result PutAddInActive(Boolean value) noexcept = 0;

 protected:
  ~IDeviceLink() = default;
};

/// The host's connection, given to the add-in as `ObjectParent`.
class IParentConnection : public IObject {
 public:
  static constexpr Id InterfaceId{0x71bcc10f, 0xb991, 0x4cc4, {0xa9, 0x43, 0xdf, 0x9e, 0x9c, 0xc6, 0xb0, 0xdb}};

  /// Returns the only `DeviceLink` of this connection.
  virtual Result GetDeviceLink(IDeviceLink** link) noexcept = 0;

 protected:
  ~IParentConnection() = default;
};

/// A panel of the status bar.
class IStatusPanel : public IObject {
 public:
  static constexpr Id InterfaceId{0x769b1d72, 0x8b97, 0x4d84, {0xa7, 0xa4, 0x87, 0x2a, 0x2d, 0x24, 0xb0, 0x8c}};

  /// The text is shown at once.
  virtual Result PutText(Text text) noexcept = 0;

 protected:
  ~IStatusPanel() = default;
};

/// The host window's status bar.
class IStatusBar : public IObject {
 public:
  static constexpr Id InterfaceId{0x283bd060, 0xda07, 0x450d, {0x9d, 0xef, 0xb7, 0xef, 0x4c, 0x9c, 0xc3, 0x75}};

  /// Returns the panel with that key; fails when there is none.
  virtual Result GetPanel(Text key, IStatusPanel** panel) noexcept = 0;

 protected:
  ~IStatusBar() = default;
};

/// The host window, given to the add-in as `FormParent`.
class IHostWindow : public IObject {
 public:
  static constexpr Id InterfaceId{0x421e2bb0, 0xa97f, 0x421f, {0x94, 0xed, 0xa3, 0xd6, 0x4b, 0xa1, 0xc3, 0x2f}};

  /// Returns the window's `sbstatusbar`.
  virtual Result GetStatusBar(IStatusBar** statusBar) noexcept = 0;
  virtual Result PutChanged(Boolean value) noexcept = 0;
  virtual Result SetFocus() noexcept = 0;

 protected:
  ~IHostWindow() = default;
};

/// The host's interface to an add-in's form.
class IAddInForm : public IObject {
 public:
  static constexpr Id InterfaceId{0x96d6ce53, 0x4eb5, 0x4264, {0x88, 0x50, 0x97, 0x2d, 0xf0, 0x54, 0xb4, 0xd6}};

  virtual Result SaveChanges() noexcept = 0;
  virtual Result LoadDefaults() noexcept = 0;
  /// Hands over the connection (an `IParentConnection`); an empty reference ends the form.
  virtual Result PutObjectParent(IObject* connection) noexcept = 0;
  /// Hands over the window (an `IHostWindow`), or takes it back with an empty reference.
  virtual Result PutFormParent(IObject* window) noexcept = 0;
  /// Returns the object that holds every control of the form; it offers the form's surface to a renderer.
  virtual Result GetFrame(IObject** frame) noexcept = 0;
  virtual Result GetHwnd(std::int32_t* handle) noexcept = 0;
  virtual Result GetHelpContextID(std::int32_t* helpContextId) noexcept = 0;
  virtual Result GetShowStatusBar(Boolean* show) noexcept = 0;
  virtual Result GetShowButtons(Boolean* show) noexcept = 0;

 protected:
  ~IAddInForm() = default;
};

/// The host's interface to an add-in.
class IAddIn : public IObject {
 public:
  static constexpr Id InterfaceId{0x13368a18, 0x6f8c, 0x4c86, {0x87, 0xea, 0xf0, 0x58, 0x74, 0xed, 0xa7, 0x13}};

  virtual Result GetForm(IAddInForm** form) noexcept = 0;
  virtual Result GetCaption(ITextTarget& caption) noexcept = 0;

 protected:
  ~IAddIn() = default;
};

/// Name under which a host process exports its `GetClassObjectFunction`, through which an add-in reaches `IIniService`.
inline constexpr const char* HostClassObjectFunctionName = "HelmswayCmdsGetClassObject";

}  // namespace HelmswayCmds
