#include "live/live_pace.h"

#include <utility>

namespace pallomir {

LivePace::LivePace(EventLoop& loop, std::function<bool()> isBusy, std::function<void()> draw)
    : isBusy_(std::move(isBusy)),
      draw_(std::move(draw)),
      timer_(loop.CreateTimer("tmrLivePace", 1000, [this] { OnTick(); })) {}

void LivePace::Want() {
  isWanted_ = true;
  if (timer_->IsEnabled()) return;
  timer_->SetEnabled(true);
  if (!isBusy_()) OnTick();
}

void LivePace::Stop() {
  isWanted_ = false;
  timer_->SetEnabled(false);
}

void LivePace::OnTick() {
  if (!isWanted_) return timer_->SetEnabled(false);
  if (isBusy_()) return;
  isWanted_ = false;
  draw_();
}

}  // namespace pallomir
