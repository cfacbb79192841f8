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

using End = PacketStream::End;

WireRecord AnyRecord(std::mt19937& random) {
  WireRecord record;
  record.time = *EncodePackedTime(ToMillis({2026, 11, 22}) + static_cast<Millis>(random() % 600) * kSecond);
  if (random() % 5 == 0) record.time |= kPackedTimeFlag;
  record.latitude = static_cast<std::int32_t>(random() % 108'000'001) - 54'000'000;
  record.longitude = static_cast<std::int32_t>(random() % 216'000'001) - 108'000'000;
  record.status = static_cast<std::uint16_t>(random());
  if (random() % 40 == 0) record.latitude = 54'000'001;
  if (random() % 40 == 0) record.longitude = 108'000'001;
  if (random() % 40 == 0) record.time = 0x0F000000;
  return record;
}

Bytes PacketInWireOrder(const std::vector<WireRecord>& wireOrder) {
  return EncodePacket("0123456789AB", std::vector<WireRecord>(wireOrder.rbegin(), wireOrder.rend()));
}

TEST(PacketStream, HoldIsSetExactlyWhenAPacketEndsTheBuffer) {
  const Bytes packet = EncodePacket("0123456789AB", std::vector<WireRecord>(2));
  const auto ignore = [](std::string_view, ByteView) {};
  const struct {
    int extra;
    bool held;
    End end;
  } cases[] = {{0, true, End::kDrained},
               {1, false, End::kShortTail},
               {7, false, End::kShortTail},
               {8, false, End::kIncomplete},
               {-1, false, End::kIncomplete}};
  for (const auto& c : cases) {
    Bytes bytes = packet;
    Append(bytes, packet);
    bytes.resize(packet.size() +
                 static_cast<std::size_t>(c.extra + (c.extra < 0 ? static_cast<int>(packet.size()) : 0)));
    PacketStream stream;
    stream.Take(bytes);
    EXPECT_EQ(stream.Decode(ignore).end, c.end) << c.extra;
    EXPECT_EQ(stream.IsHeld(), c.held) << c.extra;
  }
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

TEST(PointStore, ALongTrackKeepsItsPointsWhileItsMemoryMoves) {
  std::vector<DataPoint> all(300'000);
  for (std::uint32_t j = 0; j < all.size(); ++j) all[j] = {j + 1, static_cast<std::int32_t>(j), 0, 0};
  UnitTrack track;
  for (std::size_t at = 0; at < all.size(); at += 500) track.Merge(std::span(all).subspan(at, 500));
  track.Merge(all);  // sent again as a whole
  ASSERT_EQ(track.Points().size(), 300'000u);
  EXPECT_TRUE(std::equal(all.begin(), all.end(), track.Points().begin()));
  EXPECT_LE(track.ReservedBytes(), 300'000u * 28);
  track.Clear();
  EXPECT_TRUE(track.Points().empty());
  EXPECT_LE(track.ReservedBytes(), 4u << 20);
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

// The road as a whole against the rule, cut anywhere, with a unit that is not asked for.
TEST(PacketStream, FromBytesToMilesAsTheRule) {
  std::mt19937 random(29);
  Bytes bytes;
  for (int packet = 0; packet < 300; ++packet) {
    std::vector<WireRecord> records(random() % 50);
    for (auto& record : records) record = AnyRecord(random);
    if (random() % 3 > 0) {
      std::sort(records.begin(), records.end(), [](const WireRecord& a, const WireRecord& b) {
        return WithoutFlag(a.time) < WithoutFlag(b.time);
      });
    }
    Append(bytes, EncodePacket("0123456789A" + std::string(1, "0123"[random() % 4]), records));
  }
  const auto unitOf = [](std::string_view id) { return static_cast<std::size_t>(id.back() - '0'); };
  oracles::LiteralTrack literal[4];
  ASSERT_TRUE(oracles::LiteralStream(
      bytes, [&](std::string_view id) { return unitOf(id) == 0 ? nullptr : &literal[unitOf(id)]; }));
  PointStore store;
  store.Reset(3);
  PacketStream stream;
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t piece = std::min(bytes.size() - at, std::size_t{8} + random() % 9000);
    stream.ClearHold();
    stream.Take(ByteView(bytes).subspan(at, piece));
    at += piece;
    if (stream.Size() < kPacketHeaderSize) continue;
    stream.Decode([&](std::string_view id, ByteView records) {
      if (unitOf(id) > 0) store.Gather(unitOf(id), DecodeRecords(records).rows);
    });
    store.Settle();
  }
  std::size_t points = 0;
  for (std::size_t k = 1; k <= 3; ++k) {
    const UnitTrack& track = store.Track(k);
    EXPECT_EQ(std::vector<DataPoint>(track.Points().begin(), track.Points().end()), literal[k].rows);
    EXPECT_EQ(std::vector<double>(track.Miles().begin(), track.Miles().end()), literal[k].miles);
    points += literal[k].rows.size();
  }
  EXPECT_EQ(store.PointCount(), points);
}

}  // namespace
}  // namespace pallomir
