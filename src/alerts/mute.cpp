#include "alerts/mute.h"

#include <array>
#include <cstdio>
#include <utility>

namespace pallomir {
namespace {

constexpr char kSwitchedOn[] = "Switched On";

// The form of IsoText, which is also how the choice is stored.
std::optional<Millis> ParseIsoText(const std::string& text) {
  CivilTime time;
  char more = 0;
  if (std::sscanf(text.c_str(), "%4d-%2d-%2d %2d:%2d:%2d%c", &time.year, &time.month, &time.day, &time.hour,
                  &time.minute, &time.second, &more) != 6 ||
      !IsPossible(time)) {
    return std::nullopt;
  }
  return ToMillis(time);
}

}  // namespace

Mute::Mute(Choice<std::string>& until, const LocalClock& clock, EventLoop& loop)
    : until_(until), clock_(clock), muteTimer_(loop.CreateTimer("MuteTimer", 1000, [this] { IsMuted(); })) {}

void Mute::Open() {
  until_.Read();
  Take(until_.Value());
  if (IsMuted()) changed();
}

void Mute::Close() { muteTimer_->SetEnabled(false); }

void Mute::Take(const std::string& stored) {
  end_ = ParseIsoText(stored);
  if (end_) end_ = clock_.ToLocal(*end_);
  if (end_ && *end_ - clock_.Now() > kDay) end_.reset();  // nobody chose that: a clock was put back
  isMuted_ = end_ || stored == kSwitchedOn;
  muteTimer_->SetEnabled(end_.has_value());
}

void Mute::Choose(MuteFor time) {
  const Millis now = clock_.Now();
  const Millis end = time == MuteFor::kHour ? now + kHour : WholeDay(now) + kDay;
  until_.Store(time == MuteFor::kNothing           ? ""
               : time == MuteFor::kUntilSwitchedOn ? kSwitchedOn
                                                   : IsoText(clock_.ToUtc(end)));
  Take(until_.Value());
  changed();
}

bool Mute::IsMuted() {
  if (isMuted_ && end_ && clock_.Now() >= *end_) {
    until_.Store("");
    Take("");
    changed();
  }
  return isMuted_;
}

std::string Mute::Text() {
  if (!IsMuted()) return {};
  if (!end_) return "Muted";
  const bool isTomorrow = *end_ % kDay == 0;
  return isTomorrow ? "Muted until tomorrow" : "Muted until " + TimeOfDayText(*end_);
}

}  // namespace pallomir
