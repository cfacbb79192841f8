#include "tracking/live_watch.h"

#include <cstdlib>
#include <utility>

namespace pallomir {

void LiveWatch::Restarted() { connecting_ = streaming_ = silent_ = 0; }

LiveWatch::Advice LiveWatch::Look(const Facts& facts) {
  using State = ServerConnection::State;
  const auto last = std::exchange(lastLook_, facts.nowUtc);
  const bool hasJumped = last && std::abs(facts.nowUtc - *last - kSecond) > kJump;
  if (facts.state != State::kStreaming) streaming_ = silent_ = 0;
  switch (facts.state) {
    case State::kLocating:  // gives up by itself
      return hasJumped ? Advice::kAskAnew : Advice::kNothing;
    case State::kProbing:
    case State::kConnecting:
      if (hasJumped) return Advice::kAskAnew;
      return ++connecting_ >= kPatienceSeconds ? Advice::kGiveUp : Advice::kNothing;
    case State::kStreaming:
      return hasJumped ? Advice::kAskAnew : LookAtStream(facts);
    case State::kClosedByServer:
    case State::kReporting:
      return hasJumped && facts.isWaiting ? Advice::kAskAnew : Advice::kNothing;
    case State::kIdle:
    case State::kClosed:
      break;
  }
  return Advice::kNothing;
}

LiveWatch::Advice LiveWatch::LookAtStream(const Facts& facts) {
  ++streaming_;
  ++silent_;
  // Of a window that is over nothing more is expected.
  if (silent_ >= kSilenceSeconds && facts.wantedUntil > facts.nowUtc) return Advice::kAskAnew;
  // Units that come back together are asked for together.
  if (facts.hasGap && HasSettled()) return Advice::kAskAnew;
  const bool isEnding = facts.nowUtc + kHour > facts.askedUntil;
  return isEnding && facts.wantedUntil > facts.askedUntil ? Advice::kAskAnew : Advice::kNothing;
}

}  // namespace pallomir
