#pragma once

#include <asio/ip/tcp.hpp>
#include <chrono>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <optional>

#include "station/common/listener.h"
#include "station/common/log.h"
#include "station/wire/data_session.h"

namespace pallomir::station {

/// The side that clients get their data from: a port that only shows that the station can be reached, and the
/// port that sends packets. All on the thread that runs the sockets' context.
class BaseServer {
 public:
  /// Both acceptors listen. The source must outlive the server.
  BaseServer(asio::ip::tcp::acceptor probe, asio::ip::tcp::acceptor data, PositionSource& source,
             std::function<Millis()> utcNow, Log log);
  ~BaseServer();

  BaseServer(const BaseServer&) = delete;
  BaseServer& operator=(const BaseServer&) = delete;

  /// To be called about once a second: sends what is new and hangs up on who has fallen silent.
  void Tick();

  std::size_t ClientCount() const { return sessions_.size(); }

 private:
  struct Probe {
    std::shared_ptr<asio::ip::tcp::socket> socket;
    std::chrono::steady_clock::time_point deadline;
  };

  void AcceptProbe(asio::ip::tcp::socket socket);
  void AcceptClient(asio::ip::tcp::socket socket);
  void DropClosed();
  using Session = std::list<std::shared_ptr<DataSession>>::iterator;
  /// Of those at `address` (of all without one) the session of the least use, the oldest of them.
  Session LeastUseful(const std::optional<asio::ip::address>& address);
  void Drop(Session session);

  PositionSource& source_;
  std::function<Millis()> utcNow_;
  Log log_;
  RateLimitedLog clientLog_;
  std::deque<Probe> probes_;                          ///< oldest first
  std::list<std::shared_ptr<DataSession>> sessions_;  ///< oldest first
  Listener probeListener_;
  Listener dataListener_;
};

}  // namespace pallomir::station
