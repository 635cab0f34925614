#pragma once

#include <chrono>
#include <functional>

namespace Helmsway {

/// Time as the instrument keeps it.
using Seconds = std::chrono::duration<double>;

/// How the instrument's time passes. It stands still but for the waits.
class IClock {
 public:
  virtual ~IClock() = default;

  /// Returns when that much of the instrument's time is over.
  virtual void Wait(Seconds time) = 0;
  /// The sum of all waits.
  virtual Seconds Now() const = 0;
};

/// Nobody waits: the same run takes the same time, and none of ours.
class VirtualClock final : public IClock {
 public:
  void Wait(Seconds time) override { now_ += time; }
  Seconds Now() const override { return now_; }

 private:
  Seconds now_{0};
};

/// Real time, or faster.
class PacedClock final : public IClock {
 public:
  static constexpr double Slowest = 1;
  static constexpr double Fastest = 100;

  /// `sleep` waits in real time; a program with a window lets its events run meanwhile. The thread sleeps by default.
  explicit PacedClock(double factor, std::function<void(Seconds)> sleep = SleepThread);

  /// How many times faster than real; what lies outside 1 to 100 becomes the end of the range on its side.
  void SetFactor(double factor);
  double Factor() const { return factor_; }

  void Wait(Seconds time) override;
  Seconds Now() const override { return now_; }

 private:
  static void SleepThread(Seconds time);

  double factor_ = Slowest;
  std::function<void(Seconds)> sleep_;
  Seconds now_{0};
};

}  // namespace Helmsway
