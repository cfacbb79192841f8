#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "alerts/alert_words.h"
#include "platform/event_loop.h"
#include "platform/local_clock.h"
#include "settings/choice.h"

namespace pallomir {

/// Keeps the alerts silent for a time that the user chose; it outlasts the run.
class Mute {
 public:
  /// `until` is the stored choice: empty, "Switched On", or a time as UTC.
  Mute(Choice<std::string>& until, const LocalClock& clock, EventLoop& loop);

  /// It begins or ends, by the user or by the clock.
  std::function<void()> changed = [] {};

  /// Reads what is stored; one that is over is forgotten.
  void Open();
  void Close();

  void Choose(MuteFor time);
  bool IsMuted();
  /// "Muted", "Muted until 03:05:00 p", "Muted until tomorrow"; empty while it is not.
  std::string Text();

 private:
  void Take(const std::string& stored);

  Choice<std::string>& until_;
  const LocalClock& clock_;
  bool isMuted_ = false;
  std::optional<Millis> end_;  // local time; none: until it is switched on
  std::unique_ptr<Timer> muteTimer_;
};

}  // namespace pallomir
