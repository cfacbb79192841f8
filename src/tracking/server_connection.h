#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "base/bytes.h"
#include "base/civil_time.h"
#include "base/trace.h"
#include "platform/endpoint.h"
#include "platform/event_loop.h"

namespace pallomir {

/// The locator's datagram port.
inline constexpr int kLocatorPort = 2435;

/// The data request: the 12-character IDs, "~", start and end of the window in UTC, each followed by "~", and
/// a last "~".
std::string DataRequestText(std::string_view unitIds, Millis startUtc, Millis endUtc);

/// A Base Server's entry in a locator reply.
struct BaseServerAddress {
  std::string address;  ///< dotted IPv4
  int replyPort = 0;    ///< kept, not used for connecting
};

/// What a locator reply says.
struct LocatorReply {
  enum class Kind {
    kNoServer,       ///< exactly 6 characters
    kWrongLength,    ///< not 6 and a multiple of 12
    kCheckMismatch,  ///< the check code is another
    kMalformed,      ///< the right code over digits that are none
    kServer,
  };
  Kind kind = Kind::kWrongLength;
  BaseServerAddress server;  ///< the first entry
  Bytes expectedCheck;       ///< of a mismatch
};

/// The reply without regard to what was reported before. Of a reply of exactly 6 characters the code is
/// checked too: kNoServer with an expected check means a mismatch.
LocatorReply ParseLocatorReply(ByteView datagram);

/// Finds the Base Server and keeps the connection to it: the locator is asked by a datagram (WS_Client_A),
/// the server is probed on the port below the data port (WS_Client_B), then asked for data (WS_Client_C).
///
///     Restart -> locating -> probing -> connecting -> streaming
///                    \__________\___________\____________\__ any failure: `report`
class ServerConnection {
 public:
  enum class State { kIdle, kLocating, kProbing, kConnecting, kStreaming, kClosedByServer, kReporting };

  /// What the connection needs to know and whom it tells. All calls come from the event loop.
  struct Host {
    std::function<std::string()> locatorRequest;  ///< "D" and the IDs of the enabled units
    std::function<std::string()> dataRequest;     ///< empty when no unit is enabled
    std::function<int()> portBase;
    std::function<bool()> isClosing;
    std::function<void(const std::string&)> caption;
    std::function<void(const std::string&)> message;
    /// A failure for the retry dialog. Its answer comes back through Retry or StopRetrying.
    std::function<void(const std::string& code, const std::string& message)> report;
    std::function<void(ByteView)> arrived;
    std::string locatorHost;
    std::string faqAddress;
  };

  ServerConnection(DatagramEndpoint& locator, StreamEndpoint& probe, StreamEndpoint& data, EventLoop& loop,
                   Trace& trace, Host host);

  /// Closes all three endpoints and asks the locator anew.
  void Restart();

  /// The answers of the retry dialog.
  void Retry();
  void StopRetrying();

  /// Closes every endpoint that is not closed, for good.
  void Close();

  State CurrentState() const { return state_; }

 private:
  /// A locator that does not answer in this time is reported as timed out.
  static constexpr int kLocatorTimeoutMilliseconds = 15'000;

  void CloseAll();
  void OnLocatorReply(ByteView datagram);
  void OnServer(const BaseServerAddress& server);
  void OnProbeConnected();
  void OnDataConnected();
  void OnDatagramError(const EndpointError& error);
  void OnProbeError(const EndpointError& error);
  void OnStreamError(const char* endpoint, const EndpointError& error);
  void OnClosedByPeer(const char* endpoint);
  void ReportLocator(const std::string& code, const std::string& message);
  void Report(const std::string& code, const std::string& message);
  std::string FaqLine() const;

  DatagramEndpoint& locator_;
  StreamEndpoint& probe_;
  StreamEndpoint& data_;
  Trace& trace_;
  Host host_;
  std::unique_ptr<Timer> locatorTimeout_;
  State state_ = State::kIdle;
  std::string serverAddress_;
  bool reported_ = false;             // a locator problem was reported and not retried yet
  bool retryClearsReported_ = false;  // the open report is of such a problem
};

}  // namespace pallomir
