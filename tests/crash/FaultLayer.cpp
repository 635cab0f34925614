#include "tests/crash/FaultLayer.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <type_traits>
#include <utility>

namespace Helmsway::Faults {
namespace {

struct Observation {
  const Fault* fault;
  Calls calls;
};

/// Null while calls pass unseen. Another thread's calls always do: it stands for another program.
thread_local Observation* current = nullptr;

void Die() { kill(getpid(), SIGKILL); }

What Enter(const char* name, int descriptor) {
  Observation& observation = *current;
  observation.calls.push_back({name, descriptor});
  const Fault& fault = *observation.fault;
  if (observation.calls.size() != fault.call) return What::Nothing;
  if (fault.what == What::DeathBefore) Die();
  if (fault.what == What::Meanwhile) {
    current = nullptr;
    fault.meanwhile();
    current = &observation;
  }
  return fault.what;
}

template <class Result>
Result FailureOf() {
  if constexpr (std::is_pointer_v<Result>) {
    return nullptr;
  } else {
    return -1;
  }
}

enum class WhenFailing { IsNotMade, IsMade };

/// `real` makes the call, and is told what happens at it.
template <class Real>
auto Pass(const char* name, int descriptor, Real real, WhenFailing whenFailing = WhenFailing::IsNotMade) {
  if (current == nullptr) return real(What::Nothing);
  const What what = Enter(name, descriptor);
  using Result = decltype(real(what));
  if (current->fault->missing == name) {
    if (what == What::DeathAfter || what == What::DeathInWrite) Die();
    errno = current->fault->missingError;
    return FailureOf<Result>();
  }
  if (what == What::Failure) {
    if (whenFailing == WhenFailing::IsMade) real(what);
    errno = current->fault->error;
    return FailureOf<Result>();
  }
  const Result result = real(what);
  if (what == What::DeathAfter || what == What::DeathInWrite) Die();
  return result;
}

std::size_t PartOf(What what, std::size_t size) {
  return what == What::HalfWrite || what == What::DeathInWrite ? (size + 1) / 2 : size;
}

}  // namespace

Calls Observe(const Fault& fault, const std::function<void()>& action) {
  Observation observation{&fault, {}};
  current = &observation;
  action();
  current = nullptr;
  return std::move(observation.calls);
}

}  // namespace Helmsway::Faults

// The linker's --wrap leads a call of `write` to `__wrap_write`, and `__real_write` to the system's.
using Helmsway::Faults::PartOf;
using Helmsway::Faults::Pass;
using Helmsway::Faults::What;
using Helmsway::Faults::WhenFailing;

#define HELMSWAY_PASS(Result, name, descriptor, parameters, arguments)             \
  Result __real_##name parameters;                                                 \
  Result __wrap_##name parameters;                                                 \
  Result __wrap_##name parameters {                                                \
    return Pass(#name, descriptor, [&](What) { return __real_##name arguments; }); \
  }

// NOLINTBEGIN(bugprone-reserved-identifier,bugprone-macro-parentheses,clang-analyzer-valist.*): the linker gives the
// names, and the analyzer loses sight of va_start
extern "C" {

HELMSWAY_PASS(ssize_t, read, file, (int file, void* bytes, size_t size), (file, bytes, size))
HELMSWAY_PASS(off_t, lseek, file, (int file, off_t offset, int whence), (file, offset, whence))
HELMSWAY_PASS(int, stat, -1, (const char* path, struct stat* status), (path, status))
HELMSWAY_PASS(int, fstat, file, (int file, struct stat* status), (file, status))
HELMSWAY_PASS(int, fstatat, folder, (int folder, const char* name, struct stat* status, int flags),
              (folder, name, status, flags))
HELMSWAY_PASS(int, faccessat, folder, (int folder, const char* name, int mode, int flags), (folder, name, mode, flags))
HELMSWAY_PASS(ssize_t, readlink, -1, (const char* path, char* target, size_t size), (path, target, size))
HELMSWAY_PASS(int, fchmod, file, (int file, mode_t mode), (file, mode))
HELMSWAY_PASS(int, fchown, file, (int file, uid_t owner, gid_t group), (file, owner, group))
HELMSWAY_PASS(int, flock, file, (int file, int operation), (file, operation))
HELMSWAY_PASS(int, fsync, file, (int file), (file))
HELMSWAY_PASS(int, ftruncate, file, (int file, off_t size), (file, size))
HELMSWAY_PASS(int, futimens, file, (int file, const timespec times[2]), (file, times))
HELMSWAY_PASS(int, renameat, folder, (int folder, const char* name, int newFolder, const char* newName),
              (folder, name, newFolder, newName))
HELMSWAY_PASS(int, renameat2, folder,
              (int folder, const char* name, int newFolder, const char* newName, unsigned int flags),
              (folder, name, newFolder, newName, flags))
HELMSWAY_PASS(int, unlinkat, folder, (int folder, const char* name, int flags), (folder, name, flags))
HELMSWAY_PASS(DIR*, fdopendir, folder, (int folder), (folder))
HELMSWAY_PASS(dirent*, readdir, -1, (DIR * entries), (entries))

int __real_openat(int folder, const char* path, int flags, ...);
int __wrap_openat(int folder, const char* path, int flags, ...);
int __wrap_openat(int folder, const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  return Pass("openat", folder, [&](What) { return __real_openat(folder, path, flags, mode); });
}

// All the commands that the program's code gives take a number, or nothing.
int __real_fcntl(int file, int command, ...);
int __wrap_fcntl(int file, int command, ...);
int __wrap_fcntl(int file, int command, ...) {
  va_list rest;
  va_start(rest, command);
  const int argument = va_arg(rest, int);
  va_end(rest);
  return Pass("fcntl", file, [&](What) { return __real_fcntl(file, command, argument); });
}

ssize_t __real_write(int file, const void* bytes, size_t size);
ssize_t __wrap_write(int file, const void* bytes, size_t size);
ssize_t __wrap_write(int file, const void* bytes, size_t size) {
  return Pass("write", file, [&](What what) { return __real_write(file, bytes, PartOf(what, size)); });
}

ssize_t __real_pwrite(int file, const void* bytes, size_t size, off_t offset);
ssize_t __wrap_pwrite(int file, const void* bytes, size_t size, off_t offset);
ssize_t __wrap_pwrite(int file, const void* bytes, size_t size, off_t offset) {
  return Pass("pwrite", file, [&](What what) { return __real_pwrite(file, bytes, PartOf(what, size), offset); });
}

int __real_close(int file);
int __wrap_close(int file);
int __wrap_close(int file) {
  return Pass(
      "close", file, [&](What) { return __real_close(file); }, WhenFailing::IsMade);
}

int __real_closedir(DIR* entries);
int __wrap_closedir(DIR* entries);
int __wrap_closedir(DIR* entries) {
  return Pass(
      "closedir", -1, [&](What) { return __real_closedir(entries); }, WhenFailing::IsMade);
}
}
// NOLINTEND(bugprone-reserved-identifier,bugprone-macro-parentheses,clang-analyzer-valist.*)
