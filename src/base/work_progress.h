#pragma once

#include <atomic>

namespace pallomir {

/// Of work on another thread: how far it is, which it says, and whether its result is still wanted, which it
/// looks at now and then. Shared by both threads.
struct WorkProgress {
  static constexpr int kUnknown = -1;
  std::atomic<int> percent{kUnknown};
  std::atomic<bool> isCancelled{false};
};

}  // namespace pallomir
