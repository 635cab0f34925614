#pragma once

#include <string>
#include <string_view>

#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/contract/HelmswayCmds.h"
#include "bench/host/HostListener.h"

namespace Helmsway {

class StatusPanel final : public OrvelCalibrateS::Implements<HelmswayCmds::IStatusPanel> {
 public:
  explicit StatusPanel(IHostListener& listener) : listener_(listener) {}

  /// What the panel shows now.
  const std::string& Text() const { return text_; }

  HelmswayCmds::Result PutText(HelmswayCmds::Text text) noexcept override;

 private:
  IHostListener& listener_;
  std::string text_;
};

/// The host window's status bar: one panel, under the key "STATUS".
class StatusBar final : public OrvelCalibrateS::Implements<HelmswayCmds::IStatusBar> {
 public:
  static constexpr std::string_view PanelKey = "STATUS";

  explicit StatusBar(IHostListener& listener);

  const StatusPanel& Panel() const { return *panel_; }

  HelmswayCmds::Result GetPanel(HelmswayCmds::Text key, HelmswayCmds::IStatusPanel** panel) noexcept override;

 private:
  OrvelCalibrateS::Ref<StatusPanel> panel_;
};

}  // namespace Helmsway
