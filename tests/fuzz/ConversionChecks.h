#pragma once

#include <string>

namespace Helmsway::Fuzzing {

/// Every conversion of the text against what the C library makes of it. A conversion may fail, in one way only.
void CheckConversions(const std::string& text);

/// Sums, products and quotients of the numbers in the two texts, against a wider type.
void CheckArithmetic(const std::string& left, const std::string& right);

}  // namespace Helmsway::Fuzzing
