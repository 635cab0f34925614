#include "bench/instrument/Stage.h"

#include <algorithm>

namespace Helmsway {

bool Stage::InSomeSlot(const HeadType& head) const {
  return std::find(slots_.begin(), slots_.end(), &head) != slots_.end();
}

void Stage::TakeAway(const HeadType& head) {
  std::replace(slots_.begin(), slots_.end(), &head, static_cast<const HeadType*>(nullptr));
  if (ejected_ == &head) ejected_ = nullptr;
}

const Rack* Stage::RackOn(const std::string& place) const {
  const auto found = racks_.find(place);
  return found == racks_.end() ? nullptr : &found->second;
}

}  // namespace Helmsway
