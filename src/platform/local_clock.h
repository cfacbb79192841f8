#pragma once

#include "platform/clock.h"

namespace pallomir {

/// The user's local time: UTC minus one offset, which is set at the start and stays.
class LocalClock {
 public:
  /// `clock` outlives this one. Until an offset is set, local time is UTC.
  explicit LocalClock(const Clock& clock) : clock_(clock) {}

  /// Takes the offset that the system has now. False where the system can't say.
  bool TakeSystemZone();
  /// In minutes, positive west of Greenwich.
  void SetOffset(int minutes) { offsetMinutes_ = minutes; }
  int OffsetMinutes() const { return offsetMinutes_; }

  Millis Now() const { return ToLocal(clock_.NowUtc()); }
  Millis ToLocal(Millis utc) const { return ToLocalTime(utc, offsetMinutes_); }
  Millis ToUtc(Millis local) const { return pallomir::ToUtc(local, offsetMinutes_); }

 private:
  const Clock& clock_;
  int offsetMinutes_ = 0;
};

}  // namespace pallomir
