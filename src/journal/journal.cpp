#include "journal/journal.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "zones/zone_path.h"

namespace pallomir {
namespace {

// A live batch is done at once. A load is worked off in parts, so that keys and mouse get their turn.
constexpr int kAtOnceMilliseconds = 15;
constexpr int kPartMilliseconds = 6;
constexpr int kPauseMilliseconds = 1;
constexpr std::size_t kPointsPerStep = 2000;

// What is older by the clock has been waiting somewhere: it is noted, and nobody is called.
constexpr Millis kNews = 10 * kMinute;

}  // namespace

Journal::Journal(JournalStore& store, EventLoop& loop, const Clock& clock, const LocalClock& localClock,
                 const PointStore& points, const UnitBook& units, const FlickerLimits& flicker, Host host)
    : store_(store),
      clock_(clock),
      units_(units),
      host_(std::move(host)),
      finder_(points, localClock, flicker),
      workTimer_(loop.CreateTimer("JournalWork", kPauseMilliseconds, [this] { OnTick(); })) {}

void Journal::SetZones(const ZoneTree& zones) {
  finder_.SetZones(zones);
  paths_.clear();
  for (ZoneOrdinal zone = 0; zone < zones.Count(); ++zone) paths_.push_back(ZonePathText(zones, zone));
  pathsInUse_ = {paths_.begin(), paths_.end()};
  workTimer_->SetEnabled(IsWorking());
}

void Journal::OnReload() {
  finder_.Forget();
  hasBatchAlert_ = false;
}

void Journal::OnBatch(const MergedBatch& batch) {
  hasBatchAlert_ = false;
  for (const auto& [k, earliest] : batch.earliest) finder_.PointsCame(k, earliest);
  Work(kAtOnceMilliseconds);
}

void Journal::Close() { workTimer_->SetEnabled(false); }

void Journal::OnTick() {
  const bool hadBatchAlert = hasBatchAlert_;
  Work(kPartMilliseconds);
  if (hasBatchAlert_ && !hadBatchAlert) host_.foundLate();
  if (toAcknowledge_.empty()) return;
  if (!store_.AcknowledgeSome(toAcknowledge_.back(), clock_.NowUtc())) toAcknowledge_.pop_back();
  workTimer_->SetEnabled(IsWorking());
  host_.changed();
}

void Journal::Work(int milliseconds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  do {
    const auto found = finder_.Work(kPointsPerStep);
    if (!found) break;
    Note(*found);
  } while (std::chrono::steady_clock::now() < end);
  workTimer_->SetEnabled(IsWorking());
  if (std::exchange(hasChanged_, false)) host_.changed();
}

void Journal::Note(const CrossingFinder::Found& found) {
  JournalStretch stretch;
  stretch.unitId = UnitIdOf(found.k);
  stretch.unitName = units_.descriptions[found.k];
  stretch.from = found.stretch.from;
  stretch.until = found.stretch.until;
  stretch.isLookedAt = [this](const std::string& zone) { return pathsInUse_.contains(zone); };
  std::vector<JournalEntry> entries;
  for (const ZoneCrossing& crossing : found.stretch.counting) entries.push_back(EntryOf(stretch, crossing));
  const std::size_t before = store_.Count({});
  const auto added = store_.Replace(stretch, entries);
  hasChanged_ = hasChanged_ || !added.empty() || store_.Count({}) != before;
  for (const JournalEntry& entry : added) {
    if (!entry.isAlert) continue;
    hasBatchAlert_ = true;
    if (clock_.NowUtc() - entry.utc <= kNews) host_.alerted(entry);
  }
}

JournalEntry Journal::EntryOf(const JournalStretch& stretch, const ZoneCrossing& crossing) const {
  JournalEntry entry;
  entry.unitId = stretch.unitId;
  entry.unitName = stretch.unitName;
  entry.zone = paths_[crossing.zone];
  entry.utc = crossing.utc;
  entry.hasEntered = crossing.hasEntered;
  entry.isAlert = crossing.isAlert;
  entry.isLate = crossing.isLate;
  entry.place = crossing.place;
  return entry;
}

std::string Journal::UnitIdOf(std::size_t k) const {
  const auto isIt = [&](const auto& unit) { return unit.second == units_.enabledToList[k]; };
  const auto unit = std::ranges::find_if(units_.unitById, isIt);
  return unit == units_.unitById.end() ? std::string() : unit->first;
}

void Journal::Acknowledge(std::span<const std::int64_t> ids) {
  store_.Acknowledge(ids, clock_.NowUtc());
  host_.changed();
}

void Journal::AcknowledgeAll(const JournalFilter& filter) {
  toAcknowledge_.push_back(filter);
  workTimer_->SetEnabled(true);
}

}  // namespace pallomir
