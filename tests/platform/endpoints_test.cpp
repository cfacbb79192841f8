#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <QUdpSocket>
#include <cerrno>

#include "platform/qt/qt_endpoints.h"
#include "platform/qt/socket_errors.h"
#include "platform/wait.h"

namespace pallomir {
namespace {

constexpr char kHost[] = "127.0.9.21";

template <class Endpoint>
struct Recorder {
  explicit Recorder(std::unique_ptr<Endpoint> made = std::make_unique<Endpoint>())
      : endpoint(std::move(made)) {
    endpoint->arrived = [this](ByteView bytes) {
      received += bytes.size();
      if (text.size() < 100) text += AsText(bytes);
      onCall();
    };
    endpoint->failed = [this](const EndpointError& error) { errors.push_back(error.number), onCall(); };
    if constexpr (std::is_same_v<Endpoint, QtStreamEndpoint>) {
      endpoint->connected = [this] { ++connected, onCall(); };
      endpoint->closedByPeer = [this] { ++closed, onCall(); };
    }
  }

  std::unique_ptr<Endpoint> endpoint;
  std::function<void()> onCall = [] {};
  std::size_t received = 0;
  std::string text;
  std::vector<int> errors;
  int connected = 0;
  int closed = 0;
};

using Stream = Recorder<QtStreamEndpoint>;
using Datagram = Recorder<QtDatagramEndpoint>;

// A server with one connected client.
struct Connection {
  Connection() {
    EXPECT_TRUE(server.listen(QHostAddress(kHost)));
    client.endpoint->Connect(kHost, server.serverPort());
    EXPECT_TRUE(client.connected == 0);
    EXPECT_TRUE(WaitFor([&] { return client.connected == 1 && server.hasPendingConnections(); }));
    peer.reset(server.nextPendingConnection());
  }

  QTcpServer server;
  std::unique_ptr<QTcpSocket> peer;
  Stream client;
};

TEST(SocketErrors, HaveTheNumbersOfTheMessages) {
  const std::pair<int, int> cases[] = {{ECONNREFUSED, 10061}, {ETIMEDOUT, 10060},  {kHostNotFound, 11001},
                                       {ENETUNREACH, 10051},  {ECONNRESET, 10054}, {ECONNABORTED, 10053},
                                       {EADDRINUSE, 10048},   {EACCES, 10013},     {EINVAL, 10022}};
  for (const auto& [system, number] : cases) {
    EXPECT_EQ(ErrorOf(system).number, number);
    EXPECT_EQ(ErrorOf(system).statusCode, system);
    EXPECT_FALSE(ErrorOf(system).description.empty());
  }
}

TEST(Stream, CarriesBytesBothWaysAndEndsInGoodOrder) {
  Connection link;
  link.client.endpoint->Send(AsBytes("request"));
  ASSERT_TRUE(WaitFor([&] { return link.peer->bytesAvailable() == 7; }));
  link.peer->write("answer");
  link.peer->disconnectFromHost();
  ASSERT_TRUE(WaitFor([&] { return link.client.closed == 1; }));
  EXPECT_EQ(link.client.text, "answer");
  EXPECT_TRUE(link.client.endpoint->IsClosed());
  EXPECT_THAT(link.client.errors, testing::IsEmpty());
}

TEST(Stream, ResetIsAnError) {
  Connection link;
  const linger hard{1, 0};
  ::setsockopt(static_cast<int>(link.peer->socketDescriptor()), SOL_SOCKET, SO_LINGER, &hard, sizeof hard);
  link.peer->abort();
  ASSERT_TRUE(WaitFor([&] { return !link.client.errors.empty(); }));
  EXPECT_THAT(link.client.errors, testing::ElementsAre(10054));
  EXPECT_EQ(link.client.closed, 0);
}

TEST(Endpoints, ReportWhatCannotBeReachedFromTheEventLoop) {
  QTcpServer gone;
  gone.listen(QHostAddress(kHost));
  const int deadPort = gone.serverPort();
  gone.close();
  const std::tuple<const char*, int, int> cases[] = {
      {kHost, deadPort, kErrorRefused}, {kHost, 0, 10049}, {kHost, -1, 10049}, {kHost, 65536, 10049},
      {"no such host", 80, 11001},      {"", 80, 11001}};
  for (const auto& [host, port, number] : cases) {
    SCOPED_TRACE(std::string(host) + ':' + std::to_string(port));
    Stream stream;
    Datagram datagram;
    stream.endpoint->Connect(host, port);
    datagram.endpoint->Connect(host, port);
    // A dead peer of datagrams is found out by sending.
    datagram.endpoint->Send(AsBytes("hello"));
    EXPECT_TRUE(stream.errors.empty() && datagram.errors.empty());
    EXPECT_TRUE(WaitFor([&] { return !stream.errors.empty() && !datagram.errors.empty(); }, 20000));
    EXPECT_THAT(stream.errors, testing::ElementsAre(number));
    EXPECT_THAT(datagram.errors, testing::ElementsAre(number));
    EXPECT_TRUE(stream.endpoint->IsClosed() && datagram.endpoint->IsClosed());
  }
}

TEST(Stream, GivesUpOnAServerThatDoesNotAnswer) {
  // A full queue of waiting connections drops further ones without a word.
  const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_addr.s_addr = htonl(QHostAddress(kHost).toIPv4Address());
  ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&place), sizeof place), 0);
  ASSERT_EQ(::listen(listener, 0), 0);
  socklen_t size = sizeof place;
  ::getsockname(listener, reinterpret_cast<sockaddr*>(&place), &size);
  QTcpSocket fillers[4];
  for (auto& filler : fillers) filler.connectToHost(kHost, ntohs(place.sin_port));
  LetPass(50);

  Stream stream(std::make_unique<QtStreamEndpoint>(200));
  stream.endpoint->Connect(kHost, ntohs(place.sin_port));
  EXPECT_TRUE(WaitFor([&] { return !stream.errors.empty(); }));
  EXPECT_THAT(stream.errors, testing::ElementsAre(kErrorTimedOut));
  ::close(listener);
}

