#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "fakes/allocated_bytes.h"
#include "fakes/client_harness.h"
#include "station/demo/demo_source.h"
#include "station/wire/answer.h"
#include "station/wire/data_request.h"

// A simulated stretch of live points from the station's demo units into the client, with reloads, fits, zooms
// and a page that asks for tiles all along: memory follows the stored points and nothing else.
// memory_day [SECONDS [RELOADS]]; a day and a thousand reloads, if nothing is said.
// memory_day live [SECONDS]; the same points in live mode, against a plain load of all of them at the end.

namespace pallomir {
namespace {

// What a stored point may cost: 16 bytes and its distance, and the reserve of both.
constexpr std::size_t kBytesAPoint = 32;
// Beyond that nothing may gather: less than half a kilobyte for each of a thousand reloads.
constexpr std::size_t kSlack = 400 * 1024;
// The first reloads fill buffers that are kept.
constexpr int kWarmUpReloads = 10;
constexpr double kMostOfPlainLoad = 1.1;
// What a drawn map keeps beside the points; a plain load is not drawn here.
constexpr std::size_t kOfDrawing = std::size_t{8} << 20;
// Three in the morning there, when a window begins.
const Millis kBegin = ToMillis({2026, 11, 22, 8, 0, 5});

class Day {
 public:
  explicit Day(Millis now = kBegin, bool isLive = false) {
    harness_.clock.now = now;
    if (isLive) harness_.settings.values["Live"] = "True";
    harness_.client->Load();
    Connect();
    for (const char* command : {"S1", "M40.620000,-75.370000", "Z12", "S99"}) harness_.Command(command);
  }

  void Second() {
    harness_.clock.now += kSecond;
    harness_.loop.Advance(1000);
    answer_->LookForNew();
    Deliver();
    ++seconds_;
    if (seconds_ % 30 == 0) harness_.client->FitByUser(0);
    if (seconds_ % 7 == 0) harness_.Command("m0010000200+024360000-045222000015");
  }

  void LiveSecond() {
    harness_.clock.now += kSecond;
    harness_.loop.Advance(1000);
    if (harness_.locator.sent.size() != asked_) Connect();
    answer_->LookForNew();
    Deliver();
    if (++seconds_ % 600 == 0) ForgetWhatTheFakesKept();
  }

  void Reload() {
    harness_.client->MapReload();
    Connect();
    harness_.loop.Advance(2000);
    harness_.Command("Z" + std::to_string(9 + ++reloads_ % 6));
    for (const std::string& file : harness_.TileFiles()) harness_.Command("TT" + file.substr(4, 14));
    ForgetWhatTheFakesKept();
  }

  int Reloads() const { return reloads_; }
  std::size_t Points() const { return harness_.client->Points().PointCount(); }
  /// Bytes of this day: the heap's, and what the points have reserved beside it.
  std::size_t Memory() const {
    std::size_t bytes = fakes::AllocatedBytes() - before_;
    const PointStore& store = harness_.client->Points();
    for (std::size_t k = 1; k <= store.UnitCount(); ++k) bytes += store.Track(k).ReservedBytes();
    return bytes;
  }
  std::string Trouble() const { return harness_.Trouble(); }

 private:
  void Connect() {
    asked_ = harness_.locator.sent.size();
    harness_.Connect();
    const auto request = station::ParseDataRequest(harness_.data.sent.back());
    if (!request) std::abort();
    answer_.emplace(source_, *request);
    Deliver();
    harness_.loop.Advance(200);
  }

  void Deliver() {
    while (answer_->HasMore()) {
      const Bytes packet = answer_->NextPacket();
      if (packet.empty()) return;
      harness_.data.arrived(packet);
    }
  }

  void ForgetWhatTheFakesKept() {
    harness_.browser.writes = {};
    harness_.browser.navigations = {};
    harness_.traced = {};
    harness_.settings.order = {};
    harness_.locator.sent = harness_.locator.connections = {};
    asked_ = 0;
    harness_.probe.sent = harness_.probe.connections = {};
    harness_.data.sent = harness_.data.connections = {};
  }

  const std::size_t before_ = fakes::AllocatedBytes();
  fakes::ClientHarness harness_;
  station::DemoSource source_{[this] { return harness_.clock.now; }};
  std::optional<station::Answer> answer_;
  std::size_t asked_ = 0;  // of the client's questions to the locator
  int seconds_ = 0;
  int reloads_ = 0;
};

int RunLive(int seconds) {
  std::size_t live = 0;
  std::size_t points = 0;
  bool isQuiet = false;
  {
    Day day(kBegin, true);
    for (int second = 1; second <= seconds; ++second) day.LiveSecond();
    live = day.Memory();
    points = day.Points();
    isQuiet = day.Trouble().empty();
  }
  const Day plain(kBegin + seconds * kSecond);
  const std::size_t loaded = plain.Memory();
  const double ratio = static_cast<double>(live - std::min(live, kOfDrawing)) / static_cast<double>(loaded);
  std::printf(
      "live: %zu points, %zu bytes; plain load: %zu points, %zu bytes; without what drawing keeps %.2fx "
      "(at most %.1fx)\n",
      points, live, plain.Points(), loaded, ratio, kMostOfPlainLoad);
  return isQuiet && points > 0 && points + 20 > plain.Points() && ratio <= kMostOfPlainLoad ? 0 : 1;
}

int Run(int seconds, int reloads) {
  Day day;
  const int interval = std::max(1, seconds / reloads);
  std::size_t baseline = 0, most = 0;
  bool isFlat = true;
  for (int second = 1; second <= seconds && isFlat; ++second) {
    day.Second();
    if (second % interval != 0) continue;
    day.Reload();
    const std::size_t used = fakes::AllocatedBytes();
    const std::size_t beside = used - std::min(used, day.Points() * kBytesAPoint);
    most = std::max(most, beside);
    if (day.Reloads() == kWarmUpReloads) baseline = most;
    isFlat = day.Reloads() <= kWarmUpReloads || beside <= baseline + kSlack;
    if (day.Reloads() % 100 == 0 || !isFlat)
      std::printf("%6d s, %4d reloads: %6zu points, %zu bytes (%zu beside the points)\n", second,
                  day.Reloads(), day.Points(), used, beside);
  }
  if (!day.Trouble().empty()) std::printf("told: %s\n", day.Trouble().c_str());
  std::printf("%s: %d reloads, at most %zu bytes beside the points, %zu after the first %d\n",
              isFlat ? "flat" : "GROWING", day.Reloads(), most, baseline, kWarmUpReloads);
  return isFlat && day.Trouble().empty() && day.Points() > 0 ? 0 : 1;
}

}  // namespace
}  // namespace pallomir

int main(int argc, char** argv) {
  if (argc > 1 && std::string_view(argv[1]) == "live")
    return pallomir::RunLive(argc > 2 ? std::atoi(argv[2]) : 86'390);
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 86'390;
  const int reloads = argc > 2 ? std::atoi(argv[2]) : 1000;
  return seconds > 0 && reloads > 0 ? pallomir::Run(seconds, reloads) : 2;
}
