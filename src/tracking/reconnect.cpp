#include "tracking/reconnect.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace pallomir {
namespace {

constexpr int kTickMilliseconds = 100;
constexpr int kDelaySeconds[] = {1, 2, 5, 10, 30};
constexpr unsigned kJitterPercent = 20;

}  // namespace

Reconnect::Reconnect(EventLoop& loop, std::uint64_t seed, std::function<void()> again)
    : random_(static_cast<std::minstd_rand::result_type>(seed % std::minstd_rand::modulus)),
      again_(std::move(again)),
      timer_(loop.CreateTimer("tmrReconnect", kTickMilliseconds, [this] { OnTick(); })) {}

void Reconnect::Wait() {
  if (IsWaiting()) return;
  left_ = NextDelay();
  timer_->SetEnabled(true);
}

void Reconnect::Stop() { timer_->SetEnabled(false); }

int Reconnect::SecondsLeft() const { return IsWaiting() ? (left_ + 999) / 1000 : 0; }

int Reconnect::NextDelay() {
  const int seconds = kDelaySeconds[std::min(attempts_, std::size(kDelaySeconds) - 1)];
  ++attempts_;
  const auto percent = 100 - kJitterPercent + random_() % (2 * kJitterPercent + 1);
  return seconds * 10 * static_cast<int>(percent);
}

void Reconnect::OnTick() {
  left_ -= kTickMilliseconds;
  if (left_ > 0) return;
  Stop();
  again_();
}

}  // namespace pallomir
