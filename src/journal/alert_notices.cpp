#include "journal/alert_notices.h"

namespace pallomir {

void AlertNotices::Tell(const JournalEntry& alert, std::function<void()> clicked) {
  constexpr Millis kPause = 30 * kSecond;
  if (!isOn_.Value()) return;
  const Millis now = clock_.NowUtc();
  // A clock that was set back does not silence for longer.
  std::erase_if(lastTold_,
                [&](const auto& told) { return now - told.second >= kPause || told.second > now; });
  if (!lastTold_.try_emplace({alert.unitId, alert.zone}, now).second) return;
  notifier_.Notify(alert.unitName,
                   (alert.hasEntered ? "Entered " : "Left ") + alert.zone + ", " +
                       TimeOfDayText(localClock_.ToLocal(alert.utc)),
                   std::move(clicked));
}

}  // namespace pallomir
