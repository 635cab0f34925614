#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "addin/base/Boundary.h"
#include "addin/contract/Component.h"

/// Conversion of texts that cross the boundary, in both directions.
namespace OrvelCalibrateS {

inline HelmswayCmds::Text AsText(std::string_view text) noexcept { return {text.data(), text.size()}; }

/// A text without data is empty, whatever its size is.
inline std::string_view AsView(HelmswayCmds::Text text) noexcept {
  return text.data == nullptr ? std::string_view() : std::string_view(text.data, text.size);
}

/// An out text that is stored in a string. Running out of memory fails the call like any other failure.
class StringTarget final : public HelmswayCmds::ITextTarget {
 public:
  explicit StringTarget(std::string& target) noexcept : target_(target) {}
  HelmswayCmds::Result Assign(HelmswayCmds::Text text) noexcept override {
    return AtBoundary([&] { target_ = AsView(text); });
  }

 private:
  std::string& target_;
};

/// An out row of texts that is stored in a vector.
class StringListTarget final : public HelmswayCmds::ITextListTarget {
 public:
  explicit StringListTarget(std::vector<std::string>& target) noexcept : target_(target) {}
  HelmswayCmds::Result Assign(const HelmswayCmds::Text* texts, std::size_t count) noexcept override {
    if (texts == nullptr && count > 0) return HelmswayCmds::Result::InvalidPointer;
    return AtBoundary([&] {
      std::vector<std::string> parts;
      parts.reserve(count);
      for (std::size_t i = 0; i < count; ++i) parts.emplace_back(AsView(texts[i]));
      target_ = std::move(parts);
    });
  }

 private:
  std::vector<std::string>& target_;
};

}  // namespace OrvelCalibrateS