TEST(Stream, FindsAHostByName) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  Stream stream;
  stream.endpoint->Connect("localhost", server.serverPort());
  EXPECT_TRUE(WaitFor([&] { return stream.connected == 1; }));
}

TEST(Stream, CallsNobodyAfterCloseNotEvenFromInsideACallback) {
  for (const std::string moment : {"connected", "arrived", "closedByPeer", "before the loop"}) {
    for (const bool isDestroyed : {false, true}) {
      SCOPED_TRACE(moment);
      Connection link;
      int calls = 0;
      const auto end = [&] {
        ++calls;
        link.client.endpoint->Close();
        if (isDestroyed) link.client.endpoint.reset();
      };
      link.client.onCall = end;
      if (moment == "connected") {
        link.client.endpoint->Connect(kHost, link.server.serverPort());
        ASSERT_TRUE(WaitFor([&] { return link.server.hasPendingConnections(); }));
        link.peer.reset(link.server.nextPendingConnection());
      }
      if (moment != "closedByPeer") link.peer->write("data");
      link.peer->disconnectFromHost();
      if (moment == "before the loop") end();
      EXPECT_TRUE(WaitFor([&] { return calls == 1; }));
      LetPass(20);
      EXPECT_EQ(calls, 1);
    }
  }
}

TEST(Stream, NewConnectionHasNothingOfTheOldOne) {
  Connection link;
  link.peer->write("old");
  link.peer->flush();
  QTcpServer other;
  ASSERT_TRUE(other.listen(QHostAddress(kHost)));
  link.client.endpoint->Connect(kHost, other.serverPort());
  ASSERT_TRUE(WaitFor([&] { return link.client.connected == 2; }));
  LetPass(20);
  EXPECT_EQ(link.client.text, "");
  EXPECT_FALSE(link.client.endpoint->IsClosed());
}

TEST(Stream, HoldsTheSenderUpWhileItDoesNotRead) {
  constexpr std::size_t kTotal = 64 << 20;
  Connection link;
  link.client.endpoint->SetReading(false);
  const int socket = static_cast<int>(link.peer->socketDescriptor());
  const std::string block(1 << 20, 'x');
  std::size_t sent = 0;
  const auto push = [&] {
    while (sent < kTotal) {
      const ssize_t count =
          ::send(socket, block.data(), std::min(block.size(), kTotal - sent), MSG_DONTWAIT | MSG_NOSIGNAL);
      if (count <= 0) return;
      sent += static_cast<std::size_t>(count);
    }
  };
  // Blocked for good when nothing more goes in over a while.
  for (std::size_t before = 1; before != sent; push()) {
    before = sent;
    push();
    LetPass(100);
  }
  EXPECT_LT(sent, 32u << 20);
  EXPECT_EQ(link.client.received, 0u);

  link.client.endpoint->SetReading(true);
  EXPECT_TRUE(WaitFor([&] { return push(), link.client.received == kTotal; }, 60000));
}

TEST(Datagram, DeliversEachDatagramWhole) {
  QUdpSocket locator;
  ASSERT_TRUE(locator.bind(QHostAddress(kHost)));
  Datagram client;
  std::vector<std::size_t> sizes;
  client.endpoint->arrived = [&](ByteView bytes) { sizes.push_back(bytes.size()); };
  client.endpoint->Connect("127.0.9.21", locator.localPort());
  client.endpoint->Send(AsBytes("D0013A20040B1"));
  ASSERT_TRUE(WaitFor([&] { return locator.hasPendingDatagrams(); }));
  char request[64];
  QHostAddress from;
  quint16 port = 0;
  EXPECT_EQ(locator.readDatagram(request, sizeof request, &from, &port), 13);
  for (const int size : {6, 0, 18, 60000}) locator.writeDatagram(QByteArray(size, 'x'), from, port);
  EXPECT_TRUE(WaitFor([&] { return sizes.size() == 4; }));
  EXPECT_THAT(sizes, testing::ElementsAre(6, 0, 18, 60000));
}

TEST(Datagram, LeavesAlsoBehindOneThatFoundNobody) {
  auto locator = std::make_unique<QUdpSocket>();
  ASSERT_TRUE(locator->bind(QHostAddress(kHost)));
  const quint16 port = locator->localPort();
  Datagram client;
  client.endpoint->Connect(kHost, port);
  client.endpoint->Send(AsBytes("open"));
  ASSERT_TRUE(WaitFor([&] { return locator->hasPendingDatagrams(); }));
  locator = std::make_unique<QUdpSocket>();
  client.endpoint->Send(AsBytes("lost"));  // the system reports it at the next call
  ASSERT_TRUE(locator->bind(QHostAddress(kHost), port));
  client.endpoint->Send(AsBytes("again"));
  EXPECT_TRUE(WaitFor([&] { return locator->hasPendingDatagrams(); }, 2000));
  EXPECT_THAT(client.errors, testing::IsEmpty());
}

}  // namespace
}  // namespace pallomir
