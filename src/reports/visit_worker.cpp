#include "reports/visit_worker.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <utility>

namespace pallomir {
namespace {

using SteadyClock = std::chrono::steady_clock;

// More often than this nobody can read it.
constexpr auto kBetweenReports = std::chrono::milliseconds(40);

}  // namespace

VisitReport SearchVisits(const VisitOrder& order,
                         const std::function<bool(const VisitSearch::Progress&)>& goesOn) {
  VisitReport report;
  report.isOver = true;
  std::error_code error;
  if (!std::filesystem::is_directory(order.dataFolder, error)) {
    report.hasNoFolder = true;
    return report;
  }
  if (!goesOn(report.progress)) {
    report.isStopped = true;
    return report;
  }
  VisitSearch search(order.dataFolder, {order.unitIds, order.area(), order.span, order.limit});
  do {
    report.isStopped = !goesOn(search.State());
  } while (!report.isStopped && search.Step());
  report.progress = search.State();
  report.visits = search.Visits();
  report.problem = search.Problem();
  return report;
}

/// What thread and event loop share.
struct VisitWorker::Work {
  VisitWorker* owner = nullptr;  // of the event loop alone; null once nothing is to be told
  VisitOrder order;
  Told told;
  std::atomic<bool> isStopped = false;
  std::atomic<bool> isProgressPosted = false;  // and has not been told yet
  std::mutex lock;
  VisitSearch::Progress progress;  // behind the lock
  VisitReport report;              // of the thread, until it is through
};

void VisitWorker::Start(VisitOrder order, Told told) {
  Drop();
  const auto work = work_ = std::make_shared<Work>();
  work->owner = this;
  work->order = std::move(order);
  work->told = std::move(told);
  const auto tellProgress = [work] {
    work->isProgressPosted = false;
    if (!work->owner) return;
    VisitReport report;
    {
      const std::lock_guard guard(work->lock);
      report.progress = work->progress;
    }
    work->told(report);
  };
  loop_.RunBeside(
      [&loop = loop_, work, tellProgress] {
        auto last = SteadyClock::now();
        work->report = SearchVisits(work->order, [&](const VisitSearch::Progress& progress) {
          if (work->isStopped) return false;
          const auto now = SteadyClock::now();
          if (now - last < kBetweenReports || work->isProgressPosted.exchange(true)) return true;
          last = now;
          {
            const std::lock_guard guard(work->lock);
            work->progress = progress;
          }
          loop.Post(tellProgress);
          return true;
        });
      },
      [work] {
        if (!work->owner) return;
        work->owner->work_.reset();
        work->owner = nullptr;
        work->told(work->report);
      });
}

void VisitWorker::Stop() {
  if (work_) work_->isStopped = true;
}

void VisitWorker::Drop() {
  Stop();
  if (work_) work_->owner = nullptr;
  work_.reset();
}

}  // namespace pallomir
