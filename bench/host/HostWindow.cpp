#include "bench/host/HostWindow.h"

namespace Helmsway {

using HelmswayCmds::Result;

HostWindow::HostWindow(IHostListener& listener) : listener_(listener) { *statusBar_.Out() = new StatusBar(listener); }

Result HostWindow::GetStatusBar(HelmswayCmds::IStatusBar** statusBar) noexcept {
  if (statusBar == nullptr) return Result::InvalidPointer;
  *statusBar = OrvelCalibrateS::Ref<HelmswayCmds::IStatusBar>(statusBar_.Get()).Detach();
  return Result::Ok;
}

Result HostWindow::PutChanged(HelmswayCmds::Boolean value) noexcept {
  listener_.ChangedWritten(value != HelmswayCmds::False);
  return Result::Ok;
}

Result HostWindow::SetFocus() noexcept {
  listener_.FocusSet();
  return Result::Ok;
}

}  // namespace Helmsway
