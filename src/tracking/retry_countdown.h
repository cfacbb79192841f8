#pragma once

#include <string>

namespace pallomir {

/// The countdown of the retry dialog: 100 ticks of 94 ms, then it acts as if "Retry Now" had been pressed.
class RetryCountdown {
 public:
  static constexpr int kTickMilliseconds = 94;
  static constexpr int kLastTick = 100;

  void Start() { bar_ = 0; }

  /// One tick; true when it was the last.
  bool Tick() { return ++bar_ >= kLastTick; }

  /// Value of the progress bar, 0..100.
  int Bar() const { return bar_; }

  /// "Retrying in 10 Seconds".
  std::string Label() const { return "Retrying in " + std::to_string((109 - bar_) / 10) + " Seconds"; }

 private:
  int bar_ = 0;
};

/// The dialog's message: the code, how many dialogs there have been, and the message.
inline std::string RetryMessage(const std::string& code, int errorCount, const std::string& message) {
  return "Error " + code + "-" + std::to_string(errorCount) + ": " + message;
}

}  // namespace pallomir
