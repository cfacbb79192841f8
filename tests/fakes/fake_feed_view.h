#pragma once

#include <optional>
#include <string>

#include "tracking/feed_view.h"

namespace pallomir::fakes {

/// Keeps what the data feed shows.
class FakeFeedView : public FeedView {
 public:
  void SetCaption(const std::string& text) override { caption = text; }
  void ShowLamp(const LampMessage& shown) override { lamp = shown; }
  void ShowRetry(const std::string& message) override { retry = message; }
  void SetRetryProgress(int bar, const std::string& label) override {
    retryBar = bar;
    retryLabel = label;
  }
  void HideRetry() override { retry.reset(); }

  std::string caption;
  LampMessage lamp;
  std::optional<std::string> retry;
  int retryBar = 0;
  std::string retryLabel;
};

}  // namespace pallomir::fakes
