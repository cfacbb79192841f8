#include "e2e/faulty_network.h"

#include <asio/buffer.hpp>
#include <asio/co_spawn.hpp>
#include <asio/detached.hpp>
#include <asio/executor_work_guard.hpp>
#include <asio/post.hpp>
#include <asio/redirect_error.hpp>
#include <asio/steady_timer.hpp>
#include <asio/use_awaitable.hpp>
#include <asio/write.hpp>
#include <future>

#include "base/check_code.h"

namespace pallomir::e2e {
namespace {

constexpr std::uint16_t kLocator = 2435;
constexpr std::uint16_t kProbe = 18799;
constexpr std::uint16_t kData = 18800;

// A call whose failure ends the coroutine's work quietly: connections come and go here.
auto Into(std::error_code& error) { return asio::redirect_error(asio::use_awaitable, error); }

std::string WithCheckForm(std::string_view rest) {
  Bytes reply = ShortCheckForm(AsBytes(rest));
  Append(reply, AsBytes(rest));
  return std::string(AsText(reply));
}

}  // namespace

FaultyNetwork::FaultyNetwork(const std::string& clientSide, const std::string& stationSide)
    : clientSide_(asio::ip::make_address_v4(clientSide)),
      stationSide_(asio::ip::make_address_v4(stationSide)) {
  Apply({});
  thread_ = std::thread([this] {
    const auto work = asio::make_work_guard(context_);
    context_.run();
  });
}

FaultyNetwork::~FaultyNetwork() {
  context_.stop();
  thread_.join();
}

void FaultyNetwork::Set(const Fault& fault) {
  std::promise<void> done;
  asio::post(context_, [&] {
    Apply(fault);
    done.set_value();
  });
  done.get_future().get();
}

void FaultyNetwork::Apply(const Fault& fault) {
  fault_ = fault;
  OpenLocator();
  OpenDoor(probe_, kProbe, fault.probe);
  OpenDoor(data_, kData, fault.data);
}

void FaultyNetwork::OpenLocator() {
  if (locator_) locator_->close();
  locator_.reset();
  if (fault_.locator == Fault::Locator::kGone) return;
  locator_ = std::make_shared<Udp::socket>(context_, Udp::endpoint(clientSide_, kLocator));
  asio::co_spawn(context_, AnswerLocator(locator_), asio::detached);
}

asio::awaitable<void> FaultyNetwork::AnswerLocator(std::shared_ptr<Udp::socket> socket) {
  std::array<char, 65536> buffer;
  while (true) {
    std::error_code error;
    Udp::endpoint client;
    const std::size_t size = co_await socket->async_receive_from(asio::buffer(buffer), client, Into(error));
    if (error) co_return;
    if (fault_.locator == Fault::Locator::kSilent) continue;
    const int replies = fault_.locator == Fault::Locator::kTwice ? 2 : 1;

    Udp::socket station(context_, Udp::endpoint(clientSide_, 0));
    co_await station.async_send_to(asio::buffer(buffer, size), Udp::endpoint(stationSide_, kLocator),
                                   Into(error));
    const std::size_t replySize = co_await station.async_receive(asio::buffer(buffer), Into(error));
    const std::string reply = Spoilt({buffer.data(), replySize});
    asio::steady_timer timer(context_, fault_.late);
    co_await timer.async_wait(Into(error));
    for (int i = 0; i < replies; ++i)
      co_await socket->async_send_to(asio::buffer(reply), client, Into(error));
  }
}

std::string FaultyNetwork::Spoilt(std::string reply) const {
  switch (fault_.locator) {
    case Fault::Locator::kEmpty:
      return WithCheckForm("");
    case Fault::Locator::kOddLength:
      return reply.substr(0, reply.size() - 1);
    case Fault::Locator::kWrongCode:
      reply[0] = static_cast<char>(reply[0] ^ 1);
      return reply;
    case Fault::Locator::kNoDigits:
      return WithCheckForm("7F.0.0.1:123");
    default:
      return reply;
  }
}

void FaultyNetwork::OpenDoor(Door& door, std::uint16_t port, Fault::Port how) {
  if (door.acceptor) door.acceptor->close();
  door = {};
  if (how == Fault::Port::kRefusing) return;
  const Tcp::endpoint place(clientSide_, port);
  door.acceptor = std::make_unique<Tcp::acceptor>(context_);
  door.acceptor->open(place.protocol());
  door.acceptor->set_option(Tcp::acceptor::reuse_address(true));
  door.acceptor->bind(place);
  const bool isDeaf = how == Fault::Port::kDeaf;
  door.acceptor->listen(isDeaf ? 0 : Tcp::acceptor::max_listen_connections);
  if (!isDeaf) {
    asio::co_spawn(context_, Accept(*door.acceptor, port), asio::detached);
    return;
  }
  // A queue of none has room for one; then the system leaves every further attempt without an answer.
  for (int i = 0; i < 4; ++i) {
    door.crowd.emplace_back(context_, place.protocol());
    door.crowd.back().async_connect(place, [](std::error_code) {});
  }
}

asio::awaitable<void> FaultyNetwork::Accept(Tcp::acceptor& acceptor, std::uint16_t port) {
  while (true) {
    std::error_code error;
    Tcp::socket client = co_await acceptor.async_accept(Into(error));
    if (error) co_return;
    asio::co_spawn(context_, Connected(std::move(client), port, fault_), asio::detached);
  }
}

asio::awaitable<void> FaultyNetwork::Connected(Tcp::socket client, std::uint16_t port, Fault fault) {
  const auto near = std::make_shared<Tcp::socket>(std::move(client));
  const auto far = std::make_shared<Tcp::socket>(context_);
  std::error_code error;
  co_await far->async_connect({stationSide_, port}, Into(error));
  if (error) {
    near->close(error);
    co_return;
  }
  asio::co_spawn(context_, PassOn(near, far), asio::detached);
  if (port == kData)
    co_await PassOnFaulty(far, near, fault);
  else
    co_await PassOn(far, near);
}

asio::awaitable<void> FaultyNetwork::PassOn(std::shared_ptr<Tcp::socket> from,
                                            std::shared_ptr<Tcp::socket> to) {
  std::array<char, 4096> buffer;
  std::error_code error;
  while (!error) {
    const std::size_t size = co_await from->async_read_some(asio::buffer(buffer), Into(error));
    if (!error) co_await asio::async_write(*to, asio::buffer(buffer, size), Into(error));
  }
  from->close(error);
  to->close(error);
}

asio::awaitable<void> FaultyNetwork::PassOnFaulty(std::shared_ptr<Tcp::socket> from,
                                                  std::shared_ptr<Tcp::socket> to, Fault fault) {
  std::vector<char> buffer(fault.pieceSize);
  std::error_code error;
  to->set_option(Tcp::no_delay(true), error);
  std::size_t passed = 0;
  while (!error) {
    std::size_t size = co_await from->async_read_some(asio::buffer(buffer), Into(error));
    if (error || !fault.hasAnswer) continue;
    if (passed == 0) {
      asio::steady_timer timer(context_, fault.late);
      co_await timer.async_wait(Into(error));
    }
    if (fault.spoiltAt >= passed && fault.spoiltAt < passed + size) buffer[fault.spoiltAt - passed] ^= 1;
    const bool isLast = passed + size >= fault.cutAt;
    if (isLast) size = fault.cutAt - passed;
    co_await asio::async_write(*to, asio::buffer(buffer.data(), size), Into(error));
    passed += size;
    if (isLast) break;
  }
  if (fault.isCutHard) to->set_option(asio::socket_base::linger(true, 0), error);
  to->close(error);
  from->close(error);
}

}  // namespace pallomir::e2e
