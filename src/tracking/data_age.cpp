#include "tracking/data_age.h"

#include <algorithm>
#include <span>

#include "base/number_format.h"

namespace pallomir {

namespace {

// Behind the unit's last point that is not dated later.
std::size_t CountOfNow(std::span<const DataPoint> points, Millis nowUtc) {
  const auto isOfNow = [nowUtc](const DataPoint& point) {
    return DecodePackedTime(point.time).value_or(0) <= nowUtc + kClockTolerance;
  };
  return static_cast<std::size_t>(std::partition_point(points.begin(), points.end(), isOfNow) -
                                  points.begin());
}

std::optional<Millis> LastOf(std::span<const DataPoint> points, std::size_t count) {
  return count > 0 ? DecodePackedTime(points[count - 1].time) : std::nullopt;
}

}  // namespace

std::optional<Millis> NewestOfUnit(const PointStore& store, std::size_t k, Millis nowUtc) {
  const auto points = store.Track(k).Points();
  return LastOf(points, CountOfNow(points, nowUtc));
}

NewestData NewestDataAt(const PointStore& store, Millis nowUtc) {
  NewestData newest;
  for (std::size_t k = 1; k <= store.UnitCount(); ++k) {
    const auto points = store.Track(k).Points();
    const std::size_t count = CountOfNow(points, nowUtc);
    newest.datedLater += points.size() - count;
    newest.utc = std::max(newest.utc, LastOf(points, count));
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
