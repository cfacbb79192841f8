#pragma once

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/steady_timer.hpp>
#include <functional>

#include "station/common/log.h"

namespace pallomir::station {

/// Opens `acceptor` on the endpoint and listens there, also where connections of an earlier station are still
/// closing. Returns what went wrong, if anything.
std::error_code Listen(asio::ip::tcp::acceptor& acceptor, const asio::ip::tcp::endpoint& endpoint);

/// Accepts connections until it is destroyed, and hands each to a function. When the system can't accept one
/// (no descriptor free), it logs that and tries again after 200 ms.
class Listener {
 public:
  using Accepted = std::function<void(asio::ip::tcp::socket)>;

  /// `acceptor` is listening. `accepted` is called on the thread that runs its context.
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
