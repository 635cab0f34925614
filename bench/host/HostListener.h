#pragma once

#include <string_view>

namespace Helmsway {

/// Hears what the add-in does to its host, each time when it has taken place, and what the add-in passes over in
/// silence because it failed. Texts are valid for the length of the call. A listener must outlive the host objects that
/// tell it.
class IHostListener {
 public:
  virtual void StatusTextWritten(std::string_view text) noexcept = 0;
  virtual void StopRequestedWritten(bool value) noexcept = 0;
  virtual void AddInActiveWritten(bool value) noexcept = 0;
  /// `Changed` of the host window.
  virtual void ChangedWritten(bool value) noexcept = 0;
  virtual void FocusSet() noexcept = 0;
  virtual void IniWritten(std::string_view section, std::string_view key, std::string_view value) noexcept = 0;

  /// `why` is in words for a person; it may be empty.
  virtual void IniWriteFailed(std::string_view section, std::string_view key, std::string_view value,
                              std::string_view why) noexcept = 0;
  virtual void IniReadFailed(std::string_view section, std::string_view key, std::string_view why) noexcept = 0;
  /// A read of the device link has failed.
  virtual void LinkNotReached() noexcept = 0;
  /// The add-in has read `StopRequested` and found it True, so it skips a line.
  virtual void StopFound() noexcept = 0;

 protected:
  ~IHostListener() = default;
};

}  // namespace Helmsway
