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

}  // namespace
}  // namespace pallomir::station
