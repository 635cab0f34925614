#pragma once

#include <string>
#include <string_view>

#include "addin/contract/Component.h"

namespace Helmsway {

/// Where the command lines of a device link go.
class ICommandSink {
 public:
  /// Carries out one line and returns when the instrument has finished; window events may run meanwhile.
  /// Gives `Ok` with `accepted` True, and the instrument's `reply`, for success; `Ok` with `accepted` False for a
  /// refusal; anything else when the line couldn't be sent at all. Both out values are empty when the call begins.
  virtual HelmswayCmds::Result Send(std::string_view line, std::string& reply, bool& accepted) noexcept = 0;

 protected:
  ~ICommandSink() = default;
};

}  // namespace Helmsway
