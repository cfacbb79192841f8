#pragma once

#include <QHostAddress>
#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/bytes.h"

class QSocketNotifier;

namespace pallomir {

/// One connection of an endpoint, from the search for the host to the end, on a socket of the system that the
/// event loop watches. (The socket classes of the framework report a reset like a close in good order, and
/// keep the system's error codes to themselves.)
///
/// Calls nobody back before the event loop is reached, and nobody after Abandon. A listener may abandon the
/// link from inside a callback; the link then lives until the event loop is back.
class SocketLink : public QObject {
 public:
  enum class Kind { kDatagram, kStream };

  struct Listener {
    std::function<void()> opened;
    std::function<void(ByteView)> arrived;
    std::function<void(int systemCode)> failed;  ///< errno or kHostNotFound; the last call
    std::function<void()> ended;                 ///< closed in good order by the other side; the last call
  };

  SocketLink(Kind kind, Listener listener);
  ~SocketLink() override;

  /// Finds the host and tries its addresses one after the other. A stream that is not connected in time fails
  /// with ETIMEDOUT, a port outside 1..65535 with EADDRNOTAVAIL.
  void Open(const std::string& host, int port, int patienceMilliseconds);

  /// Kept until the link is open. One call is one datagram.
  void Send(ByteView bytes);

  /// While false the socket is not read, and its end is not noticed either.
  void SetReading(bool reading);

  /// Closes the socket and deletes the link when the event loop is reached.
  void Abandon();

 private:
  void TryNextAddress(int lastError);
  int Connect(const QHostAddress& address);
  void Watch();
  void OnWritable();
  void OnReadable();
  void Opened();
  void Flush();
  void Fail(int systemCode);
  void FailLater(int systemCode);
  void End();
  void CloseSocket();

  Kind kind_;
  Listener listener_;
  std::vector<QHostAddress> addresses_;  // the next one last
  std::uint16_t port_ = 0;
  QTimer deadline_;
  int socket_ = -1;
  std::unique_ptr<QSocketNotifier> readable_;
  std::unique_ptr<QSocketNotifier> writable_;
  Bytes buffer_;  // of what is read
  std::vector<Bytes> outgoing_;
  std::size_t waiting_ = 0;  // bytes in outgoing_
  bool open_ = false;
  bool reading_ = true;
  bool over_ = false;
};

}  // namespace pallomir
