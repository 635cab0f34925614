#pragma once

#include <string>

#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/contract/HelmswayCmds.h"
#include "bench/host/HostListener.h"
#include "bench/host/StatusBar.h"

namespace Helmsway {

/// The host window as the add-in sees it; what it shows is drawn by whoever listens.
class HostWindow final : public OrvelCalibrateS::Implements<HelmswayCmds::IHostWindow> {
 public:
  explicit HostWindow(IHostListener& listener);

  /// What the status panel shows now.
  const std::string& StatusText() const { return statusBar_->Panel().Text(); }

  HelmswayCmds::Result GetStatusBar(HelmswayCmds::IStatusBar** statusBar) noexcept override;
  HelmswayCmds::Result PutChanged(HelmswayCmds::Boolean value) noexcept override;
  HelmswayCmds::Result SetFocus() noexcept override;

 private:
  IHostListener& listener_;
  OrvelCalibrateS::Ref<StatusBar> statusBar_;
};

}  // namespace Helmsway
