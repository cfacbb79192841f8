#include "platform/qt/qt_clock.h"

#include <QDateTime>
#include <QTimeZone>
#include <chrono>

namespace pallomir {
namespace {

// The daylight bias where nothing better is known: the clock is put forward by an hour.
constexpr int kUsualDaylightBias = -60;

constexpr int kSecondsPerMinute = 60;

}  // namespace

std::optional<ZoneInfo> ZoneInfoAt(const QTimeZone& zone, Millis utc) {
  if (!zone.isValid()) return std::nullopt;
  const QDateTime at = QDateTime::fromMSecsSinceEpoch(utc, Qt::UTC);
  const int standard = zone.standardTimeOffset(at);
  ZoneInfo info;
  info.bias = -standard / kSecondsPerMinute;
  info.daylightBias = kUsualDaylightBias;
  if (zone.isDaylightTime(at)) {
    info.season = ZoneInfo::Season::kDaylight;
    info.daylightBias = -(zone.offsetFromUtc(at) - standard) / kSecondsPerMinute;
    return info;
  }
  // Zones that gave daylight time up long ago have past transitions only.
  for (const auto& change : zone.transitions(at, at.addDays(366))) {
    if (change.daylightTimeOffset == 0) continue;
    info.season = ZoneInfo::Season::kStandard;
    info.daylightBias = -change.daylightTimeOffset / kSecondsPerMinute;
    break;
  }
  return info;
}

Millis QtClock::NowUtc() const { return QDateTime::currentMSecsSinceEpoch(); }

double QtClock::Seconds() const {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::optional<ZoneInfo> QtClock::Zone() const { return ZoneInfoAt(QTimeZone::systemTimeZone(), NowUtc()); }

}  // namespace pallomir
