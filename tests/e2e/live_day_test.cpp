#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <random>

#include "base/packed_time.h"
#include "station/wire/answer.h"
#include "station/wire/data_request.h"
#include "tracking/fed.h"

namespace pallomir {
namespace {

constexpr int kSecondsOfDay = 86'400;

/// What units have sent to a station by now: one reports every ten seconds; one is out of reach for hours and
/// then sends all that it kept; one begins its day late and is sometimes slow.
class Recordings : public station::PositionSource {
 public:
  explicit Recordings(const Millis& now) : now_(now) {
    for (int second = 5; second < kSecondsOfDay; second += 10) {
      const int hour = second / 3600;
      Add(kSteady, second, second);
      const bool isOutOfReach = hour % 5 >= 2 && hour % 5 < 4;
      Add(kFar, second, isOutOfReach ? (hour - hour % 5 + 4) * 3600 : second);
      if (hour >= 9) Add(kLate, second, second + (second / 10 % 50 == 0 ? 9 : 0));
    }
  }
  bool Knows(std::string_view unitId) override { return records_.contains(std::string(unitId)); }
  std::vector<WireRecord> Read(std::string_view unitId, station::TimeWindow window,
                               std::size_t limit) override {
    std::vector<WireRecord> read;
    const auto& records = records_[std::string(unitId)];
    const Millis until = std::min(window.until, now_);  // nothing is sent before its time
    for (auto at = records.lower_bound(window.from); at != records.end() && at->first <= until; ++at) {
      if (at->second.sentAt > now_) continue;
      read.push_back(at->second.record);
      if (read.size() == limit) break;
    }
    return read;
  }

  static constexpr const char* kSteady = "0123456789AB";
  static constexpr const char* kFar = "0123456789AC";
  static constexpr const char* kLate = "0123456789AD";

 private:
  struct Sent {
    WireRecord record;
    Millis sentAt;
  };
  void Add(const char* unit, int second, int sentAt) {
    const Millis time = kNoon + second * kSecond;
    records_[unit][time] = {{*EncodePackedTime(time), 24'000'000 + second, -45'000'000, 0},
                            kNoon + sentAt * kSecond};
  }

  const Millis& now_;
  std::map<std::string, std::map<Millis, Sent>> records_;
};

/// A live feed and a station, with a network between them that can break.
class Network : public Fed {
 public:
  Network() {
    units = EnumerateUnits(ParseMobileUnits("X0123456789ABSteady~X0123456789ACFar~X0123456789ADLate~"));
    clock.now = kNoon;
    feed->Forget();
    feed->SetLive(true);
    feed->BeginTelling();
    feed->Restart();
  }

  enum class State { kUp, kDown, kDead };  ///< dead: nobody is told that it is down
  void Second(State state) {
    clock.now += kSecond;
    if (state == State::kDown && !data.IsClosed()) Cut();
    if (state == State::kDead) answer_.reset();
    if (state == State::kUp) Answer();
    if (state == State::kUp && !data.IsClosed() && answer_) Deliver();
    loop.Advance(1000);
  }
  /// The computer sleeps; the network is another one behind that.
  void Sleep(int seconds) { clock.now += seconds * kSecond; }

  int requests = 0;

 private:
  void Cut() {
    answer_.reset();
    data.Close();
    if (++cuts_ % 2) {
      data.closedByPeer();
    } else {
      data.failed({10054, "The connection was reset.", 104});
    }
  }
  // What the client has asked for since the last second.
  void Answer() {
    if (locator.sent.size() == answered_) return;
    answered_ = locator.sent.size();
    Connect();
    ++requests;
    const auto request = station::ParseDataRequest(data.sent.back());
    ASSERT_TRUE(request) << data.sent.back();
    answer_.emplace(source_, *request);
  }
  void Deliver() {
    answer_->LookForNew();
    for (int packets = 0; packets < 3 && answer_->HasMore(); ++packets) data.arrived(answer_->NextPacket());
  }

  Recordings source_{clock.now};
  std::optional<station::Answer> answer_;
  std::size_t answered_ = 0;
  int cuts_ = 0;
};

TEST(LiveDay, OfCutConnectionsLeavesTheStoreOfAnUncutOne) {
  Network uncut;
  Network cut;
  std::minstd_rand random(20261123);
  auto state = Network::State::kUp;
  int until = 0;
  for (int second = 1; second < kSecondsOfDay; ++second) {
    if (second >= until) {
      const auto pick = random() % 4;
      state = second > kSecondsOfDay - 300 || pick < 2 ? Network::State::kUp
              : pick == 2                              ? Network::State::kDown
                                                       : Network::State::kDead;
      until = second + 20 + static_cast<int>(random() % 600);
    }
    uncut.Second(Network::State::kUp);
    if (second % 20'000 == 0) {
      cut.Sleep(3000);
      for (int i = 0; i < 3000; ++i, ++second) uncut.Second(Network::State::kUp);
    }
    cut.Second(state);
  }
  EXPECT_EQ(cut.Trouble(), "");
  EXPECT_FALSE(cut.view.retry);
  EXPECT_EQ(uncut.requests, 1);
  EXPECT_GT(cut.requests, 60);
  EXPECT_GT(uncut.Points(), 20'000u);
  for (std::size_t k = 1; k <= 3; ++k) {
    const auto whole = uncut.feed->Points().Track(k).Points();
    const auto joined = cut.feed->Points().Track(k).Points();
    EXPECT_TRUE(std::ranges::equal(whole, joined)) << k << ": " << joined.size() << " of " << whole.size();
  }
}

}  // namespace
}  // namespace pallomir
