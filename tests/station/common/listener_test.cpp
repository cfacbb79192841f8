#include "station/common/listener.h"

#include "station/station_testing.h"

namespace pallomir::station {
namespace {

using asio::ip::tcp;

TEST(Listener, AcceptsAllThatWaitInATurn) {
  asio::io_context context;
  tcp::acceptor acceptor(context, {asio::ip::make_address("127.0.72.5"), 0});
  const tcp::endpoint address = acceptor.local_endpoint();
  std::vector<tcp::socket> accepted;
  std::vector<std::unique_ptr<TestClient>> clients;
  const Listener listener(
      std::move(acceptor), [&accepted](tcp::socket socket) { accepted.push_back(std::move(socket)); },
      [](const std::string&) {});
  constexpr std::size_t kWaiting = 100;
  for (std::size_t round = 1; round <= 2; ++round) {
    for (std::size_t i = 0; i < kWaiting; ++i) clients.push_back(std::make_unique<TestClient>(address));
    int turns = 0;
    while (accepted.size() < round * kWaiting && context.run_one_for(std::chrono::seconds(20)) == 1) ++turns;
    EXPECT_EQ(accepted.size(), round * kWaiting);
    EXPECT_LE(turns, 2);  // one may find nothing
  }
}

}  // namespace
}  // namespace pallomir::station
