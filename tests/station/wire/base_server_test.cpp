#include "station/wire/base_server.h"

#include <asio/post.hpp>
#include <atomic>
#include <future>
#include <thread>

#include "fakes/allocated_bytes.h"
#include "station/station_testing.h"

namespace pallomir::station {
namespace {

using asio::ip::tcp;

const std::string kA = "00000000000A", kB = "00000000000B";

std::string Request(const std::string& ids, Millis from, Millis until) {
  return ids + "~" + IsoText(from) + "~" + IsoText(until) + "~~";
}

class BaseServerOnSockets : public testing::Test {
 protected:
  BaseServerOnSockets()
      : probe_(context_, {asio::ip::make_address("127.0.72.2"), 0}),
        data_(context_, {asio::ip::make_address("127.0.72.2"), 0}),
        probeAddress_(probe_.local_endpoint()),
        dataAddress_(data_.local_endpoint()),
        server_(
            std::move(probe_), std::move(data_), source_, [this] { return now_.load(); },
            [](const std::string&) {}),
        thread_([this] { context_.run(); }) {}

  ~BaseServerOnSockets() override {
    context_.stop();
    thread_.join();
  }

  // Runs `what` between the server's own steps and waits for it.
  template <class What>
  auto OnServer(What what) {
    std::packaged_task<decltype(what())()> task(std::move(what));
    auto result = task.get_future();
    asio::post(context_, [&task] { task(); });
    return result.get();
  }

  // Receives until `count` records of all units have come; those of this unit.
  static std::vector<WireRecord> Receive(TestClient& client, std::size_t count, const std::string& unitId) {
    std::vector<WireRecord> records;
    std::string stream;
    for (std::size_t received = 0; received < count;) {
      const std::string part = client.Receive();
      EXPECT_FALSE(part.empty()) << "the stream ended after " << received << " of " << count << " records";
      if (part.empty()) break;
      stream += part;
      for (const auto& [unit, oldestFirst] : TakePackets(stream)) {
        received += oldestFirst.size();
        if (unit == unitId) records.insert(records.end(), oldestFirst.begin(), oldestFirst.end());
      }
    }
    EXPECT_TRUE(stream.empty());
    return records;
  }

