#include "station/listener.h"

namespace pallomir::station {
namespace {

constexpr std::chrono::milliseconds kRetryDelay{200};

}  // namespace

Listener::Listener(asio::ip::tcp::acceptor acceptor, Accepted accepted, Log log)
    : acceptor_(std::move(acceptor)),
      retry_(acceptor_.get_executor()),
      accepted_(std::move(accepted)),
      log_(std::move(log)) {
  Accept();
}

void Listener::Accept() {
  acceptor_.async_accept([this](std::error_code error, asio::ip::tcp::socket socket) {
    if (error == asio::error::operation_aborted) return;
    if (error) {
      log_("can't accept a connection: " + error.message());
      return AcceptLater();
    }
    accepted_(std::move(socket));
    Accept();
  });
}

void Listener::AcceptLater() {
  retry_.expires_after(kRetryDelay);
  retry_.async_wait([this](std::error_code error) {
    if (!error) Accept();
  });
}

}  // namespace pallomir::station
