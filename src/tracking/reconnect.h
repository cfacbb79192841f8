#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <random>

#include "platform/event_loop.h"

namespace pallomir {

/// When a lost connection is tried again by itself: after 1, 2, 5 and 10 seconds, then every 30. Each delay
/// is up to a fifth longer or shorter, so that many clients of a server that was away don't come back in one
/// moment.
class Reconnect {
 public:
  /// `again` is called at the end of each wait. The delays follow from `seed` alone.
  Reconnect(EventLoop& loop, std::uint64_t seed, std::function<void()> again);

  /// Waits for the next delay; goes on with a wait that runs.
  void Wait();
  /// Ends the wait. The next one will be the longer one all the same.
  void Stop();
  /// The connection proved good: the next wait is the first one again.
  void Reset() { attempts_ = 0; }

  bool IsWaiting() const { return timer_->IsEnabled(); }
  /// Whole seconds until `again`, rounded up.
  int SecondsLeft() const;

 private:
  int NextDelay();
  void OnTick();

  std::minstd_rand random_;
  std::function<void()> again_;
  std::size_t attempts_ = 0;
  int left_ = 0;  // milliseconds
  std::unique_ptr<Timer> timer_;
};

}  // namespace pallomir
