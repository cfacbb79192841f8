#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "journal/crossing_finder.h"
#include "journal/journal_store.h"
#include "platform/clock.h"
#include "platform/event_loop.h"
#include "tracking/data_feed.h"
#include "tracking/mobile_units.h"

namespace pallomir {

/// Notes who entered and left which zone. What a batch holds is found and stored at once where that is done
/// in a blink, else part by part while the window has nothing else to do.
class Journal {
 public:
  struct Host {
    std::function<void()> changed;  ///< there are other entries, or other alerts are acknowledged
    /// An alert that has just happened, as time goes for the units.
    std::function<void(const JournalEntry&)> alerted;
    /// The last batch holds an alert after all: none had been found yet when `OnBatch` returned.
    std::function<void()> foundLate = [] {};
  };

  /// All arguments outlive the journal. `units` are those of the points.
  Journal(JournalStore& store, EventLoop& loop, const Clock& clock, const LocalClock& localClock,
          const PointStore& points, const UnitBook& units, const FlickerLimits& flicker, Host host);

  // What happens to the rest of the program.
  void SetZones(const ZoneTree& zones);
  void OnReload();
  void OnBatch(const MergedBatch& batch);
  void Close();

  /// Whether the last batch held an alert, as far as it has been looked at.
  bool HasBatchAlert() const { return hasBatchAlert_; }
  bool IsWorking() const { return finder_.HasWork() || !toAcknowledge_.empty(); }

  // What the user does.
  void Acknowledge(std::span<const std::int64_t> ids);
  void AcknowledgeAll(const JournalFilter& filter);

 private:
  void Work(int milliseconds);
  void Note(const CrossingFinder::Found& found);
  JournalEntry EntryOf(const JournalStretch& stretch, const ZoneCrossing& crossing) const;
  std::string UnitIdOf(std::size_t k) const;
  void OnTick();

  JournalStore& store_;
  const Clock& clock_;
  const UnitBook& units_;
  Host host_;
  CrossingFinder finder_;
  std::vector<std::string> paths_;  // by zone
  std::set<std::string> pathsInUse_;
  bool hasBatchAlert_ = false;
  bool hasChanged_ = false;  // since it was told
  std::vector<JournalFilter> toAcknowledge_;
  std::unique_ptr<Timer> workTimer_;
};

}  // namespace pallomir
