#pragma once

#include <functional>
#include <string>

#include "live/live_view.h"

namespace pallomir::fakes {

class FakeLiveView : public LiveView {
 public:
  void ShowLive(const std::string& shown, const std::string& /*tip*/, std::function<void()> then) override {
    word = shown;
    chosen = std::move(then);
  }

  std::string word;
  std::function<void()> chosen;
};

}  // namespace pallomir::fakes
