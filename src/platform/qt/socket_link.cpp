#include "platform/qt/socket_link.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QHostInfo>
#include <QSocketNotifier>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/qt/socket_errors.h"

namespace pallomir {
namespace {

// What one callback gets at most: a whole datagram fits, and a fast sender leaves the event loop its turns.
constexpr std::size_t kReadSize = 1 << 20;

// What may wait to be sent. The client sends short requests; more means that nobody takes them.
constexpr std::size_t kMaxWaiting = 4 << 20;

socklen_t Fill(sockaddr_storage& out, const QHostAddress& address, std::uint16_t port) {
  out = {};
  if (address.protocol() == QAbstractSocket::IPv6Protocol) {
    sockaddr_in6 six{};
    six.sin6_family = AF_INET6;
    six.sin6_port = htons(port);
    const Q_IPV6ADDR bytes = address.toIPv6Address();
    std::memcpy(&six.sin6_addr, &bytes, sizeof six.sin6_addr);
    std::memcpy(&out, &six, sizeof six);
    return sizeof six;
  }
  sockaddr_in four{};
  four.sin_family = AF_INET;
  four.sin_port = htons(port);
  four.sin_addr.s_addr = htonl(address.toIPv4Address());
  std::memcpy(&out, &four, sizeof four);
  return sizeof four;
}

bool IsWaitWanted(int systemCode) {
  return systemCode == EAGAIN || systemCode == EWOULDBLOCK || systemCode == EINTR;
}

}  // namespace

SocketLink::SocketLink(Kind kind, Listener listener) : kind_(kind), listener_(std::move(listener)) {
  deadline_.setSingleShot(true);
  connect(&deadline_, &QTimer::timeout, this, [this] { Fail(ETIMEDOUT); });
}

SocketLink::~SocketLink() { CloseSocket(); }

void SocketLink::Open(const std::string& host, int port, int patienceMilliseconds) {
  if (port < 1 || port > 65535) return FailLater(EADDRNOTAVAIL);
  port_ = static_cast<std::uint16_t>(port);
  deadline_.start(patienceMilliseconds);
  const QString name = QString::fromStdString(host);
  if (const QHostAddress literal(name); !literal.isNull()) {
    addresses_ = {literal};
    QMetaObject::invokeMethod(
        this, [this] { TryNextAddress(kHostNotFound); }, Qt::QueuedConnection);
    return;
  }
  QHostInfo::lookupHost(name, this, [this](const QHostInfo& info) {
    const auto found = info.addresses();
    addresses_.assign(found.rbegin(), found.rend());
    TryNextAddress(kHostNotFound);
  });
}

void SocketLink::TryNextAddress(int lastError) {
  while (!over_ && socket_ < 0) {
    if (addresses_.empty()) return Fail(lastError);
    const QHostAddress address = addresses_.back();
    addresses_.pop_back();
    lastError = Connect(address);
    if (lastError == 0) return Opened();
    if (lastError == EINPROGRESS) return Watch();
    CloseSocket();
  }
}

// 0, EINPROGRESS or what went wrong.
int SocketLink::Connect(const QHostAddress& address) {
  sockaddr_storage place{};
  const socklen_t size = Fill(place, address, port_);
  const int type = kind_ == Kind::kStream ? SOCK_STREAM : SOCK_DGRAM;
  socket_ = ::socket(place.ss_family, type | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  if (socket_ < 0) return errno;
  return ::connect(socket_, reinterpret_cast<const sockaddr*>(&place), size) == 0 ? 0 : errno;
}

void SocketLink::Watch() {
  readable_ = std::make_unique<QSocketNotifier>(socket_, QSocketNotifier::Read);
  readable_->setEnabled(open_ && reading_);
  connect(readable_.get(), &QSocketNotifier::activated, this, [this] { OnReadable(); });
  writable_ = std::make_unique<QSocketNotifier>(socket_, QSocketNotifier::Write);
  writable_->setEnabled(!open_);
  connect(writable_.get(), &QSocketNotifier::activated, this, [this] { OnWritable(); });
}

void SocketLink::OnWritable() {
  if (over_ || socket_ < 0) return;
  if (open_) return Flush();
  int error = 0;
  socklen_t size = sizeof error;
  if (::getsockopt(socket_, SOL_SOCKET, SO_ERROR, &error, &size) != 0) error = errno;
  if (error == 0) return Opened();
  CloseSocket();
  TryNextAddress(error);
}

void SocketLink::Opened() {
  open_ = true;
  deadline_.stop();
  if (readable_) {
    readable_->setEnabled(reading_);
  } else {
    Watch();
  }
  Flush();
  const auto call = listener_.opened;
  if (!over_ && call) call();
}

void SocketLink::OnReadable() {
  if (over_ || !reading_ || socket_ < 0) return;
  buffer_.resize(kReadSize);
  const ssize_t count = ::recv(socket_, buffer_.data(), buffer_.size(), 0);
  if (count < 0) {
    if (!IsWaitWanted(errno)) Fail(errno);
    return;
  }
  if (count == 0 && kind_ == Kind::kStream) {
    End();
    const auto call = listener_.ended;
    if (call) call();
    return;
  }
  const auto call = listener_.arrived;
  if (call) call(ByteView(buffer_).first(static_cast<std::size_t>(count)));
}

void SocketLink::Send(ByteView bytes) {
  if (over_) return;
  if (waiting_ + bytes.size() > kMaxWaiting) return FailLater(ENOBUFS);
  outgoing_.emplace_back(bytes.begin(), bytes.end());
  waiting_ += bytes.size();
  if (open_) Flush();
}

void SocketLink::Flush() {
  while (!outgoing_.empty()) {
    Bytes& next = outgoing_.front();
    ssize_t count = ::send(socket_, next.data(), next.size(), MSG_NOSIGNAL);
    // What is reported here may be the fate of an earlier datagram, and then this one has not left.
    if (count < 0 && kind_ == Kind::kDatagram && !IsWaitWanted(errno))
      count = ::send(socket_, next.data(), next.size(), MSG_NOSIGNAL);
    if (count < 0 && !IsWaitWanted(errno)) return FailLater(errno);
    if (count < 0) break;
    const auto sent = static_cast<std::size_t>(count);
    waiting_ -= sent;
    if (sent < next.size()) {
      next.erase(next.begin(), next.begin() + count);
      break;
    }
    outgoing_.erase(outgoing_.begin());
  }
  writable_->setEnabled(!outgoing_.empty());
}

void SocketLink::SetReading(bool reading) {
  reading_ = reading;
  if (readable_ && open_) readable_->setEnabled(reading);
}

void SocketLink::Abandon() {
  End();
  listener_ = {};
  deleteLater();
}

void SocketLink::Fail(int systemCode) {
  if (over_) return;
  End();
  const auto call = listener_.failed;
  if (call) call(systemCode);
}

// For what goes wrong inside a call of the endpoint's user.
void SocketLink::FailLater(int systemCode) {
  if (writable_) writable_->setEnabled(false);
  outgoing_.clear();
  waiting_ = 0;
  QMetaObject::invokeMethod(
      this, [this, systemCode] { Fail(systemCode); }, Qt::QueuedConnection);
}

void SocketLink::End() {
  over_ = true;
  deadline_.stop();
  CloseSocket();
}

void SocketLink::CloseSocket() {
  // A notifier may be the one that is just calling.
  for (auto* notifier : {readable_.release(), writable_.release()}) {
    if (!notifier) continue;
    notifier->setEnabled(false);
    notifier->deleteLater();
  }
  if (socket_ >= 0) ::close(socket_);
  socket_ = -1;
}

}  // namespace pallomir
