#pragma once

#include <cstddef>
#include <string_view>

/// Names compared in any letter case. Letters are those of ASCII; every other byte stands for itself.
namespace Helmsway {

constexpr char FoldedCase(char letter) noexcept {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

constexpr bool EqualFolded(std::string_view left, std::string_view right) noexcept {
  if (left.size() != right.size()) return false;
  for (std::size_t i = 0; i < left.size(); ++i) {
    if (FoldedCase(left[i]) != FoldedCase(right[i])) return false;
  }
  return true;
}

}  // namespace Helmsway
