#include "station/wire/base_server.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace pallomir::station {
namespace {

using asio::ip::tcp;

// A probe has done its work once it is connected; one that stays open is forgotten or hostile. When there are
// too many, the oldest is closed, so that a new one always gets through.
constexpr std::size_t kMaxProbes = 64;
constexpr std::chrono::seconds kProbeTime{20};

// Far more than one household's clients, and well below the usual limit of 1024 descriptors.
constexpr std::size_t kMaxClients = 256;

// So that one computer, or one household behind a router, can't take all the places.
constexpr std::size_t kMaxClientsAnAddress = 64;

}  // namespace

BaseServer::BaseServer(tcp::acceptor probe, tcp::acceptor data, PositionSource& source,
                       std::function<Millis()> utcNow, Log log)
    : source_(source),
      utcNow_(std::move(utcNow)),
      log_(log),
      clientLog_(log),
      probeListener_(
          std::move(probe), [this](tcp::socket socket) { AcceptProbe(std::move(socket)); }, log),
      dataListener_(
          std::move(data), [this](tcp::socket socket) { AcceptClient(std::move(socket)); }, log) {}

BaseServer::~BaseServer() {
  for (const auto& session : sessions_) session->Close();
}

void BaseServer::AcceptProbe(tcp::socket socket) {
  if (probes_.size() >= kMaxProbes) probes_.pop_front();
  auto probe = std::make_shared<tcp::socket>(std::move(socket));
  probes_.push_back({probe, std::chrono::steady_clock::now() + kProbeTime});
  probe->async_wait(tcp::socket::wait_read, [this, probe = std::weak_ptr(probe)](std::error_code) {
    if (const auto gone = probe.lock())  // nobody sends anything on a probe, so it has closed
      std::erase_if(probes_, [&gone](const Probe& p) { return p.socket == gone; });
  });
}

void BaseServer::AcceptClient(tcp::socket socket) {
  DropClosed();
  auto session = std::make_shared<DataSession>(std::move(socket), source_, clientLog_);
  const auto ofSameClient =
      std::ranges::count_if(sessions_, [&](const auto& each) { return each->Client() == session->Client(); });
  if (static_cast<std::size_t>(ofSameClient) >= kMaxClientsAnAddress) {
    Drop(LeastUseful(session->Client()));
  } else if (sessions_.size() >= kMaxClients) {
    const Session other = LeastUseful(std::nullopt);
    if ((*other)->UseAt(utcNow_()) == DataSession::Use::kLive)
      return clientLog_("base server: refused a connection, " + std::to_string(kMaxClients) + " are open");
    Drop(other);
  }
  sessions_.push_back(std::move(session));
  sessions_.back()->Start();
  assert(sessions_.size() <= kMaxClients);
}

BaseServer::Session BaseServer::LeastUseful(const std::optional<asio::ip::address>& address) {
  const Millis now = utcNow_();
  Session found = sessions_.end();
  for (Session each = sessions_.begin(); each != sessions_.end(); ++each) {
    if (address && (*each)->Client() != *address) continue;
    if (found == sessions_.end() || (*each)->UseAt(now) < (*found)->UseAt(now)) found = each;
  }
  assert(found != sessions_.end());
  return found;
}

void BaseServer::Drop(Session session) {
  if ((*session)->UseAt(utcNow_()) != DataSession::Use::kSilent)
    clientLog_("base server: too many connections, closed one of " + (*session)->Client().to_string());
  (*session)->Close();
  sessions_.erase(session);
}

void BaseServer::DropClosed() {
  std::erase_if(sessions_, [](const auto& session) { return !session->IsOpen(); });
}

void BaseServer::Tick() {
  DropClosed();
  for (const auto& session : sessions_) session->Tick();
  const auto now = std::chrono::steady_clock::now();
  while (!probes_.empty() && probes_.front().deadline < now) probes_.pop_front();
}

}  // namespace pallomir::station
