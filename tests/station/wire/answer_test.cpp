#include "station/wire/answer.h"

#include "station/station_testing.h"

namespace pallomir::station {
namespace {

const std::string kA = "00000000000A", kB = "00000000000B";

std::vector<Packet> AllPackets(Answer& answer) {
  std::string stream;
  while (answer.HasMore()) stream += AsText(answer.NextPacket());
  auto packets = TakePackets(stream);
  EXPECT_TRUE(stream.empty());
  return packets;
}

TEST(Answer, CutsPacketsAtTheirLargestSize) {
  for (const std::int64_t count : {0, 1, 719, 720, 721, 1440, 1441}) {
    FakeSource source;
    source.units[kA] = RecordsAt(0, count);
    Answer answer(source, {{kA}, {kNoon, kNoon + kDay}});
    std::vector<WireRecord> received;
    for (const Packet& packet : AllPackets(answer)) {
      EXPECT_GE(packet.oldestFirst.size(), 1u);
      EXPECT_LE(packet.oldestFirst.size(), kRecordsPerPacket);
      received.insert(received.end(), packet.oldestFirst.begin(), packet.oldestFirst.end());
    }
    EXPECT_EQ(received, source.units[kA]) << count;
  }
}

TEST(Answer, SendsTheOldestPacketFirstAcrossUnits) {
  FakeSource source;
  source.units[kA] = RecordsAt(100, 1000);
  source.units[kB] = RecordsAt(0, 1500);
  Answer answer(source, {{kA, kB}, {kNoon, kNoon + kDay}});
  std::vector<std::string> order;
  std::uint32_t latest = 0;
  for (const Packet& packet : AllPackets(answer)) {
    order.push_back(packet.unitId);
    EXPECT_GT(packet.oldestFirst.front().time, latest);
    latest = packet.oldestFirst.front().time;
  }
  EXPECT_EQ(order, (std::vector<std::string>{kB, kA, kB, kA, kB}));
}

TEST(Answer, SendsTheWindowWithBothEnds) {
  FakeSource source;
  source.units[kA] = RecordsAt(0, 100);
  Answer answer(source, {{kA}, {kNoon + 10 * kSecond, kNoon + 20 * kSecond}});
  const auto packets = AllPackets(answer);
  ASSERT_EQ(packets.size(), 1u);
  EXPECT_EQ(packets[0].oldestFirst, RecordsAt(10, 11));

  Answer none(source, {{kA, "0000000000FF"}, {kNoon + 20 * kSecond, kNoon + 10 * kSecond}});
  EXPECT_FALSE(none.HasMore());
}

TEST(Answer, GoesOnWithWhatIsNewAndOnlyThat) {
  FakeSource source;
  source.units[kA] = RecordsAt(0, 5);
  Answer answer(source, {{kA, kB}, {kNoon, kNoon + kMinute}});
  EXPECT_EQ(AllPackets(answer).size(), 1u);

  source.units[kA].push_back(RecordAt(8));
  source.units[kA].push_back(RecordAt(61));  // behind the window
  source.units[kB] = {RecordAt(7)};
  EXPECT_FALSE(answer.HasMore());
  answer.LookForNew();
  const auto packets = AllPackets(answer);
  ASSERT_EQ(packets.size(), 2u);
  EXPECT_EQ(packets[0].unitId, kB);
  EXPECT_EQ(packets[1].oldestFirst, (std::vector<WireRecord>{RecordAt(8)}));
}

}  // namespace
}  // namespace pallomir::station
