#pragma once

#include <functional>
#include <memory>

#include "platform/event_loop.h"

namespace pallomir {

/// Draws what came live at once, but not more often than once a second.
class LivePace {
 public:
  /// While `isBusy` the drawing waits: one that is begun again each second would never end.
  LivePace(EventLoop& loop, std::function<bool()> isBusy, std::function<void()> draw);

  void Want();
  void Stop();

 private:
  void OnTick();

  std::function<bool()> isBusy_;
  std::function<void()> draw_;
  bool isWanted_ = false;
  std::unique_ptr<Timer> timer_;  // runs for a second from each drawing on
};

}  // namespace pallomir
