#include "tracking/packet_stream.h"

#include <gtest/gtest.h>

#include <random>

#include "base/check_code.h"
#include "oracles/literal_rules.h"
#include "tracking/packets.h"
#include "tracking/point_store.h"

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
  if (random() % 40 == 0) record.time = 0x0F000000;
  return record;
}

Bytes PacketInWireOrder(const std::vector<WireRecord>& wireOrder) {
  return EncodePacket("0123456789AB", std::vector<WireRecord>(wireOrder.rbegin(), wireOrder.rend()));
}

TEST(PacketStream, AnyCutOfTheStreamGivesTheSamePackets) {
  std::mt19937 random(11);
  Bytes stream;
  std::size_t sent = 0;
  for (int i = 0; i < 60; ++i) {
    std::vector<WireRecord> records(random() % 9);
    sent += records.size();
    Append(stream, EncodePacket("0123456789AB", records));
  }
  for (int run = 0; run < 200; ++run) {
    PacketStream buffer;
    std::size_t packets = 0;
    std::size_t records = 0;
    for (std::size_t at = 0; at < stream.size();) {
      const std::size_t piece = std::min(stream.size() - at, std::size_t{1} + random() % 300);
      buffer.ClearHold();
      buffer.Take(ByteView(stream).subspan(at, piece));
      at += piece;
      buffer.TakePending();
      if (buffer.Size() < kPacketHeaderSize) continue;  // the client pauses
      const auto outcome = buffer.Decode([&](std::string_view id, ByteView bytes) {
        EXPECT_EQ(id, "0123456789AB");
        ++packets;
        records += bytes.size() / kRecordSize;
      });
      ASSERT_EQ(outcome.message, "");
    }
    ASSERT_EQ(packets, 60u);
    ASSERT_EQ(records, sent);
    ASSERT_TRUE(buffer.IsEmpty());
  }
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

TEST(PacketStream, WhileHeldArrivalsWaitAndAreDecodedAheadOfNewOnes) {
  PacketStream stream;
  std::vector<std::size_t> sizes;
  const auto note = [&sizes](std::string_view, ByteView bytes) {
    sizes.push_back(bytes.size() / kRecordSize);
  };
  const auto packet = [](std::size_t records) {
    return EncodePacket("0123456789AB", std::vector<WireRecord>(records));
  };
  stream.Take(packet(1));
  stream.Decode(note);
  stream.Take(packet(2));
  EXPECT_EQ(stream.PendingSize(), packet(2).size());
  stream.Decode(note);
  EXPECT_EQ(sizes, (std::vector<std::size_t>{1}));
  stream.ClearHold();
  stream.Take(packet(3));
  stream.Decode(note);
  EXPECT_EQ(sizes, (std::vector<std::size_t>{1, 2, 3}));
}

TEST(PacketStream, GarbageNeverReachesTheStoreNorStaysInMemory) {
  std::mt19937 random(5);
  for (int run = 0; run < 3000; ++run) {
    PacketStream stream;
    Bytes bytes(random() % 200);
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random() % 4 ? 0 : random());
    stream.Take(bytes);
    const auto outcome =
        stream.Decode([](std::string_view, ByteView) { FAIL() << "garbage with a right check code"; });
    ASSERT_EQ(stream.Size() == 0, outcome.end == End::kDrained);
  }
}

TEST(PointStore, MergesAsTheRule) {
  std::mt19937 random(3);
  for (int run = 0; run < 60; ++run) {
    UnitTrack track;
    oracles::LiteralTrack literal;
    for (int packet = 0; packet < 12; ++packet) {
      std::vector<WireRecord> wireOrder(random() % 40);
      for (auto& record : wireOrder) record = AnyRecord(random);
      const Bytes bytes = PacketInWireOrder(wireOrder);
      track.Merge(DecodeRecords(ByteView(bytes).subspan(kPacketHeaderSize + kUnitIdSize)).rows);
      oracles::LiteralMerge(literal, wireOrder);
      ASSERT_EQ(std::vector<DataPoint>(track.Points().begin(), track.Points().end()), literal.rows) << run;
      ASSERT_EQ(std::vector<double>(track.Miles().begin(), track.Miles().end()), literal.miles) << run;
    }
  }
}

TEST(PointStore, TheNewestOfTwoUnitsAtOneTimeIsTheFirstUnits) {
  PointStore store;
  WorldBox box;
  store.Reset(3);
  EXPECT_EQ(store.Newest(), nullptr);
  store.Merge(1, std::vector<DataPoint>{{5, 1, 1, 0}}, box);
  store.Merge(2, std::vector<DataPoint>{{5 | kPackedTimeFlag, 2, 2, 0}}, box);
  EXPECT_EQ(store.Newest()->x, 1);
  store.Merge(3, std::vector<DataPoint>{{6, 3, -3, 0}}, box);
  EXPECT_EQ(store.Newest()->x, 3);
  EXPECT_EQ(box, (WorldBox{1, 3, -3, 2}));
  EXPECT_EQ(store.PointCount(), 3u);
}

TEST(Packets, RecordsAndPacketsGoThereAndBack) {
  const std::vector<WireRecord> records{{1, -2, 3, 0x0C64},
                                        {0xFFFFFFFF, -2147483647 - 1, 2147483647, 0xFFFF}};
  const Bytes packet = EncodePacket("0123456789AB", records);
  EXPECT_EQ(packet.size(), 48u);
  EXPECT_EQ(ReadBigEndian32(packet, 4), 40u);
  EXPECT_EQ(DecodeRecord(packet, 20), records[1]) << "newest first";
  EXPECT_EQ(DecodeRecord(packet, 34), records[0]);
}

}  // namespace
}  // namespace pallomir
