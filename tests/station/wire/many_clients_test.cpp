#include <malloc.h>

#include <chrono>
#include <memory>
#include <thread>

#include "station/station_testing.h"
#include "station/wire/base_server.h"

// Two hundred clients at once, of which fifty never take a byte.

namespace pallomir::station {
namespace {

using asio::ip::tcp;

constexpr int kClients = 200;
constexpr int kDeaf = 50;
constexpr std::int64_t kRecords = 72'000;  // 1 MB for each, more than a socket holds
constexpr std::size_t kAnswerSize = 100 * (kPacketHeaderSize + kUnitIdSize + kRecordsPerPacket * kRecordSize);
constexpr std::size_t kLiveSize = kPacketHeaderSize + kUnitIdSize + kRecordSize;
const std::string kUnit = "00000000000A";

std::size_t AllocatedBytes() { return ::mallinfo2().uordblks; }

/// A client whose reading is driven by the context that it shares with the others.
struct Reader {
  explicit Reader(asio::io_context& context) : socket(context) {}

  void Receive(std::size_t until) {
    wanted = until;
    if (received < wanted) ReadSome();
  }

  void ReadSome() {
    socket.async_read_some(asio::buffer(buffer), [this](std::error_code error, std::size_t count) {
      if (error) return;
      stream.append(buffer.data(), count);
      received += count;
      TakeWholePackets();
      if (received < wanted) ReadSome();
    });
  }

  // Checked by its code and its newest record, and dropped at once.
  void TakeWholePackets() {
    std::size_t taken = 0;
    while (stream.size() >= taken + kPacketHeaderSize) {
      const ByteView rest = AsBytes(stream).subspan(taken);
      const std::size_t size = ReadBigEndian32(rest, 4);
      if (rest.size() < kPacketHeaderSize + size) break;
      const ByteView payload = rest.subspan(kPacketHeaderSize, size);
      next += static_cast<std::int64_t>((size - kUnitIdSize) / kRecordSize);
      isInOrder = isInOrder && CheckCode(payload) == ReadBigEndian32(rest, 0) &&
                  DecodeRecord(payload, kUnitIdSize) == RecordAt(next - 1);
      taken += kPacketHeaderSize + size;
    }
    stream.erase(0, taken);
  }

  tcp::socket socket;
  std::array<char, 16384> buffer{};
  std::string stream;
  std::size_t received = 0;
  std::size_t wanted = 0;
  std::int64_t next = 0;
  bool isInOrder = true;
};

TEST(ManyClients, ThoseWhoNeverReadHoldUpNobodyAndCostLittle) {
  FakeSource source;
  source.units[kUnit] = RecordsAt(0, kRecords);
  asio::io_context serverContext;
  const tcp::endpoint anyPort(asio::ip::make_address("127.0.73.2"), 0);
  tcp::acceptor probe(serverContext, anyPort), data(serverContext, anyPort);
  const tcp::endpoint address = data.local_endpoint();
  BaseServer server(
      std::move(probe), std::move(data), source, [] { return kNoon; }, [](const std::string&) {});

  // Both sides run on this thread, by turns: what is allocated between two moments can be told.
  asio::io_context clientContext;
  std::vector<std::unique_ptr<Reader>> clients;
  const std::string request = kUnit + "~2026-11-22 12:00:00~2026-11-30 00:00:00~~";
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  const auto run = [&](auto isDone) {
    clientContext.restart();
    while (!isDone() && std::chrono::steady_clock::now() < until) {
      if (serverContext.poll() + clientContext.poll() == 0) std::this_thread::yield();
    }
    EXPECT_TRUE(isDone());
  };

  for (int i = 0; i < kClients; ++i) clients.push_back(std::make_unique<Reader>(clientContext));
  const std::size_t before = AllocatedBytes();
  for (std::size_t i = 0; i < clients.size(); ++i) {
    const auto& client = clients[i];
    client->socket.open(tcp::v4());
    client->socket.bind({asio::ip::make_address("127.0.73." + std::to_string(10 + i % 4)), 0});
    client->socket.connect(address);
    asio::write(client->socket, asio::buffer(request));
  }
  const auto haveAll = [&](std::size_t size) {
    return std::ranges::all_of(std::span(clients).subspan(kDeaf),
                               [size](const auto& client) { return client->received == size; });
  };
  for (int i = kDeaf; i < kClients; ++i) clients[static_cast<std::size_t>(i)]->Receive(kAnswerSize);
  run([&] { return haveAll(kAnswerSize); });
  EXPECT_EQ(server.ClientCount(), static_cast<std::size_t>(kClients));
  // Some 50 kB for each who waits with packets made, and what a connection itself needs.
  constexpr std::size_t kMostAClient = 128 * 1024;
  EXPECT_LT(AllocatedBytes() - before, kClients * kMostAClient);

  // Live reports come through while the deaf ones still wait, tick after tick.
  constexpr std::int64_t kLive = 20;
  for (std::int64_t i = 0; i < kLive; ++i) {
    source.units[kUnit].push_back(RecordAt(kRecords + i));
    server.Tick();
    const std::size_t size = kAnswerSize + static_cast<std::size_t>(i + 1) * kLiveSize;
    for (int c = kDeaf; c < kClients; ++c) clients[static_cast<std::size_t>(c)]->Receive(size);
    run([&] { return haveAll(size); });
  }
  EXPECT_LT(AllocatedBytes() - before, kClients * kMostAClient);
  for (const auto& client : clients) {
    EXPECT_TRUE(client->isInOrder);
    EXPECT_EQ(client->stream, "");
  }

  // One of the deaf begins to listen and has missed nothing.
  clients.front()->Receive(2 * kAnswerSize);  // all there is
  run([&] { return clients.front()->next == kRecords + kLive; });
  EXPECT_TRUE(clients.front()->isInOrder);

  // When they have left, nothing of them is left.
  for (const auto& client : clients) client->socket.close();
  run([&] {
    server.Tick();
    return server.ClientCount() == 0;
  });
}

}  // namespace
}  // namespace pallomir::station
