#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/bytes.h"

namespace pallomir {

/// Error numbers as the messages show them.
inline constexpr int kErrorTimedOut = 10060;
inline constexpr int kErrorRefused = 10061;

struct EndpointError {
  int number = 0;           ///< one of the 10000s, see above; the others come from the implementation's table
  std::string description;  ///< words for the user
  int statusCode = 0;       ///< the system's own code
};

/// What the three network endpoints have in common. All callbacks come from the event loop; after Close none
/// of the closed connection comes any more. One that has failed, or was closed by its peer, is closed.
class Endpoint {
 public:
  virtual ~Endpoint() = default;
  std::function<void(ByteView)> arrived;
  std::function<void(const EndpointError&)> failed;
  /// A port outside 1..65535 is reported through `failed`.
  virtual void Connect(const std::string& host, int port) = 0;
  virtual void Send(ByteView bytes) = 0;
  virtual void Close() = 0;
  virtual bool IsClosed() const = 0;
};

/// A connected datagram socket, so that a dead peer is reported. `arrived` has one whole datagram.
class DatagramEndpoint : public Endpoint {};

class StreamEndpoint : public Endpoint {
 public:
  std::function<void()> connected;
  /// The other side closed the connection in good order: no error.
  std::function<void()> closedByPeer;
  /// While false nothing is taken from the system, so that the sender is held up.
  virtual void SetReading(bool reading) = 0;
};

}  // namespace pallomir
