#include "bench/instrument/FaultPlan.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace Helmsway {

std::string Describe(const Fault& fault) {
  switch (fault.kind) {
    case FaultKind::Refuse:
      return "the line is refused";
    case FaultKind::Fail:
      return "the sending fails";
    case FaultKind::Late:
      return "the answer comes " + TimeText(fault.time) + " late";
    case FaultKind::Silent:
      return "no answer comes";
    case FaultKind::Link:
      return "the link is lost for " + TimeText(fault.time);
    case FaultKind::Garble:
      return "the reply is garbled";
    case FaultKind::Stall:
      return "the axis stalls";
    case FaultKind::PowerCycle:
      return "the instrument goes off and on again";
  }
  return "";
}

std::string TimeText(Seconds time) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), time.count()).ptr;
  return std::string(digits.data(), end) + " s";
}

std::optional<Fault> FaultPlan::Take(std::string_view line, std::size_t number) {
  const auto found = std::find_if(faults_.begin(), faults_.end(), [&](const Fault& fault) {
    return fault.number == 0 ? line.starts_with(fault.prefix) : fault.number == number;
  });
  if (found == faults_.end()) return std::nullopt;
  Fault fault = std::move(*found);
  faults_.erase(found);
  return fault;
}

}  // namespace Helmsway
