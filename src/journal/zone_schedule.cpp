#include "journal/zone_schedule.h"

#include "zones/zone_options_model.h"

namespace pallomir {
namespace {

constexpr Millis kMinuteStep = 5 * kMinute;

}  // namespace

ZoneSchedule::ZoneSchedule(const ZoneOptions& options) {
  const ZoneOptionsModel model(options);
  for (std::size_t day = 0; day < days_.size(); ++day) days_[day] = model.IsDayIncluded(day);
  if (model.IsAnyTime()) return;
  const Millis startHour = (model.StartHour() - 1) * kHour;
  start_ = startHour + model.StartMinute() * kMinuteStep;
  end_ = startHour + model.EndHour() * kHour + model.EndMinute() * kMinuteStep;
  if (end_ <= start_) end_ += kDay;
}

bool ZoneSchedule::Includes(Millis local) const {
  const Millis sinceMidnight = local - WholeDay(local);
  const auto isOnDay = [&](Millis midnight) { return days_[static_cast<std::size_t>(DayOfWeek(midnight))]; };
  const bool isOfToday = sinceMidnight >= start_ && sinceMidnight < end_;
  const bool isOfYesterday = sinceMidnight + kDay < end_;
  return (isOfToday && isOnDay(local)) || (isOfYesterday && isOnDay(local - kDay));
}

}  // namespace pallomir
