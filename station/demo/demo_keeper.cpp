#include "station/demo/demo_keeper.h"

#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <limits>

#include "base/packed_time.h"
#include "station/demo/demo_source.h"

namespace pallomir::station {
namespace {

using namespace std::chrono_literals;

// Those who come while the station starts are served first.
constexpr auto kStartDelay = 2s;
constexpr auto kInterval = 1h;

// The end of the program may have to wait as long; after a failure the next try comes sooner.
constexpr auto kPatience = 500ms;
constexpr auto kRetryInterval = 1min;

// Of the system's scheduler, 0 to 19.
constexpr int kNiceness = 10;

}  // namespace

std::string DemoRecorder::Record(Millis utcNow, const std::stop_token& stop) {
  const Millis today = WholeDay(utcNow), oldest = today - days_ * kDay;
  std::erase_if(done_, [&](Millis day) { return day < oldest; });
  for (Millis day = today; day >= oldest && !stop.stop_requested(); day -= kDay) {
    if (done_.contains(day)) continue;
    if (std::string problem = RecordDay(day, utcNow, stop); !problem.empty()) return problem;
    if (day < today && !stop.stop_requested()) done_.insert(day);
  }
  return "";
}

std::string DemoRecorder::RecordDay(Millis day, Millis utcNow, const std::stop_token& stop) {
  const TimeWindow window{day, day + kDay - 1};
  const auto packed = PackWindow(window);
  const auto oldest = EncodePackedTime(WholeDay(utcNow) - days_ * kDay);
  if (!packed || !oldest) return "";  // records have no such times
  std::string problem;
  const auto writer = store_->StartWriting(kPatience, problem);
  if (!writer) return problem;
  DemoSource demo([utcNow] { return utcNow; });
  for (const DemoUnit& unit : DemoUnits()) {
    if (stop.stop_requested()) break;
    const auto records = demo.Read(unit.id, window, std::numeric_limits<std::size_t>::max());
    problem = writer->KeepDemo(unit.id, *packed, records, *oldest);
    if (!problem.empty()) break;
  }
  return problem;
}

DemoKeeper::DemoKeeper(std::unique_ptr<UnitStore> store, std::function<Millis()> utcNow, Log log)
    : recorder_(std::move(store)),
      utcNow_(std::move(utcNow)),
      log_(std::move(log)),
      thread_([this](const std::stop_token& stop) { Run(stop); }) {}

void DemoKeeper::Run(const std::stop_token& stop) {
  ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), kNiceness);
  std::string known;
  std::chrono::seconds pause = kStartDelay;
  while (true) {
    std::unique_lock lock(mutex_);
    wake_.wait_for(lock, stop, pause, [] { return false; });
    if (stop.stop_requested()) return;
    std::string problem = recorder_.Record(utcNow_(), stop);
    if (!problem.empty() && problem != known) log_("demo: searches don't find all of it: " + problem);
    known = std::move(problem);
    pause = known.empty() ? std::chrono::seconds(kInterval) : std::chrono::seconds(kRetryInterval);
  }
}

}  // namespace pallomir::station
