#include "platform/qt/qt_endpoints.h"

#include <utility>

#include "platform/qt/socket_errors.h"

namespace pallomir {
namespace {

// A callback may end the endpoint and with it the function that is running: a copy runs.
template <class... Arguments>
void Call(std::function<void(Arguments...)> function, const std::type_identity_t<Arguments>&... arguments) {
  if (function) function(arguments...);
}

}  // namespace

SocketLink& LinkHolder::Replace(SocketLink::Kind kind, SocketLink::Listener listener) {
  Close();
  link_ = new SocketLink(kind, std::move(listener));
  return *link_;
}

void LinkHolder::Close() {
  if (SocketLink* link = std::exchange(link_, nullptr)) link->Abandon();
}

void QtDatagramEndpoint::Connect(const std::string& host, int port) {
  SocketLink::Listener listener;
  listener.arrived = [this](ByteView bytes) { Call(arrived, bytes); };
  listener.failed = [this](int systemCode) {
    Close();
    Call(failed, ErrorOf(systemCode));
  };
  holder_.Replace(SocketLink::Kind::kDatagram, std::move(listener))
      .Open(host, port, kConnectPatienceMilliseconds);
}

void QtDatagramEndpoint::Send(ByteView bytes) {
  if (SocketLink* link = holder_.Link()) link->Send(bytes);
}

void QtStreamEndpoint::Connect(const std::string& host, int port) {
  SocketLink::Listener listener;
  listener.opened = [this] { Call(connected); };
  listener.arrived = [this](ByteView bytes) { Call(arrived, bytes); };
  listener.failed = [this](int systemCode) {
    Close();
    Call(failed, ErrorOf(systemCode));
  };
  listener.ended = [this] {
    Close();
    Call(closedByPeer);
  };
  holder_.Replace(SocketLink::Kind::kStream, std::move(listener)).Open(host, port, patienceMilliseconds_);
}

void QtStreamEndpoint::Send(ByteView bytes) {
  if (SocketLink* link = holder_.Link()) link->Send(bytes);
}

void QtStreamEndpoint::SetReading(bool reading) {
  if (SocketLink* link = holder_.Link()) link->SetReading(reading);
}

}  // namespace pallomir
