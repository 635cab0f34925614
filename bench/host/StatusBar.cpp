#include "bench/host/StatusBar.h"

#include "addin/base/Boundary.h"
#include "addin/base/Texts.h"

namespace Helmsway {

using HelmswayCmds::Result;

Result StatusPanel::PutText(HelmswayCmds::Text text) noexcept {
  const Result stored = OrvelCalibrateS::AtBoundary([&] { text_ = OrvelCalibrateS::AsView(text); });
  if (stored == Result::Ok) listener_.StatusTextWritten(text_);
  return stored;
}

StatusBar::StatusBar(IHostListener& listener) { *panel_.Out() = new StatusPanel(listener); }

Result StatusBar::GetPanel(HelmswayCmds::Text key, HelmswayCmds::IStatusPanel** panel) noexcept {
  if (panel == nullptr) return Result::InvalidPointer;
  if (OrvelCalibrateS::AsView(key) != PanelKey) return Result::Failed;
  *panel = OrvelCalibrateS::Ref<HelmswayCmds::IStatusPanel>(panel_.Get()).Detach();
  return Result::Ok;
}

}  // namespace Helmsway
