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

/// Serves the clients on two ports: on the probe port they only see that the station can be reached, on the
/// data port they get packets. Everything runs on the thread that runs the acceptors' context.
class BaseServer {
 public:
  /// Both acceptors are listening. The source must outlive the server. `utcNow` is the time of day.
  BaseServer(asio::ip::tcp::acceptor probe, asio::ip::tcp::acceptor data, PositionSource& source,
             std::function<Millis()> utcNow, Log log);
  ~BaseServer();

  BaseServer(const BaseServer&) = delete;
  BaseServer& operator=(const BaseServer&) = delete;

  /// To be called about once a second: sends what is new and hangs up on clients that have fallen silent.
  void Tick();

  /// Sessions on the data port, some of which may have just closed.
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
  /// The session whose end would lose the least, the oldest if there are several: of those at `address`, or
  /// of all if there is none. There must be at least one.
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
