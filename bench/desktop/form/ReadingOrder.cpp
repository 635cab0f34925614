#include "bench/desktop/form/ReadingOrder.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace Helmsway {
namespace {

using Controls = std::vector<const FormControl*>;

/// Row by row: all whose middle lies above the bottom edge of the row's topmost control stand beside that one.
void SortRows(Controls& controls) {
  std::sort(controls.begin(), controls.end(), [](const auto* a, const auto* b) {
    return std::tie(a->bounds.top, a->bounds.height, a->id) < std::tie(b->bounds.top, b->bounds.height, b->id);
  });
  for (auto row = controls.begin(); row != controls.end();) {
    const std::int32_t bottom = (*row)->bounds.top + (*row)->bounds.height;
    const auto end = std::stable_partition(std::next(row), controls.end(), [&](const auto* control) {
      return control->bounds.top + control->bounds.height / 2 < bottom;
    });
    std::sort(row, end, [](const auto* a, const auto* b) {
      return std::tie(a->bounds.left, a->bounds.top, a->id) < std::tie(b->bounds.left, b->bounds.top, b->id);
    });
    row = end;
  }
}

void Append(Controls& order, const std::vector<FormControl>& controls, forms::ControlId container) {
  Controls contents;
  for (const FormControl& control : controls) {
    if (control.container == container) contents.push_back(&control);
  }
  SortRows(contents);
  for (const FormControl* control : contents) {
    order.push_back(control);
    Append(order, controls, control->id);
  }
}

}  // namespace

std::vector<const FormControl*> ReadingOrder(const std::vector<FormControl>& controls) {
  Controls order;
  Append(order, controls, forms::NoControl);
  return order;
}

}  // namespace Helmsway
