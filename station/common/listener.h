#pragma once

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/steady_timer.hpp>
#include <functional>

#include "station/common/log.h"

namespace pallomir::station {

/// Opens `acceptor` at the endpoint and listens there; the port may still have connections of a station that
/// has ended. Why not, where it can't.
std::error_code Listen(asio::ip::tcp::acceptor& acceptor, const asio::ip::tcp::endpoint& endpoint);

/// Accepts connections for ever, all that wait in one turn. Where the system can't (no descriptor free), it
/// logs and tries again soon.
class Listener {
 public:
  using Accepted = std::function<void(asio::ip::tcp::socket)>;

  Listener(asio::ip::tcp::acceptor acceptor, Accepted accepted, Log log);

 private:
  void Wait();
  void AcceptAll();
  void AcceptLater();

  asio::ip::tcp::acceptor acceptor_;
  asio::steady_timer retry_;
  Accepted accepted_;
  RateLimitedLog log_;
};

}  // namespace pallomir::station
