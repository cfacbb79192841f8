#include "station/common/listener.h"

namespace pallomir::station {
namespace {

constexpr std::chrono::milliseconds kRetryDelay{200};

// More than these wait until the open connections have had a turn.
constexpr int kConnectionsATurn = 256;

}  // namespace

std::error_code Listen(asio::ip::tcp::acceptor& acceptor, const asio::ip::tcp::endpoint& endpoint) {
  std::error_code error;
  acceptor.open(endpoint.protocol(), error);
  if (!error) acceptor.set_option(asio::ip::tcp::acceptor::reuse_address(true), error);
  if (!error) acceptor.bind(endpoint, error);
  if (!error) acceptor.listen(asio::ip::tcp::acceptor::max_listen_connections, error);
  return error;
}

Listener::Listener(asio::ip::tcp::acceptor acceptor, Accepted accepted, Log log)
    : acceptor_(std::move(acceptor)),
      retry_(acceptor_.get_executor()),
      accepted_(std::move(accepted)),
      log_(std::move(log)) {
  std::error_code ignored;
  acceptor_.non_blocking(true, ignored);
  Wait();
}

void Listener::Wait() {
  acceptor_.async_wait(asio::ip::tcp::acceptor::wait_read, [this](std::error_code error) {
    if (!error) AcceptAll();
  });
}

void Listener::AcceptAll() {
  for (int i = 0; i < kConnectionsATurn; ++i) {
    std::error_code error;
    asio::ip::tcp::socket socket(acceptor_.get_executor());
    acceptor_.accept(socket, error);
    if (error == asio::error::would_block) break;
    if (error == asio::error::connection_aborted) continue;  // it left before its turn
    if (error) {
      log_("can't accept a connection: " + error.message());
      return AcceptLater();
    }
    accepted_(std::move(socket));
  }
  Wait();
}

void Listener::AcceptLater() {
  retry_.expires_after(kRetryDelay);
  retry_.async_wait([this](std::error_code error) {
    if (!error) AcceptAll();
  });
}

}  // namespace pallomir::station
