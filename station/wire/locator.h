#pragma once

#include <asio/io_context.hpp>
#include <asio/ip/udp.hpp>
#include <functional>
#include <optional>

#include "base/bytes.h"
#include "station/common/log.h"

namespace pallomir::station {

/// Answers who asks where a unit's Base Server is: here, when the station knows at least one of the units, or
/// when no unit is named.
class Locator {
 public:
  using Knows = std::function<bool(std::string_view unitId)>;

  /// `advertised` is the address that replies name; without it, the one that the question came to. `socket`
  /// is bound; its own port is the reply port.
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
