#include "tracking/retry_prompt.h"

#include <utility>

namespace pallomir {

RetryPrompt::RetryPrompt(FeedView& view, EventLoop& loop, std::function<void()> countedDown)
    : view_(view), countedDown_(std::move(countedDown)) {
  tmrPB_ = loop.CreateTimer("tmrPB", RetryCountdown::kTickMilliseconds, [this] { OnTick(); });
}

void RetryPrompt::Show(const std::string& code, const std::string& message) {
  ++errorCount_;
  countdown_.Start();
  view_.ShowRetry(RetryMessage(code, errorCount_, message));
  ShowProgress();
  tmrPB_->SetEnabled(true);
}

void RetryPrompt::Hide() {
  tmrPB_->SetEnabled(false);
  view_.HideRetry();
}

void RetryPrompt::ShowProgress() { view_.SetRetryProgress(countdown_.Bar(), countdown_.Label()); }

void RetryPrompt::OnTick() {
  const bool wasLast = countdown_.Tick();
  ShowProgress();
  if (wasLast) countedDown_();
}

}  // namespace pallomir
