#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/instrument/Machine.h"

namespace Helmsway {

enum class FaultKind {
  Refuse,      ///< the line is refused and does nothing
  Fail,        ///< the sending fails, and the line does nothing
  Late,        ///< the line is carried out; its answer comes this much later
  Silent,      ///< the line does nothing and isn't answered: it fails when Stop is asked for, or after this time
  Link,        ///< the line is carried out, but its answer is lost, and the link for this time
  Garble,      ///< the line is carried out; its reply is unreadable
  Stall,       ///< the move that the line starts, or else the next one, ends half-way
  PowerCycle,  ///< the instrument is switched off and on in the middle of the line
};

/// One thing that goes wrong, once.
struct Fault {
  FaultKind kind = FaultKind::Refuse;
  std::string prefix;      ///< goes for the next line that begins so
  std::size_t number = 0;  ///< unless 0: goes for the line of this number instead, counted from 1
  Seconds time{0};         ///< of `Late`, `Silent` and `Link`
};

/// In words, for people: "the answer comes 5 s late".
std::string Describe(const Fault& fault);

/// "5 s", "2.5 s".
std::string TimeText(Seconds time);

/// What is still to go wrong.
class FaultPlan {
 public:
  void Add(Fault fault) { faults_.push_back(std::move(fault)); }

  /// Takes out the fault for the line that begins now: of those that fit, the one that was added first.
  std::optional<Fault> Take(std::string_view line, std::size_t number);

 private:
  std::vector<Fault> faults_;
};

}  // namespace Helmsway
