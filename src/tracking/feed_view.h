#pragma once

#include <string>

#include "tracking/connection_lamp.h"

namespace pallomir {

/// What the data feed shows. The main window implements it. Nothing here waits for the user.
class FeedView {
 public:
  virtual ~FeedView() = default;

  virtual void SetCaption(const std::string& text) = 0;  ///< `lblCaption`
  virtual void ShowLamp(const LampMessage& lamp) = 0;

  /// The retry dialog; its buttons call RetryNow, StopRetrying and EndSession of the feed.
  virtual void ShowRetry(const std::string& message) = 0;
  virtual void SetRetryProgress(int bar, const std::string& label) = 0;
  virtual void HideRetry() = 0;
};

}  // namespace pallomir
