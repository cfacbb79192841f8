#include "station/wire/locator.h"

#include <asio/ip/udp.hpp>

#include "station/station_testing.h"
#include "station/wire/locator_messages.h"

namespace pallomir::station {
namespace {

using asio::ip::udp;

const std::string kKnown = "0013A20040B1", kUnknown = "0013A20040FF";

Bytes WithCheck(std::string_view text) {
  Bytes message = ShortCheckForm(AsBytes(text));
  Append(message, AsBytes(text));
  return message;
}

TEST(LocatorMessages, ReadWhatClientsAsk) {
  EXPECT_EQ(ParseLocatorRequest(LocatorRequest({kKnown, kUnknown})),
            (std::vector<std::string>{kKnown, kUnknown}));
  EXPECT_EQ(ParseLocatorRequest(LocatorRequest({})), std::vector<std::string>{});
  EXPECT_TRUE(ParseLocatorRequest(LocatorRequest(std::vector(kMaxUnitsPerRequest, kKnown))));
}

TEST(LocatorMessages, RefuseWhatIsMalformed) {
  Bytes wrongCode = LocatorRequest({kKnown}), wrongLength = wrongCode, cut = wrongCode;
  wrongCode[0] ^= 1;
  wrongLength[5] ^= 1;
  cut.pop_back();
  const Bytes malformed[] = {
      {},
      Bytes(5, 0),
      WithCheck(""),
      WithCheck(kKnown),              // no D
      WithCheck("D" + kKnown + "0"),  // not a multiple of 12
      WithCheck("D0013a20040b1"),     // lower case
      WithCheck("D0013A20040B~"),     //
      LocatorRequest(std::vector(kMaxUnitsPerRequest + 1, kKnown)),
      wrongCode,
      wrongLength,
      cut,
  };
  for (const Bytes& datagram : malformed) EXPECT_FALSE(ParseLocatorRequest(datagram)) << AsText(datagram);
}

TEST(LocatorMessages, AnswerInUpperCaseHexadecimal) {
  const Bytes reply = LocatorReply(0xC0A80AFE, 0x983);
  EXPECT_EQ(AsText(reply).substr(kShortCheckSize), "C0A80AFE0983");
  EXPECT_TRUE(std::ranges::equal(WithCheck("C0A80AFE0983"), reply));
  EXPECT_EQ(EmptyLocatorReply(), ShortCheckForm({}));
}

class LocatorOnASocket : public testing::Test {
 protected:
  // The reply to `question`; the locator gets a turn after it was sent.
  std::string Ask(const Bytes& question, std::optional<asio::ip::address_v4> advertised = {}) {
    context_.restart();
    context_.poll();  // the end of the locator before
    udp::socket server(context_, udp::endpoint(asio::ip::address_v4::any(), 0));
    port_ = server.local_endpoint().port();
    Locator locator(
        std::move(server), advertised, [](std::string_view id) { return id == kKnown; },
        [this](const std::string& line) { log_.push_back(line); });
    udp::socket client(context_, udp::endpoint(address_, 0));
    client.send_to(asio::buffer(question), udp::endpoint(address_, port_));
    context_.restart();
    context_.run_one_for(std::chrono::seconds(20));
    std::array<char, 100> reply;
    client.non_blocking(true);
    udp::endpoint from;
    std::error_code none;
    const std::size_t count = client.receive_from(asio::buffer(reply), from, 0, none);
    EXPECT_TRUE(count == 0 || from == udp::endpoint(address_, port_));
    return std::string(reply.data(), count);
  }

  const asio::ip::address_v4 address_ = asio::ip::make_address_v4("127.0.72.1");
  asio::io_context context_;
  std::uint16_t port_ = 0;
  std::vector<std::string> log_;
};

TEST_F(LocatorOnASocket, NamesTheAddressOfAUnitThatItKnows) {
  const std::uint32_t asked = 0x7F004801, advertised = 0xC0000207;
  const std::tuple<std::vector<std::string>, std::optional<asio::ip::address_v4>,
                   std::optional<std::uint32_t>>
      cases[] = {
          {{kUnknown, kKnown}, {}, asked},
          {{}, {}, asked},
          {{kKnown}, asio::ip::address_v4(advertised), advertised},
          {{kUnknown}, {}, {}},
      };
  for (const auto& [units, advertised, address] : cases) {
    const std::string reply = Ask(LocatorRequest(units), advertised);
    EXPECT_EQ(reply, AsText(address ? LocatorReply(*address, port_) : EmptyLocatorReply()));
  }
  EXPECT_TRUE(log_.empty());
}

TEST_F(LocatorOnASocket, DropsWhatIsMalformed) {
  EXPECT_EQ(Ask(Bytes(30, 'x')), "");
  EXPECT_EQ(log_.size(), 1u);
  EXPECT_EQ(Ask(Bytes(60000, 'x')), "");
}

}  // namespace
}  // namespace pallomir::station
