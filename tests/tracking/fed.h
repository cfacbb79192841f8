#pragma once

#include <optional>
#include <string>
#include <vector>

#include "fakes/fake_event_loop.h"
#include "fakes/fake_feed_view.h"
#include "fakes/fake_network.h"
#include "fakes/fake_system.h"
#include "tracking/data_feed.h"
#include "tracking/packets.h"

namespace pallomir {

inline const Millis kNoon = ToMillis({2026, 11, 22, 12});

// A packet of one unit with a point at each of the seconds after noon.
inline Bytes Packet(const std::vector<int>& seconds, const char* unit = "0123456789AB", int latitude = 40) {
  std::vector<WireRecord> records;
  for (const int second : seconds)
    records.push_back({*EncodePackedTime(kNoon + second * kSecond), latitude * 600'000, -75 * 600'000, 0});
  return EncodePacket(unit, records);
}

inline Bytes Joined(std::initializer_list<Bytes> parts) {
  Bytes all;
  for (const Bytes& part : parts) Append(all, part);
  return all;
}

// A feed of two enabled units and a disabled one, with its ports and what it told.
struct Fed {
  Fed() {
    DataFeed::Host host;
    host.window = [] { return DataFeed::UtcSpan{kNoon, kNoon + kDay}; };
    host.isDrawing = [this] { return isDrawing; };
    host.hasUndrawnPoints = [this] { return hasUndrawnPoints; };
    host.note = [this] { return note; };
    host.restarting = [this] { ++restarts; };
    host.arrived = [this] { told += "arrived "; };
    host.beforeDecoding = [this] { told += "decoding "; };
    host.pointsMoved = [this] { told += "moved "; };
    host.batchMerged = [this](const MergedBatch& merged) {
      told += "merged ";
      batch = merged;
      newest = merged.newest ? std::optional(*merged.newest) : std::nullopt;
    };
    host.endSession = [this] { told += "end "; };
    feed.emplace(FeedPorts{{locator, probe, data}, loop, clock, questions, trace}, view, units, portBase,
                 std::move(host));
    feed->Forget();
    feed->Restart();
    Connect();
  }

  void Connect() {
    locator.arrived(fakes::LocatorAnswer("7F0000091234"));
    probe.connected();
    data.connected();
  }
  // An arrival and the pause behind it.
  void Arrive(const Bytes& bytes) {
    data.arrived(bytes);
    loop.Advance(100);
  }
  std::size_t Points() const { return feed->Points().PointCount(); }
  std::string Trouble() const { return box.shown.empty() ? "" : box.shown.back().text; }

  fakes::FakeDatagramEndpoint locator;
  fakes::FakeStreamEndpoint probe, data;
  fakes::FakeEventLoop loop;
  fakes::FakeClock clock;
  fakes::FakeQuestionBox box;
  QuestionQueue questions{box};
  Trace trace{[] { return 0.0; }, [](const std::string&) {}};
  fakes::FakeFeedView view;
  UnitBook units =
      EnumerateUnits(ParseMobileUnits("-0123456789AAOff~X0123456789ABFirst~X0123456789ACSecond~"));
  fakes::FakeSettings settings;
  ChoiceRow<int> row{"port", 18801, 0, 65535};
  ChoiceComplaint complain = [](const std::string&) {};
  Choice<int> portBase{settings, row, complain};
  bool isDrawing = false;
  bool hasUndrawnPoints = false;
  std::string note;
  int restarts = 0;
  std::string told;
  MergedBatch batch;
  std::optional<DataPoint> newest;
  std::optional<DataFeed> feed;
};

}  // namespace pallomir
