#include "tracking/packet_stream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "base/check_code.h"
#include "oracles/literal_rules.h"
#include "tracking/packets.h"
#include "tracking/point_store.h"
#include "tracking/record_rows.h"

namespace pallomir {
namespace {

Bytes PacketInWireOrder(const std::vector<WireRecord>& wireOrder) {
  return EncodePacket("0123456789AB", std::vector<WireRecord>(wireOrder.rbegin(), wireOrder.rend()));
}

TEST(PacketStream, ManyWholePacketsLeaveNoMoreMemoryThanOneTakes) {
  const Bytes packet = EncodePacket("0123456789AB", std::vector<WireRecord>(kRecordsPerPacket));
  PacketStream stream;
  for (std::size_t size = 0; size < std::size_t{5} << 20; size += packet.size()) stream.Take(packet);
  stream.Decode([](std::string_view, ByteView) {});
  EXPECT_LE(stream.ReservedBytes(), std::size_t{1} << 20);
  stream.Take(Bytes(std::size_t{2} << 20));  // waits behind the batch
  stream.Clear();
  EXPECT_LE(stream.ReservedBytes(), std::size_t{1} << 20);
}

// What a hostile or broken sender may do with the order of its records and packets: the track is the rule's
// after every batch, however many packets a batch has.
TEST(PointStore, BatchesInAnyOrderMergeAsTheRule) {
  constexpr Millis kStart = 1'795'000'000'000;
  const auto at = [](Millis second) {
    WireRecord record{*EncodePackedTime(kStart + second * kSecond), 0, 0, 0};
    record.latitude = static_cast<std::int32_t>(second * 7919 % 108'000'001) - 54'000'000;
    record.longitude = static_cast<std::int32_t>(second * 104'729 % 216'000'001) - 108'000'000;
    return record;
  };
  const struct {
    const char* name;
    Millis (*second)(Millis packet, Millis record, std::mt19937& random);
  } senders[] = {
      {"newest last", [](Millis p, Millis r, std::mt19937&) { return p * 20 - r; }},
      {"oldest last", [](Millis p, Millis r, std::mt19937&) { return 9000 - p * 20 - r; }},
      {"the same again", [](Millis p, Millis r, std::mt19937&) { return p % 3 * 20 - r; }},
      {"interleaved", [](Millis p, Millis r, std::mt19937&) { return 9000 - p % 7 - r * 7 + p / 7 * 100; }},
      {"overlapping", [](Millis p, Millis r, std::mt19937&) { return 5000 + p * (p % 2 ? 9 : -9) - r; }},
      {"within the packet backwards", [](Millis p, Millis r, std::mt19937&) { return p * 20 + r; }},
      {"at random",
       [](Millis, Millis, std::mt19937& random) { return static_cast<Millis>(random() % 9000); }},
  };
  std::mt19937 random(17);
  for (const auto& sender : senders) {
    PointStore store;
    store.Reset(1);
    oracles::LiteralTrack literal;
    for (Millis packet = 0; packet < 90; ++packet) {
      std::vector<WireRecord> wireOrder(random() % 20);
      for (std::size_t r = 0; r < wireOrder.size(); ++r) {
        wireOrder[r] = at(10'000 + sender.second(packet, static_cast<Millis>(r), random));
        wireOrder[r].status = static_cast<std::uint16_t>(packet);  // of equal times the first stays
      }
      const Bytes bytes = PacketInWireOrder(wireOrder);
      store.Gather(1, DecodeRecords(ByteView(bytes).subspan(kPacketHeaderSize + kUnitIdSize)).rows);
      oracles::LiteralMerge(literal, wireOrder);
      if (random() % 8 > 0) continue;
      store.Settle();
      const UnitTrack& track = store.Track(1);
      ASSERT_EQ(std::vector<DataPoint>(track.Points().begin(), track.Points().end()), literal.rows)
          << sender.name;
      ASSERT_EQ(std::vector<double>(track.Miles().begin(), track.Miles().end()), literal.miles)
          << sender.name;
      ASSERT_EQ(store.PointCount(), literal.rows.size()) << sender.name;
    }
  }
}

// Half a million points, the oldest packet last, all in one batch: a store that merges at every packet moves
// 14 billion points for it, and the test runs into its time limit.
TEST(PointStore, ABatchWithTheOldestLastIsNotQuadratic) {
  UnitTrack track;
  const std::uint32_t packets = 60'000;
  for (std::uint32_t p = packets; p > 0; --p) {
    std::vector<DataPoint> rows(8);
    for (std::uint32_t r = 0; r < 8; ++r) rows[r] = {p * 8 + r, static_cast<std::int32_t>(p), 0, 0};
    track.Gather(rows);
  }
  track.Settle();
  ASSERT_EQ(track.Points().size(), packets * 8);
  EXPECT_LE(track.ReservedBytes(), packets * 8 * 28) << "what waited keeps no memory";
  EXPECT_TRUE(std::is_sorted(track.Points().begin(), track.Points().end(),
                             [](const DataPoint& a, const DataPoint& b) { return a.time < b.time; }));
}

TEST(Packets, EveryWayToDecodeRowsGivesTheRecordsOldestFirst) {
  std::mt19937 random(23);
  for (std::size_t count = 0; count < 40; ++count) {
    // Exactly as large as the records, so that a read beyond them is found where memory is checked.
    Bytes records(count * kRecordSize);
    for (auto& byte : records) byte = static_cast<std::uint8_t>(random());
    for (const RecordKernel kernel : RecordKernels()) {
      for (std::size_t offset = 0; offset < 2; ++offset) {
        std::vector<DataPoint> rows(count + offset + 1, DataPoint{1, 2, 3, 4});
        kernel(records, std::span(rows).subspan(offset, count));
        for (std::size_t j = 0; j < count; ++j) {
          const WireRecord r = DecodeRecord(records, (count - 1 - j) * kRecordSize);
          ASSERT_EQ(rows[offset + j], (DataPoint{r.time, r.latitude, r.longitude, r.status}));
        }
        ASSERT_EQ(rows.back(), (DataPoint{1, 2, 3, 4}));
      }
    }
  }
}

}  // namespace
}  // namespace pallomir