  std::atomic<Millis> now_ = kNoon;
  FakeSource source_;  ///< touched before the first request or on the server's thread only
  asio::io_context context_;
  tcp::acceptor probe_;
  tcp::acceptor data_;
  tcp::endpoint probeAddress_;
  tcp::endpoint dataAddress_;
  BaseServer server_;
  std::thread thread_;
};

TEST_F(BaseServerOnSockets, AnswersARequestInPiecesWithTheRecordsOfTheWindow) {
  source_.units[kA] = RecordsAt(0, 5000);
  source_.units[kB] = RecordsAt(100, 1000);
  TestClient client(dataAddress_);
  for (const char c : Request(kA + kB, kNoon, kNoon + kDay)) client.Send({&c, 1});
  EXPECT_EQ(Receive(client, 6000, kA), source_.units[kA]);
}

TEST_F(BaseServerOnSockets, StreamsWhatIsNewInTheWindow) {
  source_.units[kA] = RecordsAt(0, 3);
  source_.units[kB] = {};
  TestClient client(dataAddress_);
  client.Send(Request(kA, kNoon, kNoon + kMinute));
  Receive(client, 3, kA);
  OnServer([this] {
    source_.units[kB] = RecordsAt(0, 5);  // not asked for
    source_.units[kA].push_back(RecordAt(30));
    server_.Tick();
  });
  EXPECT_EQ(Receive(client, 1, kA), RecordsAt(30, 1));
  OnServer([this] {
    source_.units[kA].push_back(RecordAt(60));
    source_.units[kA].push_back(RecordAt(61));  // behind the window
    server_.Tick();
    server_.Tick();
  });
  EXPECT_EQ(Receive(client, 1, kA), RecordsAt(60, 1));
}

TEST_F(BaseServerOnSockets, ASlowClientHoldsUpNobodyAndMissesNothing) {
  source_.units[kA] = RecordsAt(0, 1'000'000);  // 14 MB, more than any socket buffer holds
  source_.units[kB] = RecordsAt(0, 2000);
  const std::size_t before = fakes::AllocatedBytes();
  TestClient slow(dataAddress_);
  slow.Send(Request(kA, kNoon, kNoon + 30 * kDay));
  for (int i = 0; i < 3; ++i) {
    TestClient quick(dataAddress_);
    quick.Send(Request(kB, kNoon, kNoon + kDay));
    EXPECT_EQ(Receive(quick, 2000, kB), source_.units[kB]);
    OnServer([this] { server_.Tick(); });
  }
  EXPECT_LT(fakes::AllocatedBytes(), before + 1'000'000) << "packets are made as they can be sent";
  EXPECT_TRUE(Receive(slow, 1'000'000, kA) == source_.units[kA]);
}

TEST_F(BaseServerOnSockets, ClosesOnAMalformedRequest) {
  source_.units[kA] = RecordsAt(0, 3);
  const std::string malformed[] = {
      "~~",
      "GET / HTTP/1.1\r\nHost: x\r\n\r\n~~",
      "D" + Request(kA, kNoon, kNoon + kDay),
      kA + "~11/22/26~11/23/26~~",
      std::string(100'000, '0'),  // never ends
  };
  for (const std::string& request : malformed) {
    TestClient client(dataAddress_);
    client.Send(request);
    EXPECT_EQ(client.ReceiveAll(), "") << request.substr(0, 40);
    EXPECT_FALSE(client.TimedOut()) << request.substr(0, 40);
  }
}

TEST_F(BaseServerOnSockets, AtTheBoundTheLeastUsefulClientGivesWay) {
  source_.units[kA] = RecordsAt(0, 1);
  source_.units[kB] = RecordsAt(0, 1'000'000);  // more than a client that does not read can be sent
  now_ = kNoon + 40 * kDay;
  struct Group {
    std::string request;
    int clients;
  };
  const Group silent60{"", 60}, served60{Request(kA, kNoon, kNoon + kDay), 60},
      live60{Request(kA, kNoon, kNoon + 50 * kDay), 60}, deaf60{Request(kB, kNoon, kNoon + 30 * kDay), 60},
      served16{served60.request, 16}, live16{live60.request, 16}, deaf16{deaf60.request, 16},
      served30{served60.request, 30}, live63{live60.request, 63}, live64{live60.request, 64};
  // Each group has an address of its own: 127.0.74.1, .2, ...
  const struct {
    const char* name;
    std::vector<Group> groups;
    int loser;     // the group that loses its first; -1 where nobody has to go
    int newcomer;  // its address
    bool isServed;
  } cases[] = {
      {"the oldest", {served60, served60, served60, served60, served16}, 0, 9, true},
      {"who has asked for nothing first", {served60, live60, silent60, deaf60, served16}, 2, 9, true},
      {"who has been sent everything next", {live60, deaf60, served60, live60, served16}, 2, 9, true},
      {"then whose window is over", {live60, deaf60, live60, live60, deaf16}, 1, 9, true},
      {"none while all wait for more", {live60, live60, live60, live60, live16}, -1, 9, false},
      {"one of the same address when that has its share", {served30, live64}, 1, 2, true},
      {"none below the share", {served30, live63}, -1, 2, true},
  };
  const auto address = [](std::size_t last) {
    return asio::ip::make_address_v4("127.0.74." + std::to_string(last));
  };
  for (const auto& c : cases) {
    std::vector<std::vector<std::unique_ptr<TestClient>>> groups;
    std::size_t count = 0;
    for (const Group& group : c.groups) {
      auto& clients = groups.emplace_back();
      for (int i = 0; i < group.clients; ++i) {
        clients.push_back(std::make_unique<TestClient>(dataAddress_, address(groups.size())));
        clients.back()->Send(group.request);
        EXPECT_TRUE(group.request.empty() || !clients.back()->Receive().empty()) << c.name;
        ++count;
      }
    }
    TestClient newcomer(dataAddress_, address(static_cast<std::size_t>(c.newcomer)));
    newcomer.Send(served60.request);
    EXPECT_EQ(!newcomer.Receive().empty(), c.isServed) << c.name;
    if (c.loser >= 0) {
      TestClient& loser = *groups[static_cast<std::size_t>(c.loser)].front();
      loser.ReceiveAll();
      EXPECT_FALSE(loser.TimedOut()) << c.name;
    }
    const std::size_t left = count + (c.isServed && c.loser < 0 ? 1 : 0);
    EXPECT_EQ(OnServer([this] { return server_.ClientCount(); }), left) << c.name;
    groups.clear();
    newcomer.Close();
    while (OnServer([this] { return server_.Tick(), server_.ClientCount(); }) > 0) std::this_thread::yield();
  }
}

TEST_F(BaseServerOnSockets, AcceptsProbesHoweverManyStayOpen) {
  std::vector<std::unique_ptr<TestClient>> probes;
  for (int i = 0; i < 200; ++i) probes.push_back(std::make_unique<TestClient>(probeAddress_));
  EXPECT_EQ(probes.front()->ReceiveAll(), "");  // the oldest had to go
  EXPECT_FALSE(probes.front()->TimedOut());
}

}  // namespace
}  // namespace pallomir::station
