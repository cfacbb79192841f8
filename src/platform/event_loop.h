#pragma once

#include <functional>
#include <memory>
#include <string>

namespace pallomir {

/// A timer that ticks again and again while it is enabled. Enabling one that runs does not restart its
/// period.
class Timer {
 public:
  virtual ~Timer() = default;
  virtual void SetEnabled(bool enabled) = 0;
  virtual bool IsEnabled() const = 0;
};

/// The event loop as the core needs it.
class EventLoop {
 public:
  virtual ~EventLoop() = default;
  /// Created disabled. `name` is for the trace and for tests. The tick never comes after the timer's end.
  virtual std::unique_ptr<Timer> CreateTimer(const std::string& name, int intervalMilliseconds,
                                             std::function<void()> tick) = 0;
  /// Runs `work` from the event loop, in the order of the calls.
  virtual void Post(std::function<void()> work) = 0;
  /// Runs `work` on a thread of its own, and when it is through `then` from the event loop. The end of the
  /// loop waits for `work`, not for `then`.
  virtual void RunBeside(std::function<void()> work, std::function<void()> then) = 0;
};

}  // namespace pallomir
