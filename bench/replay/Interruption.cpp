#include "bench/replay/Interruption.h"

#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <mutex>
#include <set>
#include <system_error>
#include <thread>

namespace Helmsway::Interruption {
namespace {

namespace fs = std::filesystem;

std::atomic<bool> requested = false;
thread_local int shieldsOfThread = 0;

struct State {
  std::recursive_timed_mutex shield;
  std::mutex doomedMutex;
  std::set<fs::path> doomed;
};

/// Never destroyed: the watching thread may need it while the main thread is on its way out.
State& Shared() {
  static auto* const state = new State;
  return *state;
}

/// The signals that are to be taken. One that the shell has made a background job ignore is taken all the same: it has
/// been sent to this program.
sigset_t TakenSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGINT, SIGTERM, SIGQUIT}) sigaddset(&signals, signal);
  struct sigaction hangUp {};
  sigaction(SIGHUP, nullptr, &hangUp);
  if (hangUp.sa_handler != SIG_IGN) sigaddset(&signals, SIGHUP);
  return signals;
}

void WaitForShield(const sigset_t& signals) {
  const timespec now{};
  while (!Shared().shield.try_lock_for(std::chrono::milliseconds(10))) {
    if (sigtimedwait(&signals, nullptr, &now) > 0) return;
  }
}

void RemoveDoomed() {
  State& state = Shared();
  const std::lock_guard lock(state.doomedMutex);
  for (const fs::path& path : state.doomed) {
    // The main thread may put a last file into the folder meanwhile, but it doesn't make the folder again.
    constexpr int mostAttempts = 1000;
    std::error_code failure;
    for (int attempt = 0; attempt < mostAttempts && fs::exists(fs::symlink_status(path, failure)); ++attempt) {
      fs::remove_all(path, failure);
    }
  }
}

[[noreturn]] void EndBy(int signal) {
  std::signal(signal, SIG_DFL);
  sigset_t unblocked;
  sigemptyset(&unblocked);
  sigaddset(&unblocked, signal);
  pthread_sigmask(SIG_UNBLOCK, &unblocked, nullptr);
  std::raise(signal);
  constexpr int statusOfSignals = 128;  // as shells count
  _exit(statusOfSignals + signal);
}

[[noreturn]] void WatchSignals(const sigset_t& signals) {
  int signal = 0;
  while (sigwait(&signals, &signal) != 0) {
  }
  requested = true;
  WaitForShield(signals);
  RemoveDoomed();
  EndBy(signal);
}

}  // namespace

void Watch() {
  std::signal(SIGPIPE, SIG_IGN);
  const sigset_t signals = TakenSignals();
  for (const int signal : {SIGINT, SIGTERM, SIGQUIT, SIGHUP}) {
    if (sigismember(&signals, signal) == 1) std::signal(signal, SIG_DFL);
  }
  Shared();
  // Every thread inherits this, so that no other one takes them.
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  std::thread([signals] { WatchSignals(signals); }).detach();
}

bool Requested() noexcept { return requested; }

void PassOn() {
  while (requested) pause();
}

Shield::Shield() {
  // Otherwise a thread that puts up one shield after the other could keep the signal waiting for all of them.
  if (shieldsOfThread == 0) PassOn();
  Shared().shield.lock();
  ++shieldsOfThread;
}

Shield::~Shield() {
  --shieldsOfThread;
  Shared().shield.unlock();
}

void RemoveAtEnd(const fs::path& path) {
  const std::lock_guard lock(Shared().doomedMutex);
  Shared().doomed.insert(fs::absolute(path));
}

void Forget(const fs::path& path) {
  const std::lock_guard lock(Shared().doomedMutex);
  Shared().doomed.erase(fs::absolute(path));
}

}  // namespace Helmsway::Interruption
