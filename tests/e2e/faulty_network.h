#pragma once

#include <asio/awaitable.hpp>
#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/ip/udp.hpp>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace pallomir::e2e {

/// What is wrong with the way between a client and the station. Nothing, unless said.
struct Fault {
  enum class Locator {
    kHealthy,
    kGone,       ///< nobody on the port
    kSilent,     ///< never answers
    kEmpty,      ///< knows no server
    kOddLength,  ///< a character is missing
    kWrongCode,
    kNoDigits,  ///< a right code over an address that is none
    kTwice,     ///< each reply comes twice
  };
  enum class Port {
    kHealthy,
    kRefusing,
    kDeaf,  ///< connections are never made
  };
  static constexpr std::size_t kNever = static_cast<std::size_t>(-1);
  Locator locator = Locator::kHealthy;
  Port probe = Port::kHealthy;
  Port data = Port::kHealthy;
  bool hasAnswer = true;              ///< else the data connection stays silent
  std::chrono::milliseconds late{0};  ///< before every first byte that the station sends
  std::size_t pieceSize = 1 << 16;    ///< of the data stream
  std::size_t cutAt = kNever;         ///< the data connection is closed behind so many bytes
  bool isCutHard = false;             ///< by a reset
  std::size_t spoiltAt = kNever;      ///< this byte of the data stream comes wrong
};

/// Stands between a client and a station: listens where the client expects the station, passes on what it
/// hears, and does to it what the fault says. Has a thread of its own.
class FaultyNetwork {
 public:
  /// Loopback addresses. The ports are the usual ones: locator 2435, probe 18799, data 18800.
  FaultyNetwork(const std::string& clientSide, const std::string& stationSide);
  ~FaultyNetwork();
  FaultyNetwork(const FaultyNetwork&) = delete;
  FaultyNetwork& operator=(const FaultyNetwork&) = delete;

  /// From here on, for connections made from here on.
  void Set(const Fault& fault);

 private:
  using Tcp = asio::ip::tcp;
  using Udp = asio::ip::udp;

  /// One listening port, open or not as the fault says.
  struct Door {
    std::unique_ptr<Tcp::acceptor> acceptor;
    std::vector<Tcp::socket> crowd;  ///< fills the queue of a deaf port
  };

  void Apply(const Fault& fault);
  void OpenLocator();
  void OpenDoor(Door& door, std::uint16_t port, Fault::Port how);
  asio::awaitable<void> AnswerLocator(std::shared_ptr<Udp::socket> socket);
  asio::awaitable<void> Accept(Tcp::acceptor& acceptor, std::uint16_t port);
  asio::awaitable<void> Connected(Tcp::socket client, std::uint16_t port, Fault fault);
  asio::awaitable<void> PassOn(std::shared_ptr<Tcp::socket> from, std::shared_ptr<Tcp::socket> to);
  asio::awaitable<void> PassOnFaulty(std::shared_ptr<Tcp::socket> from, std::shared_ptr<Tcp::socket> to,
                                     Fault fault);
  std::string Spoilt(std::string reply) const;

  asio::ip::address_v4 clientSide_;
  asio::ip::address_v4 stationSide_;
  asio::io_context context_{1};
  Fault fault_;
  std::shared_ptr<Udp::socket> locator_;
  Door probe_;
  Door data_;
  std::thread thread_;
};

}  // namespace pallomir::e2e
