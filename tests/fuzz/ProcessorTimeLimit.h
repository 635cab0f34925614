#pragma once

#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string_view>

namespace Helmsway::Fuzzing {

/// While it lives, at most `Seconds` of this process's processor time may pass; then the process aborts, which the
/// fuzzer takes for a fault of the input. The fuzzer's own limit is one of the clock on the wall, by which any input
/// may take too long on a busy machine.
class ProcessorTimeLimit {
 public:
  static constexpr int Seconds = 5;

  ProcessorTimeLimit() {
    static const auto previous = std::signal(SIGPROF, End);
    static_cast<void>(previous);
    Set(Seconds);
  }
  ProcessorTimeLimit(const ProcessorTimeLimit&) = delete;
  ProcessorTimeLimit& operator=(const ProcessorTimeLimit&) = delete;
  ~ProcessorTimeLimit() { Set(0); }

 private:
  static void Set(int seconds) {
    itimerval timer{};
    timer.it_value.tv_sec = seconds;
    setitimer(ITIMER_PROF, &timer, nullptr);
  }

  static void End(int /*signal*/) {
    constexpr std::string_view message = "the input has taken more than 5 s of processor time\n";
    static_cast<void>(!write(STDERR_FILENO, message.data(), message.size()));
    std::abort();
  }
};

}  // namespace Helmsway::Fuzzing
