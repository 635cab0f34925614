#include "addin/base/Texts.h"

#include "addin/base/Boundary.h"

namespace OrvelCalibrateS {

HelmswayCmds::Result StringTarget::Assign(HelmswayCmds::Text text) noexcept {
  return AtBoundary([&] { target_ = AsView(text); });
}

HelmswayCmds::Result StringListTarget::Assign(const HelmswayCmds::Text* texts, std::size_t count) noexcept {
  if (texts == nullptr && count > 0) return HelmswayCmds::Result::InvalidPointer;
  return AtBoundary([&] {
    std::vector<std::string> parts;
    parts.reserve(count);
    for (std::size_t i = 0; i < count; ++i) parts.emplace_back(AsView(texts[i]));
    target_ = std::move(parts);
  });
}

}  // namespace OrvelCalibrateS
