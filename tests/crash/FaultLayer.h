#pragma once

#include <cerrno>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// What stands between a save of the configuration and the system. The linker leads every system call of the program's
/// own code through it; it counts those of an observed action, and lets something happen at one of them.
namespace Helmsway::Faults {

enum class What {
  Nothing,
  DeathBefore,   ///< the process is killed instead of making the call
  DeathAfter,    ///< the process is killed as soon as the call has done its work
  Failure,       ///< the call isn't made and fails; a close takes place and fails
  HalfWrite,     ///< a write takes half of its bytes
  DeathInWrite,  ///< as `DeathAfter`, of a write that has taken half of its bytes
  Meanwhile,     ///< another program comes in ahead of the call
};

struct Fault {
  What what = What::Nothing;
  std::size_t call = 0;               ///< counted from 1
  int error = 0;                      ///< the `errno` of a failure
  std::string missing{};              ///< calls of that name fail throughout, with `missingError`
  std::function<void()> meanwhile{};  ///< its own calls aren't counted
  int missingError = ENOSYS;          ///< of a call that the system doesn't have
};

struct Call {
  std::string name;
  int descriptor = -1;  ///< the call's first one; of the folder, for calls that have a folder and a name

  friend bool operator==(const Call&, const Call&) = default;
};
using Calls = std::vector<Call>;

/// Runs the action, with that fault in it. All the calls that it made, the faulty one among them.
Calls Observe(const Fault& fault, const std::function<void()>& action);

}  // namespace Helmsway::Faults
