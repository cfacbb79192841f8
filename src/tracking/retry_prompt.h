#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/event_loop.h"
#include "tracking/feed_view.h"
#include "tracking/retry_countdown.h"

namespace pallomir {

/// The retry dialog as a state: shown while its countdown runs, and gone with it.
class RetryPrompt {
 public:
  /// `countedDown` is called at the countdown's end, with the dialog still shown.
  RetryPrompt(FeedView& view, EventLoop& loop, std::function<void()> countedDown);

  /// Shows the dialog, or another message in it, and counts from the beginning. The message gets the code and
  /// how many there have been since the start.
  void Show(const std::string& code, const std::string& message);
  void Hide();

 private:
  void ShowProgress();
  void OnTick();

  FeedView& view_;
  std::function<void()> countedDown_;
  std::unique_ptr<Timer> tmrPB_;  // runs while the dialog is shown
  RetryCountdown countdown_;
  int errorCount_ = 0;
};

}  // namespace pallomir
