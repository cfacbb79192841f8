#include "station/base_server.h"

#include <algorithm>
#include <utility>

namespace pallomir::station {
namespace {

using asio::ip::tcp;

// A probe is over as soon as it is connected; what stays open is forgotten or ill-meant. The oldest has to go
// when there are too many, so that a new one always gets through.
constexpr std::size_t kMaxProbes = 64;
constexpr std::chrono::seconds kProbeTime{20};

// Far more than one household's clients, and well below the usual limit of 1024 descriptors.
constexpr std::size_t kMaxClients = 256;

}  // namespace

BaseServer::BaseServer(tcp::acceptor probe, tcp::acceptor data, PositionSource& source, Log log)
    : source_(source),
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
    if (const auto gone = probe.lock())  // nothing is said on a probe, so it has closed
      std::erase_if(probes_, [&gone](const Probe& p) { return p.socket == gone; });
  });
}

void BaseServer::AcceptClient(tcp::socket socket) {
  DropClosed();
  if (sessions_.size() >= kMaxClients) DropOldestSilent();
  if (sessions_.size() >= kMaxClients)
    return clientLog_("base server: refused a connection, " + std::to_string(kMaxClients) + " are open");
  sessions_.push_back(std::make_shared<DataSession>(std::move(socket), source_, clientLog_));
  sessions_.back()->Start();
}

void BaseServer::DropOldestSilent() {
  const auto silent =
      std::ranges::find_if(sessions_, [](const auto& session) { return !session->HasAsked(); });
  if (silent == sessions_.end()) return;
  (*silent)->Close();
  sessions_.erase(silent);
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
