#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "base/bytes.h"
#include "base/civil_time.h"
#include "base/trace.h"
#include "platform/endpoint.h"
#include "platform/event_loop.h"

namespace pallomir {

/// The locator's datagram port.
inline constexpr int kLocatorPort = 2435;

/// What a user reads who has enabled more units than one locator request can name.
std::string TooManyUnitsText(std::size_t enabledCount);

/// The data request: the 12-character IDs, "~", start and end of the window in UTC, each followed by "~", and
/// a last "~".
std::string DataRequestText(std::string_view unitIds, Millis startUtc, Millis endUtc);

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
  std::string server;   ///< dotted IPv4 of the first entry
  Bytes expectedCheck;  ///< of a mismatch
};

/// The reply without regard to what was reported before. Of a reply of exactly 6 characters the code is
/// checked too: kNoServer with an expected check means a mismatch.
LocatorReply ParseLocatorReply(ByteView datagram);

/// The ends of the wire, by what they are for.
struct ServerEndpoints {
  DatagramEndpoint& locator;  ///< WS_Client_A, to the Website Server
  StreamEndpoint& probe;      ///< WS_Client_B: whether the Base Server can be reached
  StreamEndpoint& data;       ///< WS_Client_C: the points of the Base Server
};

/// How far a connection is, and what it has to know there. The order is that of ServerConnection::State.
namespace connection_phase {

struct Idle {};
struct Locating {
  int silentSeconds = 0;  ///< since the locator was asked first
  std::string unusable;   ///< why an answer could not be used; the question is still open
};
struct Probing {
  std::string server;  ///< dotted IPv4
};
struct Connecting {};
struct Streaming {};
struct ClosedByServer {};
struct Reporting {
  bool isOfLocator = false;  ///< one of the problems of which only the first is reported until it is retried
};
struct Closed {};

}  // namespace connection_phase

/// Finds the Base Server and keeps the connection to it: the locator is asked by a datagram (WS_Client_A),
/// the server is probed on the port below the data port (WS_Client_B), then asked for data (WS_Client_C).
///
///     Restart -> locating -> probing -> connecting -> streaming -> closed by the server
///                    \__________\___________\____________\__ any failure: `report`
///
/// Without an enabled unit it goes the same way but asks for no data, and a failure bothers nobody.
class ServerConnection {
 public:
  enum class State {
    kIdle,
    kLocating,
    kProbing,
    kConnecting,
    kStreaming,
    kClosedByServer,
    kReporting,  ///< a failure has been reported and not answered
    kClosed,     ///< for good
  };

  /// What the connection needs to know and whom it tells. All calls come from the event loop.
  struct Host {
    std::function<std::string()> locatorRequest;  ///< "D" and the IDs of the enabled units
    std::function<std::string()> dataRequest;     ///< asked for when it is sent; empty without a unit
    std::function<int()> portBase;
    std::function<void(const std::string&)> caption;
    std::function<void(const std::string&)> message;
    /// A failure for the retry dialog. Its answer comes back through Retry or StopRetrying; a Restart makes
    /// it superfluous.
    std::function<void(const std::string& code, const std::string& message)> report;
    std::function<void(ByteView)> arrived;
    std::function<void()> closedByServer;  ///< in good order, while points were streaming
    std::string locatorHost;
    std::string faqAddress;
  };

  ServerConnection(const ServerEndpoints& network, EventLoop& loop, Trace& trace, Host host);

  /// Closes all three endpoints and asks the locator anew. A request with too many units for one datagram is
  /// not sent: the message says so.
  void Restart();

  /// The same for a connection that is kept without the user: what was reported before counts as answered.
  void Renew();
  /// Closes a connection that brings nothing of use. The state is that of one that the server has closed.
  void HangUp();

  /// The answers of the retry dialog. Stopping changes nothing but a state in which a failure was reported.
  void Retry();
  void StopRetrying();

  /// Closes every endpoint that is not closed, for good: neither restarts nor retries follow.
  void Close();

  State CurrentState() const { return static_cast<State>(phase_.index()); }

 private:
  using Phase =
      std::variant<connection_phase::Idle, connection_phase::Locating, connection_phase::Probing,
                   connection_phase::Connecting, connection_phase::Streaming,
                   connection_phase::ClosedByServer, connection_phase::Reporting, connection_phase::Closed>;

  template <class T>
  bool IsIn() const {
    return std::holds_alternative<T>(phase_);
  }
  void Enter(Phase phase);
  void AskLocator();
  void CloseAll();
  void SendQuestion();
  void OnLocatorSecond();
  void OnLocatorReply(ByteView datagram);
  void OnNoServer();
  void OnWrongLength(std::size_t size);
  void OnUnusable(const std::string& reason);
  void OnServer(const std::string& address);
  void OnProbeConnected();
  void OnDataConnected();
  void OnDatagramError(const EndpointError& error);
  void OnProbeError(const EndpointError& error);
  void OnStreamError(const char* endpoint, const EndpointError& error);
  void OnClosedByPeer(const char* endpoint);
  void Report(const std::string& code, const std::string& message, connection_phase::Reporting report = {});
  std::string FaqLine() const;
  bool WantsNothing() const { return host_.locatorRequest().size() <= 1; }

  DatagramEndpoint& locator_;
  StreamEndpoint& probe_;
  StreamEndpoint& data_;
  Trace& trace_;
  Host host_;
  std::unique_ptr<Timer> tmrLocator_;  // each second while the locator is asked
  Phase phase_;
  bool unretried_ = false;  // a locator problem was reported, and nothing but a reload or a stop followed
};

}  // namespace pallomir
