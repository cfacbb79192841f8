#include "station/wire/locator.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "station/wire/locator_messages.h"

namespace pallomir::station {
namespace {

// The longest request, and one byte more to notice a longer datagram.
constexpr std::size_t kBufferSize = 6 + 1 + kMaxUnitsPerRequest * 12 + 1;

// Datagrams answered before the other sockets get a turn.
constexpr int kDatagramsATurn = 64;

struct ControlBuffer {
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(in_pktinfo))> bytes{};
};

// The local address that a datagram came to, which its reply must come from.
in_pktinfo* PacketInfo(msghdr& message) {
  for (cmsghdr* c = CMSG_FIRSTHDR(&message); c != nullptr; c = CMSG_NXTHDR(&message, c))
    if (c->cmsg_level == IPPROTO_IP && c->cmsg_type == IP_PKTINFO)
      return reinterpret_cast<in_pktinfo*>(CMSG_DATA(c));
  return nullptr;
}

}  // namespace

Locator::Locator(asio::ip::udp::socket socket, std::optional<asio::ip::address_v4> advertised, Knows knows,
                 Log log)
    : socket_(std::move(socket)), advertised_(advertised), knows_(std::move(knows)), log_(std::move(log)) {
  const int on = 1;
  ::setsockopt(socket_.native_handle(), IPPROTO_IP, IP_PKTINFO, &on, sizeof on);
  std::error_code ignored;
  socket_.non_blocking(true, ignored);
  Wait();
}

void Locator::Wait() {
  socket_.async_wait(asio::ip::udp::socket::wait_read, [this](std::error_code error) {
    if (error) return;  // closing
    AnswerAll();
    Wait();
  });
}

void Locator::AnswerAll() {
  for (int i = 0; i < kDatagramsATurn && AnswerOne(); ++i) {
  }
}

bool Locator::AnswerOne() {
  std::array<std::uint8_t, kBufferSize> buffer;
  ControlBuffer control;
  sockaddr_in sender{};
  iovec part{buffer.data(), buffer.size()};
  msghdr message{};
  message.msg_name = &sender;
  message.msg_namelen = sizeof sender;
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  message.msg_control = control.bytes.data();
  message.msg_controllen = control.bytes.size();
  const ssize_t received = ::recvmsg(socket_.native_handle(), &message, 0);
  if (received < 0) return false;

  in_pktinfo* const info = PacketInfo(message);
  Bytes reply = Reply({buffer.data(), static_cast<std::size_t>(received)},
                      info != nullptr ? ntohl(info->ipi_spec_dst.s_addr) : INADDR_LOOPBACK);
  if (reply.empty()) return true;
  if (info != nullptr)
    info->ipi_ifindex = 0;  // the routes choose the interface; only the source address is kept
  part = {reply.data(), reply.size()};
  ::sendmsg(socket_.native_handle(), &message, 0);  // if it is lost, the client asks again
  return true;
}

Bytes Locator::Reply(ByteView request, std::uint32_t cameTo) {
  const auto unitIds = ParseLocatorRequest(request);
  if (!unitIds) {
    log_("locator: dropped a malformed datagram of " + std::to_string(request.size()) + " bytes");
    return {};
  }
  if (!unitIds->empty() && std::ranges::none_of(*unitIds, knows_)) return EmptyLocatorReply();
  std::error_code ignored;
  return LocatorReply(advertised_ ? advertised_->to_uint() : cameTo, socket_.local_endpoint(ignored).port());
}

}  // namespace pallomir::station
