#pragma once

#include <asio/io_context.hpp>
#include <asio/ip/udp.hpp>
#include <functional>
#include <optional>

#include "base/bytes.h"
#include "station/common/log.h"

namespace pallomir::station {

/// Tells clients where the Base Server of their units is: here, if the station knows at least one of the
/// units, or if the question names none.
class Locator {
 public:
  using Knows = std::function<bool(std::string_view unitId)>;

  /// Replies name the address `advertised`, or without one the address that the question came to, and the
  /// port of `socket`, which is bound. Everything runs on the thread that runs the socket's context.
  Locator(asio::ip::udp::socket socket, std::optional<asio::ip::address_v4> advertised, Knows knows, Log log);

 private:
  void Wait();
  void AnswerAll();
  bool AnswerOne();
  Bytes Reply(ByteView request, std::uint32_t cameTo);

  asio::ip::udp::socket socket_;
  std::optional<asio::ip::address_v4> advertised_;
  Knows knows_;
  RateLimitedLog log_;
};

}  // namespace pallomir::station
