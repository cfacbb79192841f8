#include "tracking/data_age.h"

#include <algorithm>
#include <iterator>

#include "base/number_format.h"

namespace pallomir {

NewestData NewestDataAt(const PointStore& store, Millis nowUtc) {
  NewestData newest;
  const auto isOfNow = [nowUtc](const DataPoint& point) {
    return DecodePackedTime(point.time).value_or(0) <= nowUtc + kClockTolerance;
  };
  for (std::size_t k = 1; k <= store.UnitCount(); ++k) {
    const auto points = store.Track(k).Points();
    const auto later = std::partition_point(points.begin(), points.end(), isOfNow);
    newest.datedLater += static_cast<std::size_t>(points.end() - later);
    if (later != points.begin()) newest.utc = std::max(newest.utc, DecodePackedTime(std::prev(later)->time));
  }
  return newest;
}

std::string AgeCaption(const NewestData& newest, std::size_t pointCount, Millis nowUtc) {
  std::string age;
  if (newest.utc) {
    const Millis since = std::max<Millis>(0, nowUtc - *newest.utc);
    const CivilTime rest = ToCivil(since % kDay);
    age = (since >= kDay ? std::to_string(since / kDay) : "") + " " + FormatInteger(rest.hour, 2) + ":" +
          FormatInteger(rest.minute, 2) + ":" + FormatInteger(rest.second, 2) + " ";
  }
  return "Pallomir " + age + " " + std::to_string(pointCount) + " Data Points";
}

}  // namespace pallomir
