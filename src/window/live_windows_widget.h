#pragma once

#include <QPointer>

#include "live/live_view.h"

namespace pallomir {

class LiveButton;
class formMain;

/// What is seen of live mode: a button in the caption line.
class LiveWindows : public LiveView {
 public:
  /// Puts the button into the caption line. `window` outlives this object.
  explicit LiveWindows(formMain& window);

  void ShowLive(const std::string& word, const std::string& tip, std::function<void()> chosen) override;

 private:
  QPointer<LiveButton> button_;  // the window's
  std::function<void()> chosen_;
};

}  // namespace pallomir
