#pragma once

#include <cstdint>
#include <functional>

namespace pallomir {

/// How a second start asks the first instance to bring its window forward.
class InstanceSignal {
 public:
  virtual ~InstanceSignal() = default;
  /// Set by the first instance; comes from the event loop.
  std::function<void()> raiseWanted;
  /// First instance: begins to listen. A failure costs the raising only and is traced.
  virtual void Listen() = 0;
  /// First instance: listens no longer. Before the mutex goes, so that the next first instance finds the
  /// place free.
  virtual void Stop() = 0;
  /// Second instance: asks the first one, whose window handle this is; returns when the request is out.
  virtual void AskToRaise(std::int64_t windowHandle) = 0;
};

}  // namespace pallomir
