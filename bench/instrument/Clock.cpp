#include "bench/instrument/Clock.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace Helmsway {

PacedClock::PacedClock(double factor, std::function<void(Seconds)> sleep) : sleep_(std::move(sleep)) {
  SetFactor(factor);
}

void PacedClock::SetFactor(double factor) { factor_ = std::clamp(factor, Slowest, Fastest); }

void PacedClock::Wait(Seconds time) {
  sleep_(time / factor_);
  now_ += time;
}

void PacedClock::SleepThread(Seconds time) { std::this_thread::sleep_for(time); }

}  // namespace Helmsway
