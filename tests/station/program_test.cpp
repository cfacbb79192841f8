#include <csignal>

#include "fakes/process.h"
#include "station/station_testing.h"
#include "station/wire/locator_messages.h"

namespace pallomir::station {
namespace {

TEST(Program, ServesUntilItIsTold) {
  using asio::ip::tcp, asio::ip::udp;
  TemporaryFolder folder;
  folder.Write("00000000000A/1", std::string(AsText(Bytes{})));
  const std::string config = folder.Write("station.ini", "Demo=on\n");
  const std::vector<std::string> command = {STATION_PROGRAM, "--address", "127.0.72.4", "--data",
                                            folder.Path(),   "--config",  config};
  fakes::Process station(command);
  EXPECT_TRUE(station.Await("pallomir-station ready"));

  const auto address = asio::ip::make_address("127.0.72.4");
  asio::io_context context;
  udp::socket socket(context, udp::endpoint(address, 0));
  for (const char* unit : {"000000000001", "00000000000A"}) {
    socket.send_to(asio::buffer(LocatorRequest({unit})), udp::endpoint(address, 2435));
    std::array<char, 100> reply;
    EXPECT_EQ(socket.receive(asio::buffer(reply)), 18u) << unit;
  }
  TestClient probe({address, 18799});
  TestClient data({address, 18800});
  data.Send("000000000001000000000002~2020-01-01 00:00:00~2020-01-01 03:00:00~~");
  std::string stream = data.Receive();
  EXPECT_FALSE(TakePackets(stream).empty());

  EXPECT_EQ(fakes::Process(command).Wait(), 3) << "its ports are taken";
  station.Signal(SIGTERM);
  EXPECT_EQ(station.Wait(), 0);
}

}  // namespace
}  // namespace pallomir::station
