#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>

#include "journal/journal_store.h"
#include "platform/local_clock.h"
#include "platform/notifier.h"
#include "settings/choice.h"

namespace pallomir {

/// Tells alerts on the desktop: of a unit and a zone at most one in half a minute.
class AlertNotices {
 public:
  /// All outlives this object. Nothing is told while `isOn` is off.
  AlertNotices(Notifier& notifier, const Clock& clock, const LocalClock& localClock, const Choice<bool>& isOn)
      : notifier_(notifier), clock_(clock), localClock_(localClock), isOn_(isOn) {}

  void Tell(const JournalEntry& alert, std::function<void()> clicked);

 private:
  Notifier& notifier_;
  const Clock& clock_;
  const LocalClock& localClock_;
  const Choice<bool>& isOn_;
  std::map<std::pair<std::string, std::string>, Millis> lastTold_;  // by unit and zone, UTC
};

}  // namespace pallomir
