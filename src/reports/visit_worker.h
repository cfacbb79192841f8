#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "reports/visit_search.h"

namespace pallomir {

/// A search for visits that is yet to begin.
struct VisitOrder {
  std::filesystem::path dataFolder;
  std::vector<std::string> unitIds;
  std::function<SearchArea()> area;  ///< called where the search runs: that of a zone takes its time
  TimeSpan span;
  std::size_t limit = kMostVisits;
};

/// How far a search is, or how it ended.
struct VisitReport {
  VisitSearch::Progress progress;
  bool isOver = false;
  bool isStopped = false;     ///< before its end, by the user
  bool hasNoFolder = false;   ///< there is no data folder
  std::vector<Visit> visits;  ///< once it is over: what was found, also where it was stopped or failed
  std::string problem;        ///< what ended it, in lines
};

/// Searches to the end, or until `goesOn`, asked before every step, says no.
VisitReport SearchVisits(const VisitOrder& order,
                         const std::function<bool(const VisitSearch::Progress&)>& goesOn);

/// Runs one search at a time on a thread of its own and tells how it goes from the event loop. A search that
/// is stopped or dropped ends with the step that it is at, a few milliseconds; nobody waits for it.
class VisitWorker {
 public:
  using Told = std::function<void(const VisitReport&)>;

  /// The loop outlives the worker.
  explicit VisitWorker(EventLoop& loop) : loop_(loop) {}
  ~VisitWorker() { Drop(); }
  VisitWorker(const VisitWorker&) = delete;
  VisitWorker& operator=(const VisitWorker&) = delete;

  /// Drops the search before. `told` hears of the progress now and then, and once that it is over.
  void Start(VisitOrder order, Told told);
  /// The search ends where it is, and tells so.
  void Stop();
  /// The search ends where it is; nothing more is told.
  void Drop();
  bool IsRunning() const { return work_ != nullptr; }

 private:
  struct Work;

  EventLoop& loop_;
  std::shared_ptr<Work> work_;
};

}  // namespace pallomir
