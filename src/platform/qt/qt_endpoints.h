#pragma once

#include <memory>

#include "platform/endpoint.h"
#include "platform/qt/socket_link.h"

namespace pallomir {

/// How long a stream waits for its connection, the search for the host included.
inline constexpr int kConnectPatienceMilliseconds = 21000;

/// The road from an endpoint to its link. A link belongs to one Connect; what is left of it after Close or
/// after the endpoint's end calls nobody.
class LinkHolder {
 public:
  LinkHolder() = default;
  ~LinkHolder() { Close(); }
  LinkHolder(const LinkHolder&) = delete;
  LinkHolder& operator=(const LinkHolder&) = delete;

  SocketLink& Replace(SocketLink::Kind kind, SocketLink::Listener listener);
  SocketLink* Link() { return link_; }
  void Close();
  bool IsClosed() const { return !link_; }

 private:
  SocketLink* link_ = nullptr;
};

/// What is sent before the host is found goes out as soon as it is. After `failed` it is closed.
class QtDatagramEndpoint : public DatagramEndpoint {
 public:
  void Connect(const std::string& host, int port) override;
  void Send(ByteView bytes) override;
  void Close() override { holder_.Close(); }
  bool IsClosed() const override { return holder_.IsClosed(); }

 private:
  LinkHolder holder_;
};

/// After `failed` and `closedByPeer` it is closed. Every Connect begins with reading on. While reading is off
/// the end of the connection is not noticed either: it comes after the last byte.
class QtStreamEndpoint : public StreamEndpoint {
 public:
  explicit QtStreamEndpoint(int patienceMilliseconds = kConnectPatienceMilliseconds)
      : patienceMilliseconds_(patienceMilliseconds) {}

  void Connect(const std::string& host, int port) override;
  void Send(ByteView bytes) override;
  void Close() override { holder_.Close(); }
  bool IsClosed() const override { return holder_.IsClosed(); }
  void SetReading(bool reading) override;

 private:
  int patienceMilliseconds_;
  LinkHolder holder_;
};

}  // namespace pallomir
